// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "contract/engine.h"
#include "engine/effect/effect_shaders.h"
#include "engine/effect/geometry.h"
#include "engine/effect/picture_set.h"

namespace kelmo {

/// Our engine side of one filter; the contract is with the base class.
///
/// What is decided here: a `Set` of another kind than the declaration changes the kind. A size that
/// does not change keeps the pictures. A target of another size receives the picture scaled. The
/// result that is bound as an input is read as it was before the pass. Calls come from one thread
/// at a time; several effects may run on several threads.
class EngineEffect final : public NLEOpenGLEngineEffect {
public:
    EngineEffect(std::shared_ptr<GlDevice> device, ShaderFiles files, bool multisample);

    void AddInputTexture(int32_t width, int32_t height, int32_t stride, bool clip) override;
    int32_t AddRenderTarget() override;
    int32_t AddAudioBuffer() override;
    void AddUniformFloat(const char* name, float value) override;
    void AddUniformInt(const char* name, int32_t value) override;
    void AddUniformVec2(const char* name, float x, float y) override;
    void AddUniformVec3(const char* name, float x, float y, float z) override;
    void AddUniformVec4(const char* name, float x, float y, float z, float w) override;
    void AddUniformMat3(const char* name, const float* value) override;
    void AddUniformMat4(const char* name, const float* value) override;
    void AddUniformArrayVec2(const char* name, const float* data, int32_t count) override;
    void AddUniformArrayVec4(const char* name, const float* data, int32_t count) override;
    void AddInstanceArrayVec2(const char* name, const float* data, int32_t count) override;
    void AddInstanceArrayVec4(const char* name, const float* data, int32_t count) override;
    int32_t CreateProgram(const std::shared_ptr<NLEOpenGLEngineEffect>& self) override;

    void SetUniformFloat(const char* name, float value) override;
    void SetUniformInt(const char* name, int32_t value) override;
    void SetUniformVec2(const char* name, float x, float y) override;
    void SetUniformVec3(const char* name, float x, float y, float z) override;
    void SetUniformVec4(const char* name, float x, float y, float z, float w) override;
    void SetUniformMat3(const char* name, const float* value) override;
    void SetUniformMat4(const char* name, const float* value) override;
    void SetUniformArrayVec2(const char* name, const float* data, int32_t count) override;
    void SetUniformArrayVec4(const char* name, const float* data, int32_t count) override;
    void SetInstanceArrayVec2(const char* name, const float* data, int32_t count) override;
    void SetInstanceArrayVec4(const char* name, const float* data, int32_t count) override;
    void SetInputImage(int32_t slot, const void* pixels, int32_t width, int32_t height,
                       int32_t stride, int32_t format, bool reserved, int32_t reserved2) override;
    void SetInputMaterial(int32_t slot, const void* pixels, int32_t cols, int32_t rows,
                          int32_t step, int32_t channels, bool reserved, int32_t reserved2,
                          int32_t word0, int32_t word1) override;
    void SetInputTexture(int32_t slot, const FrameRecord& frame, int32_t width, int32_t height,
                         int32_t stride) override;
    void SetAudioBuffer(int32_t handle, int32_t count, const float* values) override;

    void SetVertexCount(int32_t count) override;
    void SetInstanceCount(int32_t count) override;
    void AddVertexAttribute(const char* name, int32_t components, const void* data, bool keep,
                            bool indexList) override;
    void SetDrawType(int32_t type) override;
    void SetBlendMode(int32_t mode) override;
    void SetDepthTest(bool on) override;
    void SetDepthWrite(bool on) override;
    void SetCullFace(bool on) override;
    void SetClearColor(float r, float g, float b, float a) override;
    void SetVariantIndices(const std::vector<int32_t>& indices) override;

    void SetRenderTarget(int32_t index) override;
    FrameRecord GetRenderTarget(int32_t index) override;
    FrameRecord GetResultFrame() override;
    FrameRecord GetResultFrameAlt() override;
    int32_t Render(FrameRecord& target, const std::shared_ptr<NLEOpenGLEngineEffect>& self,
                   int32_t reserved) override;
    int32_t Resize(int32_t width, int32_t height, int32_t stride,
                   const std::shared_ptr<NLEOpenGLEngineEffect>& self) override;
    int32_t GetWidth() override;
    int32_t GetHeight() override;
    int32_t GetStride() override;
    bool ReadTexture(int32_t texture, int32_t width, int32_t height, int32_t stride,
                     void* target) override;
    bool RunOnGLThread(const std::function<bool()>& task) override;

private:
    /// Switches of a pass.
    struct PassState {
        int32_t blendMode = kBlendOver;
        bool depthTest = false;
        bool depthWrite = true;
        bool cullFace = false;
        float clearColor[4] = {};
    };

    /// Solid things have edges inside the frame, asked for or not.
    bool Smoothed() const { return multisample || state.depthTest; }
    bool DrawPass();
    void ApplyPassState() const;
    bool Deliver(const FrameRecord& target);
    bool DeliverPixels(const FrameRecord& target);
    FrameRecord GpuFrame(GLuint texture) const;
    const std::string& AudioName(int32_t handle);

    const std::shared_ptr<GlDevice> device;  // first: everything below gives its objects back to it
    EffectShaders shaders;
    const bool multisample;
    PassInputs inputs;
    Geometry geometry;
    PictureSet pictures;
    PassState state;
    int32_t stride = 0;
    std::vector<GLuint> readTextures;
    std::vector<std::string> audioNames;
};

}  // namespace kelmo
