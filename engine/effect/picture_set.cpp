// SPDX-License-Identifier: GPL-3.0-or-later
#include "engine/effect/picture_set.h"

#include <algorithm>
#include <utility>

namespace kelmo {
namespace {

constexpr GLfloat kTransparent[4] = {};
constexpr GLenum kDepthFormat = GL_DEPTH_COMPONENT24;

bool IsComplete() {
    return glCheckFramebufferStatus(GL_FRAMEBUFFER) == GL_FRAMEBUFFER_COMPLETE;
}

void BlitColor(int fromWidth, int fromHeight, int toWidth, int toHeight) {
    const bool same = fromWidth == toWidth && fromHeight == toHeight;
    glBlitFramebuffer(0, 0, fromWidth, fromHeight, 0, 0, toWidth, toHeight, GL_COLOR_BUFFER_BIT,
                      same ? GL_NEAREST : GL_LINEAR);
}

}  // namespace

bool PictureSet::Resize(GlDevice& device, int newWidth, int newHeight) {
    const int limit = device.Limits().textureSize;
    if (newWidth < 1 || newHeight < 1 || newWidth > limit || newHeight > limit) {
        device.Log().Error("engine: a size of %d x %d is outside 1..%d", newWidth, newHeight,
                           limit);
        return false;
    }
    if (newWidth == width && newHeight == height) return true;
    width = newWidth;
    height = newHeight;
    result.ready = false;
    spare.ready = false;
    for (Picture& picture : intermediates) picture.ready = false;
    depthReady = samplesReady = sampleDepthReady = false;
    return true;
}

int PictureSet::Add() {
    intermediates.emplace_back();
    return static_cast<int>(intermediates.size()) - 1;
}

bool PictureSet::Exchange(int index) {
    if (index < 0 || static_cast<size_t>(index) >= intermediates.size()) return false;
    std::swap(result, intermediates[static_cast<size_t>(index)]);
    return true;
}

GLuint PictureSet::Result(GlDevice& device) {
    return Prepare(device, result, width, height) ? result.texture.Id() : 0;
}

GLuint PictureSet::Intermediate(GlDevice& device, int index) {
    if (index < 0 || static_cast<size_t>(index) >= intermediates.size()) return 0;
    Picture& picture = intermediates[static_cast<size_t>(index)];
    return Prepare(device, picture, width, height) ? picture.texture.Id() : 0;
}

GLuint PictureSet::ReadyIntermediate(int index) const {
    if (index < 0 || static_cast<size_t>(index) >= intermediates.size()) return 0;
    const Picture& picture = intermediates[static_cast<size_t>(index)];
    return picture.ready ? picture.texture.Id() : 0;
}

bool PictureSet::Prepare(GlDevice& device, Picture& picture, int pictureWidth, int pictureHeight) {
    if (picture.ready) return true;
    if (!picture.texture) {
        picture.texture = GlObject(device, GlKind::Texture);
        picture.framebuffer = GlObject(device, GlKind::Framebuffer);
    }
    device.UseUnit(0);
    glBindTexture(GL_TEXTURE_2D, picture.texture.Id());
    // For readers that bring no sampler of their own.
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MIN_FILTER, GL_LINEAR);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_WRAP_S, GL_CLAMP_TO_EDGE);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_WRAP_T, GL_CLAMP_TO_EDGE);
    AllocatePixels(PixelLayout::Bgra, pictureWidth, pictureHeight);
    glBindFramebuffer(GL_FRAMEBUFFER, picture.framebuffer.Id());
    glFramebufferRenderbuffer(GL_FRAMEBUFFER, GL_DEPTH_ATTACHMENT, GL_RENDERBUFFER, 0);
    picture.hasDepth = false;
    glFramebufferTexture2D(GL_FRAMEBUFFER, GL_COLOR_ATTACHMENT0, GL_TEXTURE_2D,
                           picture.texture.Id(), 0);
    if (!IsComplete()) {
        device.Log().Error("engine: no memory for a picture of %d x %d", pictureWidth,
                           pictureHeight);
        return false;
    }
    glClearBufferfv(GL_COLOR, 0, kTransparent);
    picture.ready = true;
    return true;
}

bool PictureSet::PrepareDepth(GlDevice& device) {
    if (!depthReady) {
        if (!depthBuffer) depthBuffer = GlObject(device, GlKind::Renderbuffer);
        glBindRenderbuffer(GL_RENDERBUFFER, depthBuffer.Id());
        glRenderbufferStorage(GL_RENDERBUFFER, kDepthFormat, width, height);
        depthReady = true;
    }
    if (!result.hasDepth) {
        glFramebufferRenderbuffer(GL_FRAMEBUFFER, GL_DEPTH_ATTACHMENT, GL_RENDERBUFFER,
                                  depthBuffer.Id());
        result.hasDepth = true;
    }
    return IsComplete();
}

