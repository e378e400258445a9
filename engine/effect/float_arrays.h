// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "engine/device/gl_device.h"
#include "engine/effect/name_table.h"

namespace kelmo {

/// The uniform arrays of an effect, spectra included: recorded as they are set, brought to buffer
/// textures by the next pass that reads them.
class FloatArrays {
public:
    /// Records a copy of `count` elements of `components` floats (1, 2 or 4). Null `data` stands
    /// for zeros. Allocates only when an array becomes longer than it ever was.
    void Set(const char* name, int components, const float* data, int32_t count);

    int Find(const char* name) const { return names.Find(name); }
    /// The array whose "<name>_count" is `name`, or -1.
    int FindByCountName(const char* name) const;
    int32_t Length(int index) const { return arrays[static_cast<size_t>(index)].count; }
    /// The buffer texture of the array, up to date. Elements beyond what the device can hold are
    /// left out, with a log line. Inside a scope.
    GLuint Texture(GlDevice& device, int index);
    int Revision() const { return names.Count(); }

private:
    struct Array {
        int components = 4;
        int32_t count = 0;
        std::vector<float> data;
        bool changed = true;
        GlObject buffer;
        GlObject texture;
        int textureComponents = 0;
        size_t capacity = 0;  ///< of the buffer, in bytes
    };

    void Upload(GlDevice& device, int index);

    NameTable names;
    NameTable countNames;
    std::vector<Array> arrays;
};

}  // namespace kelmo
