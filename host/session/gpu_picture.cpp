// SPDX-License-Identifier: GPL-3.0-or-later
#include "host/session/gpu_picture.h"

#include <epoxy/gl.h>

#include <cstring>

namespace kelmo::host {

namespace {

void TurnRows(const uint8_t* from, uint8_t* to, size_t stride, int rows) {
    for (int y = 0; y < rows; ++y) {
        std::memcpy(to + static_cast<size_t>(rows - 1 - y) * stride,
                    from + static_cast<size_t>(y) * stride, stride);
    }
}

/// The engine leaves the transfer state as it likes; ours must be plain.
void PlainTransfer() {
    glBindBuffer(GL_PIXEL_UNPACK_BUFFER, 0);
    glBindBuffer(GL_PIXEL_PACK_BUFFER, 0);
    for (const GLenum side : {GL_UNPACK_ROW_LENGTH, GL_UNPACK_SKIP_ROWS, GL_UNPACK_SKIP_PIXELS,
                              GL_PACK_ROW_LENGTH, GL_PACK_SKIP_ROWS, GL_PACK_SKIP_PIXELS}) {
        glPixelStorei(side, 0);
    }
    glPixelStorei(GL_UNPACK_ALIGNMENT, 4);
    glPixelStorei(GL_PACK_ALIGNMENT, 4);
}

}  // namespace

GpuPicture::GpuPicture(int pictureWidth, int pictureHeight)
    : width(pictureWidth), height(pictureHeight) {
    GLuint texture = 0;
    glGenTextures(1, &texture);
    PlainTransfer();
    glActiveTexture(GL_TEXTURE0);
    glBindTexture(GL_TEXTURE_2D, texture);
    glTexImage2D(GL_TEXTURE_2D, 0, GL_RGBA8, width, height, 0, GL_BGRA, GL_UNSIGNED_BYTE, nullptr);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MIN_FILTER, GL_LINEAR);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MAG_FILTER, GL_LINEAR);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_WRAP_S, GL_CLAMP_TO_EDGE);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_WRAP_T, GL_CLAMP_TO_EDGE);
    glBindTexture(GL_TEXTURE_2D, 0);
    surface.texture = static_cast<int32_t>(texture);

    GLint before = 0;
    glGetIntegerv(GL_READ_FRAMEBUFFER_BINDING, &before);
    glGenFramebuffers(1, &framebuffer);
    glBindFramebuffer(GL_READ_FRAMEBUFFER, framebuffer);
    glFramebufferTexture2D(GL_READ_FRAMEBUFFER, GL_COLOR_ATTACHMENT0, GL_TEXTURE_2D, texture, 0);
    glBindFramebuffer(GL_READ_FRAMEBUFFER, static_cast<GLuint>(before));
    turned.resize(static_cast<size_t>(width) * 4 * static_cast<size_t>(height));
}

GpuPicture::~GpuPicture() {
    const GLuint texture = static_cast<GLuint>(surface.texture);
    glDeleteFramebuffers(1, &framebuffer);
    glDeleteTextures(1, &texture);
}

void GpuPicture::Upload(const Picture& picture) {
    TurnRows(picture.pixels.data(), turned.data(), static_cast<size_t>(width) * 4, height);
    PlainTransfer();
    glActiveTexture(GL_TEXTURE0);
    glBindTexture(GL_TEXTURE_2D, static_cast<GLuint>(surface.texture));
    glTexSubImage2D(GL_TEXTURE_2D, 0, 0, 0, width, height, GL_BGRA, GL_UNSIGNED_BYTE,
                    turned.data());
    glBindTexture(GL_TEXTURE_2D, 0);
}

void GpuPicture::Download(Picture& picture) {
    picture.Resize(width, height);
    GLint before = 0;
    glGetIntegerv(GL_READ_FRAMEBUFFER_BINDING, &before);
    PlainTransfer();
    glBindFramebuffer(GL_READ_FRAMEBUFFER, framebuffer);
    glReadBuffer(GL_COLOR_ATTACHMENT0);
    glReadPixels(0, 0, width, height, GL_BGRA, GL_UNSIGNED_BYTE, turned.data());
    glBindFramebuffer(GL_READ_FRAMEBUFFER, static_cast<GLuint>(before));
    TurnRows(turned.data(), picture.pixels.data(), static_cast<size_t>(width) * 4, height);
}

}  // namespace kelmo::host
