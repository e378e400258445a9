// SPDX-License-Identifier: GPL-3.0-or-later
#include "engine/effect/float_arrays.h"

#include <algorithm>

namespace kelmo {
namespace {

GLenum FormatOf(int components) {
    if (components == 1) return GL_R32F;
    return components == 2 ? GL_RG32F : GL_RGBA32F;
}

}  // namespace

void FloatArrays::Set(const char* name, int components, const float* data, int32_t count) {
    if (!name) return;
    const auto index = static_cast<size_t>(names.FindOrAdd(name));
    if (index == arrays.size()) {
        arrays.emplace_back();
        countNames.FindOrAdd((names.Name(static_cast<int>(index)) + "_count").c_str());
    }
    Array& array = arrays[index];
    array.components = components;
    array.count = std::max(count, 0);
    array.changed = true;
    const size_t floats = static_cast<size_t>(array.count) * static_cast<size_t>(components);
    if (data) {
        array.data.assign(data, data + floats);
    } else {
        array.data.assign(floats, 0.0f);
    }
}

int FloatArrays::FindByCountName(const char* name) const {
    return countNames.Find(name);
}

GLuint FloatArrays::Texture(GlDevice& device, int index) {
    Array& array = arrays[static_cast<size_t>(index)];
    if (array.count == 0) return device.Commons().emptyArray.Id();
    if (array.changed) Upload(device, index);
    return array.texture.Id();
}

void FloatArrays::Upload(GlDevice& device, int index) {
    Array& array = arrays[static_cast<size_t>(index)];
    if (array.count > device.Limits().bufferTexels) {
        device.Log().Error("engine: array '%s' has %d elements, the device holds %d",
                           names.Name(index).c_str(), array.count, device.Limits().bufferTexels);
        array.count = device.Limits().bufferTexels;
    }
    const size_t bytes =
        static_cast<size_t>(array.count) * static_cast<size_t>(array.components) * sizeof(float);
    if (!array.buffer) array.buffer = GlObject(device, GlKind::Buffer);
    glBindBuffer(GL_TEXTURE_BUFFER, array.buffer.Id());
    const bool resized = array.capacity != bytes || array.textureComponents != array.components;
    // The buffer is exactly as long as the array, so that the shader can tell its end.
    glBufferData(GL_TEXTURE_BUFFER, static_cast<GLsizeiptr>(bytes), array.data.data(),
                 GL_STREAM_DRAW);
    glBindBuffer(GL_TEXTURE_BUFFER, 0);
    if (!array.texture) array.texture = GlObject(device, GlKind::Texture);
    if (resized) {
        device.UseUnit(0);
        glBindTexture(GL_TEXTURE_BUFFER, array.texture.Id());
        glTexBuffer(GL_TEXTURE_BUFFER, FormatOf(array.components), array.buffer.Id());
        array.capacity = bytes;
        array.textureComponents = array.components;
    }
    array.changed = false;
}

}  // namespace kelmo
