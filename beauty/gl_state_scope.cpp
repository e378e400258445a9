// SPDX-License-Identifier: GPL-3.0-or-later
#include "beauty/gl_state_scope.h"

#include <iterator>

namespace kelmo::beauty {

GLStateScope::GLStateScope() {
    glGetIntegerv(GL_CURRENT_PROGRAM, &program);
    glGetIntegerv(GL_VERTEX_ARRAY_BINDING, &vertexArray);
    glGetIntegerv(GL_DRAW_FRAMEBUFFER_BINDING, &drawFramebuffer);
    glGetIntegerv(GL_READ_FRAMEBUFFER_BINDING, &readFramebuffer);
    glGetIntegerv(GL_ACTIVE_TEXTURE, &unit);
    for (int i = 0; i < kUnits; ++i) {
        glActiveTexture(GL_TEXTURE0 + static_cast<GLenum>(i));
        glGetIntegerv(GL_TEXTURE_BINDING_2D, &textures[i]);
        glGetIntegerv(GL_SAMPLER_BINDING, &samplers[i]);
        glBindSampler(static_cast<GLuint>(i), 0);
    }
    glGetIntegerv(GL_VIEWPORT, viewport);
    glGetIntegerv(GL_PIXEL_UNPACK_BUFFER_BINDING, &unpackBuffer);
    for (std::size_t i = 0; i < std::size(kUnpack); ++i) glGetIntegerv(kUnpack[i], &unpack[i]);
    glGetBooleanv(GL_COLOR_WRITEMASK, colorMask);
    glGetBooleanv(GL_DEPTH_WRITEMASK, &depthMask);
    for (std::size_t i = 0; i < std::size(kSwitches); ++i) {
        on[i] = glIsEnabled(kSwitches[i]);
        glDisable(kSwitches[i]);
    }
    glBindBuffer(GL_PIXEL_UNPACK_BUFFER, 0);
    glPixelStorei(GL_UNPACK_ALIGNMENT, 1);
    for (std::size_t i = 1; i < std::size(kUnpack); ++i) glPixelStorei(kUnpack[i], 0);
    glColorMask(GL_TRUE, GL_TRUE, GL_TRUE, GL_TRUE);
    glDepthMask(GL_FALSE);
}

GLStateScope::~GLStateScope() {
    for (std::size_t i = 0; i < std::size(kSwitches); ++i) {
        if (on[i]) glEnable(kSwitches[i]);
    }
    glDepthMask(depthMask);
    glColorMask(colorMask[0], colorMask[1], colorMask[2], colorMask[3]);
    for (std::size_t i = 0; i < std::size(kUnpack); ++i) glPixelStorei(kUnpack[i], unpack[i]);
    glBindBuffer(GL_PIXEL_UNPACK_BUFFER, static_cast<GLuint>(unpackBuffer));
    glViewport(viewport[0], viewport[1], viewport[2], viewport[3]);
    for (int i = 0; i < kUnits; ++i) {
        glActiveTexture(GL_TEXTURE0 + static_cast<GLenum>(i));
        glBindTexture(GL_TEXTURE_2D, static_cast<GLuint>(textures[i]));
        glBindSampler(static_cast<GLuint>(i), static_cast<GLuint>(samplers[i]));
    }
    glActiveTexture(static_cast<GLenum>(unit));
    glBindFramebuffer(GL_DRAW_FRAMEBUFFER, static_cast<GLuint>(drawFramebuffer));
    glBindFramebuffer(GL_READ_FRAMEBUFFER, static_cast<GLuint>(readFramebuffer));
    glBindVertexArray(static_cast<GLuint>(vertexArray));
    glUseProgram(static_cast<GLuint>(program));
}

}  // namespace kelmo::beauty
