// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <epoxy/gl.h>

namespace kelmo::beauty {

/// Remembers what our drawing changes in the caller's context, sets what it needs, and puts all of
/// it back.
class GLStateScope {
public:
    static constexpr int kUnits = 4;

    GLStateScope();
    ~GLStateScope();
    GLStateScope(const GLStateScope&) = delete;
    GLStateScope& operator=(const GLStateScope&) = delete;

private:
    static constexpr GLenum kSwitches[] = {GL_BLEND, GL_DEPTH_TEST, GL_CULL_FACE, GL_SCISSOR_TEST,
                                           GL_STENCIL_TEST};
    static constexpr GLenum kUnpack[] = {GL_UNPACK_ALIGNMENT, GL_UNPACK_ROW_LENGTH,
                                         GL_UNPACK_SKIP_ROWS, GL_UNPACK_SKIP_PIXELS};

    GLint program = 0;
    GLint vertexArray = 0;
    GLint drawFramebuffer = 0;
    GLint readFramebuffer = 0;
    GLint unit = 0;
    GLint textures[kUnits] = {};
    GLint samplers[kUnits] = {};
    GLint viewport[4] = {};
    GLint unpackBuffer = 0;
    GLint unpack[4] = {};
    GLboolean colorMask[4] = {};
    GLboolean depthMask = GL_TRUE;
    GLboolean on[5] = {};
};

}  // namespace kelmo::beauty
