// SPDX-License-Identifier: GPL-3.0-or-later
#include "engine/effect/uniform_values.h"

#include <cstring>

namespace kelmo {

int WordsOf(ValueKind kind) {
    switch (kind) {
        case ValueKind::Float:
        case ValueKind::Int:
            return 1;
        case ValueKind::Vec2:
            return 2;
        case ValueKind::Vec3:
            return 3;
        case ValueKind::Vec4:
            return 4;
        case ValueKind::Mat3:
            return 9;
        case ValueKind::Mat4:
            return 16;
    }
    return 0;
}

bool IsMatrix(ValueKind kind) {
    return kind == ValueKind::Mat3 || kind == ValueKind::Mat4;
}

UniformValue& UniformValues::Slot(const char* name, ValueKind kind) {
    const auto index = static_cast<size_t>(names.FindOrAdd(name));
    if (index == values.size()) {
        values.emplace_back();
        values.back().kind = kind;
        ++revision;
    }
    UniformValue& value = values[index];
    if (value.kind != kind) {
        // Numbers and vectors are told apart when they are sent; matrices when they are matched.
        if (IsMatrix(kind) || IsMatrix(value.kind)) ++revision;
        value.kind = kind;
    }
    return value;
}

void UniformValues::SetFloats(const char* name, ValueKind kind, const float* data) {
    if (!name || !data) return;
    std::memcpy(Slot(name, kind).floats, data, static_cast<size_t>(WordsOf(kind)) * sizeof(float));
}

void UniformValues::SetInt(const char* name, int32_t value) {
    if (name) Slot(name, ValueKind::Int).integer = value;
}

}  // namespace kelmo
