// SPDX-License-Identifier: GPL-3.0-or-later
#include "engine/effect/engine_effect.h"

#include "engine/effect/boundary.h"

namespace kelmo {
namespace {

constexpr int32_t kFailed = 1;

}  // namespace

EngineEffect::EngineEffect(std::shared_ptr<GlDevice> device, ShaderFiles files, bool multisample)
    : device(std::move(device)), shaders(std::move(files)), multisample(multisample) {}

int32_t EngineEffect::CreateProgram(const std::shared_ptr<NLEOpenGLEngineEffect>&) {
    return AtBoundary(device->Log(), "CreateProgram", kFailed, [this] {
        const GlScope scope(*device);
        return scope && shaders.Rebuild(*device) ? 0 : kFailed;
    });
}

int32_t EngineEffect::Resize(int32_t width, int32_t height, int32_t newStride,
                             const std::shared_ptr<NLEOpenGLEngineEffect>&) {
    return AtBoundary(device->Log(), "Resize", kFailed, [&] {
        const GlScope scope(*device);
        if (!scope || !pictures.Resize(*device, width, height)) return kFailed;
        stride = newStride;
        return 0;
    });
}

int32_t EngineEffect::GetWidth() {
    return pictures.Width();
}
int32_t EngineEffect::GetHeight() {
    return pictures.Height();
}
int32_t EngineEffect::GetStride() {
    return stride;
}

int32_t EngineEffect::Render(FrameRecord& target, const std::shared_ptr<NLEOpenGLEngineEffect>&,
                             int32_t) {
    const int32_t result = AtBoundary(device->Log(), "Render", kFailed, [&] {
        const GlScope scope(*device);
        if (!scope) return kFailed;
        // First of all: what is not taken now is gone, and its owner may not hand it over again.
        geometry.Upload(*device);
        if (!DrawPass() || !Deliver(target)) return kFailed;
        const GLenum problem = glGetError();
        if (problem == GL_NO_ERROR) return 0;
        device->Log().Error("engine: OpenGL error 0x%04x in a pass", problem);
        return kFailed;
    });
    geometry.DropBorrowed();
    return result;
}

bool EngineEffect::DrawPass() {
    PassProgram* const pass = shaders.Current(*device);
    if (!pass) return false;
    pass->Match(*device, inputs);
    inputs.slots.DropDeadTextures();
    readTextures.clear();
    pass->CollectTextures(*device, inputs, readTextures);
    const int samples = Smoothed() ? device->Limits().samples : 0;
    if (!pictures.BeginPass(*device, readTextures, state.depthTest, samples)) return false;
    ApplyPassState();
    pass->Apply(*device, inputs, pictures.Width(), pictures.Height());
    const bool drawn = geometry.Draw(*device, pass->Program());
    if (Smoothed()) glDisable(GL_MULTISAMPLE);
    pictures.EndPass();
    return drawn;
}

void EngineEffect::ApplyPassState() const {
    const auto set = [](GLenum name, bool on) { on ? glEnable(name) : glDisable(name); };
    set(GL_MULTISAMPLE, Smoothed());
    set(GL_DEPTH_TEST, state.depthTest);
    set(GL_CULL_FACE, state.cullFace);
    const float* clear = state.clearColor;
    glDepthMask(GL_TRUE);
    glClearColor(clear[0], clear[1], clear[2], clear[3]);
    glClear(GL_COLOR_BUFFER_BIT | (state.depthTest ? GL_DEPTH_BUFFER_BIT : 0u));
    glDepthMask(state.depthWrite ? GL_TRUE : GL_FALSE);
    // One quad over a transparent picture replaces it, whatever the mode says; blending would cost.
    const bool once = geometry.IsQuad() && !geometry.IsInstanced() && shaders.HasDefaultVertex();
    const bool blank = once && clear[0] == 0 && clear[1] == 0 && clear[2] == 0 && clear[3] == 0;
    set(GL_BLEND, state.blendMode != kBlendReplace && !blank);
    glBlendFunc(GL_ONE, state.blendMode == kBlendAdd ? GL_ONE : GL_ONE_MINUS_SRC_ALPHA);
}

bool EngineEffect::Deliver(const FrameRecord& target) {
    if (target.HasCpuPixels()) return DeliverPixels(target);
    if (!target.HasTexture()) {
        if (target.isCpu) return true;  // the picture stays here
        device->Log().Error("engine: a target without a texture");
        return false;
    }
    const int width = target.width > 0 ? target.width : pictures.Width();
    const int height = target.height > 0 ? target.height : pictures.Height();
    return pictures.CopyResult(*device, static_cast<GLuint>(target.texture), width, height);
}

bool EngineEffect::DeliverPixels(const FrameRecord& target) {
    const int limit = device->Limits().textureSize;
    const bool fits = target.width > 0 && target.height > 0 && target.width <= limit &&
                      target.height <= limit && target.stride / 4 >= target.width;
    if (!fits || target.channels != 4) {
        device->Log().Error("engine: no picture of %d x %d with %d channels in rows of %d bytes",
                            target.width, target.height, target.channels, target.stride);
        return false;
    }
    return pictures.ReadResult(*device, static_cast<uint8_t*>(target.pixels), target.width,
                               target.height, target.stride);
}

FrameRecord EngineEffect::GpuFrame(GLuint texture) const {
    FrameRecord frame;
    if (texture == 0) return frame;
    frame.tag = -1;
    frame.texture = static_cast<int32_t>(texture);
    frame.isCpu = 0;
    frame.width = pictures.Width();
    frame.height = pictures.Height();
    frame.stride = stride;
    return frame;
}

void EngineEffect::SetRenderTarget(int32_t index) {
    if (!pictures.Exchange(index)) {
        device->Log().Error("engine: there is no intermediate picture %d", index);
    }
}

FrameRecord EngineEffect::GetRenderTarget(int32_t index) {
    if (const GLuint ready = pictures.ReadyIntermediate(index)) return GpuFrame(ready);
    return AtBoundary(device->Log(), "GetRenderTarget", FrameRecord(), [&] {
        const GlScope scope(*device);
        return scope ? GpuFrame(pictures.Intermediate(*device, index)) : FrameRecord();
    });
}

FrameRecord EngineEffect::GetResultFrame() {
    if (const GLuint ready = pictures.ReadyResult()) return GpuFrame(ready);
    return AtBoundary(device->Log(), "GetResultFrame", FrameRecord(), [&] {
        const GlScope scope(*device);
        return scope ? GpuFrame(pictures.Result(*device)) : FrameRecord();
    });
}

FrameRecord EngineEffect::GetResultFrameAlt() {
    return GetResultFrame();
}

bool EngineEffect::ReadTexture(int32_t texture, int32_t width, int32_t height, int32_t rowBytes,
                               void* target) {
    return AtBoundary(device->Log(), "ReadTexture", false, [&] {
        const GlScope scope(*device);
        return scope && ReadBackTexture(*device, texture, width, height, rowBytes, target);
    });
}

bool EngineEffect::RunOnGLThread(const std::function<bool()>& task) {
    return AtBoundary(device->Log(), "RunOnGLThread", false, [&] {
        const GlScope scope(*device);
        if (!scope || !task) return false;
        // The task may leave any state behind, also by throwing; the next pass must not draw with
        // it, and the host must not find it.
        const struct BaseStateAfter {
            GlDevice& device;
            ~BaseStateAfter() { device.ApplyBaseState(); }
        } after{*device};
        device->SaveAllUnits();
        return task();
    });
}

}  // namespace kelmo
