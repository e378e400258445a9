// SPDX-License-Identifier: GPL-3.0-or-later
// The operations that record what a pass will use: uniforms, arrays, inputs, geometry, switches.
#include "engine/effect/boundary.h"
#include "engine/effect/engine_effect.h"

namespace kelmo {
namespace {

/// For operations without result.
template <typename Body>
void Record(const EngineLog& log, const char* operation, Body&& body) {
    AtBoundary(log, operation, 0, [&] {
        body();
        return 0;
    });
}

}  // namespace

// --- uniforms: declaring one is setting it ---

void EngineEffect::AddUniformFloat(const char* name, float value) {
    SetUniformFloat(name, value);
}
void EngineEffect::AddUniformInt(const char* name, int32_t value) {
    SetUniformInt(name, value);
}
void EngineEffect::AddUniformVec2(const char* name, float x, float y) {
    SetUniformVec2(name, x, y);
}
void EngineEffect::AddUniformVec3(const char* name, float x, float y, float z) {
    SetUniformVec3(name, x, y, z);
}
void EngineEffect::AddUniformVec4(const char* name, float x, float y, float z, float w) {
    SetUniformVec4(name, x, y, z, w);
}
void EngineEffect::AddUniformMat3(const char* name, const float* value) {
    SetUniformMat3(name, value);
}
void EngineEffect::AddUniformMat4(const char* name, const float* value) {
    SetUniformMat4(name, value);
}
void EngineEffect::AddUniformArrayVec2(const char* name, const float* data, int32_t count) {
    SetUniformArrayVec2(name, data, count);
}
void EngineEffect::AddUniformArrayVec4(const char* name, const float* data, int32_t count) {
    SetUniformArrayVec4(name, data, count);
}
void EngineEffect::AddInstanceArrayVec2(const char* name, const float* data, int32_t count) {
    SetInstanceArrayVec2(name, data, count);
}
void EngineEffect::AddInstanceArrayVec4(const char* name, const float* data, int32_t count) {
    SetInstanceArrayVec4(name, data, count);
}

void EngineEffect::SetUniformFloat(const char* name, float value) {
    Record(device->Log(), "SetUniformFloat",
           [&] { inputs.uniforms.SetFloats(name, ValueKind::Float, &value); });
}
void EngineEffect::SetUniformInt(const char* name, int32_t value) {
    Record(device->Log(), "SetUniformInt", [&] { inputs.uniforms.SetInt(name, value); });
}
void EngineEffect::SetUniformVec2(const char* name, float x, float y) {
    const float values[] = {x, y};
    Record(device->Log(), "SetUniformVec2",
           [&] { inputs.uniforms.SetFloats(name, ValueKind::Vec2, values); });
}
void EngineEffect::SetUniformVec3(const char* name, float x, float y, float z) {
    const float values[] = {x, y, z};
    Record(device->Log(), "SetUniformVec3",
           [&] { inputs.uniforms.SetFloats(name, ValueKind::Vec3, values); });
}
void EngineEffect::SetUniformVec4(const char* name, float x, float y, float z, float w) {
    const float values[] = {x, y, z, w};
    Record(device->Log(), "SetUniformVec4",
           [&] { inputs.uniforms.SetFloats(name, ValueKind::Vec4, values); });
}
void EngineEffect::SetUniformMat3(const char* name, const float* value) {
    Record(device->Log(), "SetUniformMat3",
           [&] { inputs.uniforms.SetFloats(name, ValueKind::Mat3, value); });
}
void EngineEffect::SetUniformMat4(const char* name, const float* value) {
    Record(device->Log(), "SetUniformMat4",
           [&] { inputs.uniforms.SetFloats(name, ValueKind::Mat4, value); });
}
void EngineEffect::SetUniformArrayVec2(const char* name, const float* data, int32_t count) {
    Record(device->Log(), "SetUniformArrayVec2", [&] { inputs.arrays.Set(name, 2, data, count); });
}
void EngineEffect::SetUniformArrayVec4(const char* name, const float* data, int32_t count) {
    Record(device->Log(), "SetUniformArrayVec4", [&] { inputs.arrays.Set(name, 4, data, count); });
}
void EngineEffect::SetInstanceArrayVec2(const char* name, const float* data, int32_t count) {
    Record(device->Log(), "SetInstanceArrayVec2",
           [&] { geometry.SetInstances(name, 2, data, count); });
}
void EngineEffect::SetInstanceArrayVec4(const char* name, const float* data, int32_t count) {
    Record(device->Log(), "SetInstanceArrayVec4",
           [&] { geometry.SetInstances(name, 4, data, count); });
}

// --- inputs ---

void EngineEffect::AddInputTexture(int32_t, int32_t, int32_t, bool clip) {
    if (!inputs.slots.Declare(clip)) {
        device->Log().Error("engine: more than %d input slots", kMaxInputSlots);
    }
}

void EngineEffect::SetInputImage(int32_t slot, const void* pixels, int32_t width, int32_t height,
                                 int32_t rowBytes, int32_t format, bool, int32_t) {
    Record(device->Log(), "SetInputImage", [&] {
        const GlScope scope(*device);
        if (!scope) return;
        const PixelLayout layout =
            format == 1 || format == 4 ? LayoutOf(format) : PixelLayout::Unknown;
        inputs.slots.SetPixels(
            *device, slot,
            {static_cast<const uint8_t*>(pixels), width, height, rowBytes, layout, true}, false);
    });
}

void EngineEffect::SetInputMaterial(int32_t slot, const void* pixels, int32_t cols, int32_t rows,
                                    int32_t step, int32_t, bool, int32_t, int32_t, int32_t) {
    Record(device->Log(), "SetInputMaterial", [&] {
        const GlScope scope(*device);
        if (!scope) return;
        const PixelLayout layout = cols > 0 ? LayoutOf(step / cols) : PixelLayout::Unknown;
        inputs.slots.SetPixels(
            *device, slot, {static_cast<const uint8_t*>(pixels), cols, rows, step, layout, false},
            true);
    });
}

void EngineEffect::SetInputTexture(int32_t slot, const FrameRecord& frame, int32_t, int32_t,
                                   int32_t) {
    const GLuint texture = frame.texture > 0 ? static_cast<GLuint>(frame.texture) : 0;
    inputs.slots.SetTexture(*device, slot, texture);
}

int32_t EngineEffect::AddAudioBuffer() {
    return AtBoundary(device->Log(), "AddAudioBuffer", -1, [this] {
        const int32_t handle = shaders.AudioBuffers();
        shaders.AddAudioBuffer();
        audioNames.push_back("audio_spectrum" + (handle == 0 ? "" : std::to_string(handle)));
        inputs.arrays.Set(audioNames.back().c_str(), 1, nullptr, 0);
        return handle;
    });
}

void EngineEffect::SetAudioBuffer(int32_t handle, int32_t count, const float* values) {
    if (handle < 0 || static_cast<size_t>(handle) >= audioNames.size()) {
        device->Log().Error("engine: there is no audio buffer %d", handle);
        return;
    }
    const char* const name = audioNames[static_cast<size_t>(handle)].c_str();
    Record(device->Log(), "SetAudioBuffer", [&] { inputs.arrays.Set(name, 1, values, count); });
}

// --- geometry and switches ---

int32_t EngineEffect::AddRenderTarget() {
    return AtBoundary(device->Log(), "AddRenderTarget", -1, [this] { return pictures.Add(); });
}

void EngineEffect::SetVertexCount(int32_t count) {
    geometry.SetVertexCount(count);
}
void EngineEffect::SetInstanceCount(int32_t count) {
    geometry.SetInstanceCount(count);
}

void EngineEffect::AddVertexAttribute(const char* name, int32_t components, const void* data,
                                      bool keep, bool indexList) {
    Record(device->Log(), "AddVertexAttribute",
           [&] { geometry.SetAttribute(name, components, data, keep, indexList); });
}

void EngineEffect::SetDrawType(int32_t type) {
    geometry.SetDrawType(type);
}

void EngineEffect::SetBlendMode(int32_t mode) {
    if (mode >= kBlendOver && mode <= kBlendAdd) {
        state.blendMode = mode;
    } else {
        device->Log().Error("engine: there is no blend mode %d", mode);
    }
}

void EngineEffect::SetDepthTest(bool on) {
    state.depthTest = on;
}
void EngineEffect::SetDepthWrite(bool on) {
    state.depthWrite = on;
}
void EngineEffect::SetCullFace(bool on) {
    state.cullFace = on;
}

void EngineEffect::SetClearColor(float r, float g, float b, float a) {
    const float color[] = {r, g, b, a};
    std::copy(std::begin(color), std::end(color), state.clearColor);
}

void EngineEffect::SetVariantIndices(const std::vector<int32_t>& indices) {
    Record(device->Log(), "SetVariantIndices", [&] { shaders.SetVariants(indices); });
}

}  // namespace kelmo
