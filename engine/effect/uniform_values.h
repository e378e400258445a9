// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <vector>

#include "engine/effect/name_table.h"

namespace kelmo {

enum class ValueKind : uint8_t { Float, Int, Vec2, Vec3, Vec4, Mat3, Mat4 };

/// Number of 32-bit words of a value.
int WordsOf(ValueKind kind);
bool IsMatrix(ValueKind kind);

/// A recorded value of a uniform.
struct UniformValue {
    ValueKind kind = ValueKind::Float;
    union {
        float floats[16] = {};
        int32_t integer;
    };
};

/// The last value that the effect set for each name. Recording touches no GL and, once a name is
/// known, allocates nothing. The programs fetch the values when they draw.
class UniformValues {
public:
    /// Null names and null data are ignored.
    void SetFloats(const char* name, ValueKind kind, const float* values);
    void SetInt(const char* name, int32_t value);

    int Find(const char* name) const { return names.Find(name); }
    const UniformValue& Value(int index) const { return values[static_cast<size_t>(index)]; }
    /// Grows when a name comes or changes its kind; bindings made for another number are stale.
    int Revision() const { return revision; }

private:
    UniformValue& Slot(const char* name, ValueKind kind);

    NameTable names;
    std::vector<UniformValue> values;
    int revision = 0;
};

}  // namespace kelmo
