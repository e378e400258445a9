// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <epoxy/gl.h>

#include <utility>

namespace kelmo {

class GlDevice;

enum class GlKind { Texture, Buffer, Framebuffer, Renderbuffer, VertexArray, Sampler, Program };

/// Owns one GL object. Moved, never copied.
///
/// Made with the device's context current. It may be destroyed on any thread: without the context
/// the name waits in the device until somebody enters it. The device must outlive the object.
class GlObject {
public:
    GlObject() = default;
    /// Generates a name of `kind`.
    GlObject(GlDevice& device, GlKind kind);
    /// Takes over a name that exists.
    GlObject(GlDevice& device, GlKind kind, GLuint id);
    GlObject(GlObject&& other) noexcept { Swap(other); }
    GlObject& operator=(GlObject&& other) noexcept {
        GlObject moved(std::move(other));
        Swap(moved);
        return *this;
    }
    ~GlObject();

    GLuint Id() const { return id; }
    explicit operator bool() const { return id != 0; }

private:
    void Swap(GlObject& other) noexcept {
        std::swap(device, other.device);
        std::swap(kind, other.kind);
        std::swap(id, other.id);
    }

    GlDevice* device = nullptr;
    GlKind kind = GlKind::Texture;
    GLuint id = 0;
};

/// Deletes a name of `kind` in the current context.
void DeleteGlName(GlKind kind, GLuint id);

}  // namespace kelmo
