// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/gl_textures.h"

#include <epoxy/gl.h>

#include <cstring>

#include "platform/gl_entry_points.h"

namespace kelmo {
namespace {

/// Binds a texture for uploads and puts back what was bound, with its unpack state.
class UploadScope {
public:
    explicit UploadScope(GLuint texture) {
        glGetIntegerv(GL_TEXTURE_BINDING_2D, &before);
        glGetIntegerv(GL_UNPACK_ALIGNMENT, &alignment);
        glGetIntegerv(GL_UNPACK_ROW_LENGTH, &rowLength);
        glGetIntegerv(GL_PIXEL_UNPACK_BUFFER_BINDING, &buffer);
        glBindBuffer(GL_PIXEL_UNPACK_BUFFER, 0);
        glPixelStorei(GL_UNPACK_ALIGNMENT, 4);
        glPixelStorei(GL_UNPACK_ROW_LENGTH, 0);
        glBindTexture(GL_TEXTURE_2D, texture);
    }
    ~UploadScope() {
        glBindTexture(GL_TEXTURE_2D, static_cast<GLuint>(before));
        glPixelStorei(GL_UNPACK_ALIGNMENT, alignment);
        glPixelStorei(GL_UNPACK_ROW_LENGTH, rowLength);
        glBindBuffer(GL_PIXEL_UNPACK_BUFFER, static_cast<GLuint>(buffer));
    }
    UploadScope(const UploadScope&) = delete;

private:
    GLint before = 0;
    GLint alignment = 4;
    GLint rowLength = 0;
    GLint buffer = 0;
};

}  // namespace

int32_t GLTextures::Upload(std::size_t index, const void* pixels, int32_t width, int32_t height,
                           int32_t stride) {
    if (width < 1 || height < 1 || !LoadGLEntryPoints()) return 0;
    Texture& texture = textures[index];
    if (texture.id == 0) glGenTextures(1, &texture.id);
    const UploadScope scope(texture.id);
    if (texture.width != width || texture.height != height) {
        glTexImage2D(GL_TEXTURE_2D, 0, GL_RGBA8, width, height, 0, GL_BGRA, GL_UNSIGNED_BYTE,
                     nullptr);
        for (const GLenum side : {GL_TEXTURE_WRAP_S, GL_TEXTURE_WRAP_T}) {
            glTexParameteri(GL_TEXTURE_2D, side, GL_CLAMP_TO_EDGE);
        }
        glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MIN_FILTER, GL_LINEAR);
        glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MAG_FILTER, GL_LINEAR);
        texture.width = width;
        texture.height = height;
    }
    if (pixels) {
        const auto row = static_cast<std::size_t>(width) * 4;
        turned.resize(row * static_cast<std::size_t>(height));
        for (int32_t y = 0; y < height; ++y) {
            std::memcpy(
                turned.data() + row * static_cast<std::size_t>(height - 1 - y),
                static_cast<const uint8_t*>(pixels) + static_cast<std::ptrdiff_t>(y) * stride, row);
        }
        glTexSubImage2D(GL_TEXTURE_2D, 0, 0, 0, width, height, GL_BGRA, GL_UNSIGNED_BYTE,
                        turned.data());
    }
    return static_cast<int32_t>(texture.id);
}

void GLTextures::Release() {
    for (Texture& texture : textures) {
        if (texture.id != 0 && LoadGLEntryPoints()) glDeleteTextures(1, &texture.id);
        texture = Texture();
    }
}

}  // namespace kelmo