bool PictureSet::PrepareSamples(GlDevice& device, int samples, bool depth) {
    if (!sampleFramebuffer) {
        sampleFramebuffer = GlObject(device, GlKind::Framebuffer);
        sampleColor = GlObject(device, GlKind::Renderbuffer);
        sampleDepth = GlObject(device, GlKind::Renderbuffer);
    }
    glBindFramebuffer(GL_FRAMEBUFFER, sampleFramebuffer.Id());
    if (!samplesReady) {
        glBindRenderbuffer(GL_RENDERBUFFER, sampleColor.Id());
        glRenderbufferStorageMultisample(GL_RENDERBUFFER, samples, GL_RGBA8, width, height);
        glFramebufferRenderbuffer(GL_FRAMEBUFFER, GL_COLOR_ATTACHMENT0, GL_RENDERBUFFER,
                                  sampleColor.Id());
        samplesReady = true;
        // A depth buffer of the old size makes the framebuffer incomplete.
        glFramebufferRenderbuffer(GL_FRAMEBUFFER, GL_DEPTH_ATTACHMENT, GL_RENDERBUFFER, 0);
    }
    if (depth && !sampleDepthReady) {
        glBindRenderbuffer(GL_RENDERBUFFER, sampleDepth.Id());
        glRenderbufferStorageMultisample(GL_RENDERBUFFER, samples, kDepthFormat, width, height);
        glFramebufferRenderbuffer(GL_FRAMEBUFFER, GL_DEPTH_ATTACHMENT, GL_RENDERBUFFER,
                                  sampleDepth.Id());
        sampleDepthReady = true;
    }
    return IsComplete();
}

bool PictureSet::BeginPass(GlDevice& device, const std::vector<GLuint>& read, bool depth,
                           int samples) {
    if (!Prepare(device, result, width, height)) return false;
    multisampled = samples > 0;
    if (std::find(read.begin(), read.end(), result.texture.Id()) != read.end()) {
        if (!Prepare(device, spare, width, height)) return false;
        std::swap(result, spare);
    }
    glBindFramebuffer(GL_FRAMEBUFFER, result.framebuffer.Id());
    glViewport(0, 0, width, height);
    const bool complete =
        multisampled ? PrepareSamples(device, samples, depth) : !depth || PrepareDepth(device);
    if (!complete) {
        // Short of memory, perhaps: the next pass asks again.
        depthReady = samplesReady = sampleDepthReady = false;
        device.Log().Error("engine: the driver cannot draw %d x %d", width, height);
    }
    return complete;
}

void PictureSet::EndPass() {
    if (!multisampled) return;
    glBindFramebuffer(GL_READ_FRAMEBUFFER, sampleFramebuffer.Id());
    glBindFramebuffer(GL_DRAW_FRAMEBUFFER, result.framebuffer.Id());
    BlitColor(width, height, width, height);
}

bool PictureSet::ReadResult(GlDevice& device, uint8_t* target, int targetWidth, int targetHeight,
                            int stride) {
    glBindFramebuffer(GL_FRAMEBUFFER, result.framebuffer.Id());
    if (targetWidth != width || targetHeight != height) {
        Picture& picture = scaled.picture;
        if (scaled.width != targetWidth || scaled.height != targetHeight) picture.ready = false;
        if (!Prepare(device, picture, targetWidth, targetHeight)) return false;
        scaled.width = targetWidth;
        scaled.height = targetHeight;
        glBindFramebuffer(GL_READ_FRAMEBUFFER, result.framebuffer.Id());
        glBindFramebuffer(GL_DRAW_FRAMEBUFFER, picture.framebuffer.Id());
        BlitColor(width, height, targetWidth, targetHeight);
        glBindFramebuffer(GL_FRAMEBUFFER, picture.framebuffer.Id());
    }
    ReadPixels(device, targetWidth, targetHeight, target, stride);
    return true;
}

bool PictureSet::CopyResult(GlDevice& device, GLuint texture, int targetWidth, int targetHeight) {
    if (texture == result.texture.Id()) return true;
    if (!copyFramebuffer) copyFramebuffer = GlObject(device, GlKind::Framebuffer);
    if (!glIsTexture(texture)) {
        device.Log().Error("engine: there is no texture %u to draw into", texture);
        return false;
    }
    glBindFramebuffer(GL_FRAMEBUFFER, copyFramebuffer.Id());
    glFramebufferTexture2D(GL_FRAMEBUFFER, GL_COLOR_ATTACHMENT0, GL_TEXTURE_2D, texture, 0);
    const bool complete = IsComplete();
    if (complete) {
        glBindFramebuffer(GL_READ_FRAMEBUFFER, result.framebuffer.Id());
        BlitColor(width, height, targetWidth, targetHeight);
    } else {
        device.Log().Error("engine: texture %u cannot be drawn into", texture);
    }
    glBindFramebuffer(GL_FRAMEBUFFER, copyFramebuffer.Id());
    glFramebufferTexture2D(GL_FRAMEBUFFER, GL_COLOR_ATTACHMENT0, GL_TEXTURE_2D, 0, 0);
    return complete;
}

}  // namespace kelmo
