// SPDX-License-Identifier: GPL-3.0-or-later
#include "engine/device/gl_device.h"

#include <algorithm>
#include <cstring>

namespace kelmo {
namespace {

/// The device whose scope this thread is in.
thread_local const GlDevice* currentDevice = nullptr;

/// Smoothed edges need no more than this; every OpenGL 3.3 has it.
constexpr int kMultisamples = 4;

GLint Integer(GLenum name) {
    GLint value = 0;
    glGetIntegerv(name, &value);
    return value;
}

bool IsSoftware() {
    const auto* renderer = reinterpret_cast<const char*>(glGetString(GL_RENDERER));
    if (!renderer) return false;
    return std::strstr(renderer, "llvmpipe") || std::strstr(renderer, "softpipe");
}

GlObject MakeSampler(GlDevice& device, GLenum wrap) {
    GlObject sampler(device, GlKind::Sampler);
    glSamplerParameteri(sampler.Id(), GL_TEXTURE_MIN_FILTER, GL_LINEAR);
    glSamplerParameteri(sampler.Id(), GL_TEXTURE_MAG_FILTER, GL_LINEAR);
    glSamplerParameteri(sampler.Id(), GL_TEXTURE_WRAP_S, static_cast<GLint>(wrap));
    glSamplerParameteri(sampler.Id(), GL_TEXTURE_WRAP_T, static_cast<GLint>(wrap));
    return sampler;
}

}  // namespace

GlDevice::GlDevice(std::unique_ptr<GlContext> context, EngineLog log)
    : context(std::move(context)), log(log) {}

GlDevice::~GlDevice() {
    // A host that has taken its context away has taken our objects along.
    const char* reason = nullptr;
    if (adopted && context->Enter(reason)) {
        if (context->Handle() == adopted) {
            currentDevice = this;
            commons = {};
            EmptyWaste();
            currentDevice = nullptr;
        }
        context->Leave();
    }
    commons = {};
}

bool GlDevice::Enter() {
    mutex.lock();
    if (depth == 0 && !Begin()) {
        mutex.unlock();
        return false;
    }
    ++depth;
    return true;
}

bool GlDevice::Begin() {
    const char* reason = "";
    if (!context->Enter(reason)) {
        log.Error("engine: %s", reason);
        return false;
    }
    if (!IsUsable()) {
        context->Leave();
        return false;
    }
    currentDevice = this;
    // An error of the host's, or of a failed operation, is not taken for one of the next.
    DropGlErrors();
    if (context->IsShared()) guard.Save();
    if (context->IsShared() || !adopted) ApplyBaseState();
    if (!adopted) MakeCommons();
    adopted = context->Handle();
    EmptyWaste();
    return true;
}

void GlDevice::Leave() {
    if (--depth == 0) {
        EmptyWaste();
        if (context->IsShared()) {
            guard.Restore();
            DropGlErrors();
        }
        currentDevice = nullptr;
        context->Leave();
    }
    mutex.unlock();
}

/// Called before anything else touches the context: it may be one of OpenGL ES, which lacks half of
/// what the rest uses.
bool GlDevice::IsUsable() {
    if (adopted == context->Handle()) return true;
    if (adopted) {
        log.Error("engine: the OpenGL context is another one than the effect was made in");
        return false;
    }
    if (!ReadLimits()) return false;
    guard.SetUp(limits.textureUnits);
    return true;
}

bool GlDevice::ReadLimits() {
    if (!epoxy_is_desktop_gl() || epoxy_gl_version() < 33) {
        log.Error("engine: OpenGL 3.3 is needed, the context has OpenGL %s%d.%d",
                  epoxy_is_desktop_gl() ? "" : "ES ", epoxy_gl_version() / 10,
                  epoxy_gl_version() % 10);
        return false;
    }
    limits.textureSize = Integer(GL_MAX_TEXTURE_SIZE);
    limits.bufferTexels = Integer(GL_MAX_TEXTURE_BUFFER_SIZE);
    limits.textureUnits = Integer(GL_MAX_TEXTURE_IMAGE_UNITS);
    limits.samples = std::min(Integer(GL_MAX_SAMPLES), kMultisamples);
    limits.software = IsSoftware();
    return true;
}

void GlDevice::MakeCommons() {
    commons.clipSampler = MakeSampler(*this, GL_CLAMP_TO_EDGE);
    commons.materialSampler = MakeSampler(*this, GL_REPEAT);
    const float zeros[4] = {};
    UseUnit(0);
    commons.emptyTexture = GlObject(*this, GlKind::Texture);
    glBindTexture(GL_TEXTURE_2D, commons.emptyTexture.Id());
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MAX_LEVEL, 0);
    glTexImage2D(GL_TEXTURE_2D, 0, GL_RGBA, 1, 1, 0, GL_BGRA, GL_UNSIGNED_INT_8_8_8_8_REV, zeros);
    commons.emptyBuffer = GlObject(*this, GlKind::Buffer);
    glBindBuffer(GL_TEXTURE_BUFFER, commons.emptyBuffer.Id());
    glBufferData(GL_TEXTURE_BUFFER, sizeof zeros, zeros, GL_STATIC_DRAW);
    glBindBuffer(GL_TEXTURE_BUFFER, 0);
    commons.emptyArray = GlObject(*this, GlKind::Texture);
    glBindTexture(GL_TEXTURE_BUFFER, commons.emptyArray.Id());
    glTexBuffer(GL_TEXTURE_BUFFER, GL_RGBA32F, commons.emptyBuffer.Id());
    commons.vertexArray = GlObject(*this, GlKind::VertexArray);
    MakeQuad();
}

void GlDevice::MakeQuad() {
    // A strip: position x, y, z, w and texcoord u, v, layer of each corner.
    constexpr float kCorners[] = {-1, -1, 0, 1, 0, 0, 0, 1, -1, 0, 1, 1, 0, 0,
                                  -1, 1,  0, 1, 0, 1, 0, 1, 1,  0, 1, 1, 1, 0};
    commons.quadBuffer = GlObject(*this, GlKind::Buffer);
    glBindBuffer(GL_ARRAY_BUFFER, commons.quadBuffer.Id());
    glBufferData(GL_ARRAY_BUFFER, sizeof kCorners, kCorners, GL_STATIC_DRAW);
    glBindBuffer(GL_ARRAY_BUFFER, 0);
}

uint8_t* GlDevice::Staging(size_t bytes) {
    if (staging.size() < bytes) staging.resize(bytes);
    return staging.data();
}

void GlDevice::UseUnit(int unit) {
    glActiveTexture(GL_TEXTURE0 + static_cast<GLenum>(unit));
    if (context->IsShared()) guard.SaveActiveUnit(unit);
}

void GlDevice::ApplyBaseState() {
    guard.SetBaseState();
}

void GlDevice::SaveAllUnits() {
    if (!context->IsShared()) return;
    for (int unit = 0; unit < limits.textureUnits; ++unit) UseUnit(unit);
}

void GlDevice::Discard(GlKind kind, GLuint id) {
    if (currentDevice == this) {
        DeleteGlName(kind, id);
        return;
    }
    const std::lock_guard lock(wasteMutex);
    waste.push_back({kind, id});
}

void GlDevice::EmptyWaste() {
    const std::lock_guard lock(wasteMutex);
    for (const Waste& item : waste) DeleteGlName(item.kind, item.id);
    waste.clear();
}

}  // namespace kelmo
