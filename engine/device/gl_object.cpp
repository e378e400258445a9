// SPDX-License-Identifier: GPL-3.0-or-later
#include "engine/device/gl_object.h"

#include "engine/device/gl_device.h"

namespace kelmo {
namespace {

GLuint Generate(GlKind kind) {
    GLuint id = 0;
    switch (kind) {
        case GlKind::Texture:
            glGenTextures(1, &id);
            break;
        case GlKind::Buffer:
            glGenBuffers(1, &id);
            break;
        case GlKind::Framebuffer:
            glGenFramebuffers(1, &id);
            break;
        case GlKind::Renderbuffer:
            glGenRenderbuffers(1, &id);
            break;
        case GlKind::VertexArray:
            glGenVertexArrays(1, &id);
            break;
        case GlKind::Sampler:
            glGenSamplers(1, &id);
            break;
        case GlKind::Program:
            id = glCreateProgram();
            break;
    }
    return id;
}

}  // namespace

void DeleteGlName(GlKind kind, GLuint id) {
    switch (kind) {
        case GlKind::Texture:
            glDeleteTextures(1, &id);
            break;
        case GlKind::Buffer:
            glDeleteBuffers(1, &id);
            break;
        case GlKind::Framebuffer:
            glDeleteFramebuffers(1, &id);
            break;
        case GlKind::Renderbuffer:
            glDeleteRenderbuffers(1, &id);
            break;
        case GlKind::VertexArray:
            glDeleteVertexArrays(1, &id);
            break;
        case GlKind::Sampler:
            glDeleteSamplers(1, &id);
            break;
        case GlKind::Program:
            glDeleteProgram(id);
            break;
    }
}

GlObject::GlObject(GlDevice& device, GlKind kind) : GlObject(device, kind, Generate(kind)) {}

GlObject::GlObject(GlDevice& device, GlKind kind, GLuint id)
    : device(&device), kind(kind), id(id) {}

GlObject::~GlObject() {
    if (id != 0) device->Discard(kind, id);
}

}  // namespace kelmo
