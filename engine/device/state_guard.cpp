// SPDX-License-Identifier: GPL-3.0-or-later
#include "engine/device/state_guard.h"

namespace kelmo {
namespace {

/// Everything that could change what a pass of ours draws. All off in the base state.
constexpr std::array<GLenum, 26> kSwitches = {
    GL_BLEND,
    GL_DEPTH_TEST,
    GL_CULL_FACE,
    GL_SCISSOR_TEST,
    GL_STENCIL_TEST,
    GL_COLOR_LOGIC_OP,
    GL_DITHER,
    GL_FRAMEBUFFER_SRGB,
    GL_DEPTH_CLAMP,
    GL_POLYGON_OFFSET_FILL,
    GL_LINE_SMOOTH,
    GL_POLYGON_SMOOTH,
    GL_MULTISAMPLE,
    GL_SAMPLE_ALPHA_TO_COVERAGE,
    GL_SAMPLE_COVERAGE,
    GL_RASTERIZER_DISCARD,
    GL_PRIMITIVE_RESTART,
    GL_SAMPLE_MASK,
    GL_CLIP_DISTANCE0,
    GL_CLIP_DISTANCE1,
    GL_CLIP_DISTANCE2,
    GL_CLIP_DISTANCE3,
    GL_CLIP_DISTANCE4,
    GL_CLIP_DISTANCE5,
    GL_CLIP_DISTANCE6,
    GL_CLIP_DISTANCE7,
};
/// Those that a core context does not have.
constexpr std::array<GLenum, 3> kOldSwitches = {GL_ALPHA_TEST, GL_POLYGON_STIPPLE, GL_LINE_STIPPLE};

/// With the value that each has in the base state.
struct PixelStore {
    GLenum name;
    GLint base;
};
constexpr std::array<PixelStore, 16> kPixelStore = {{
    {GL_UNPACK_ALIGNMENT, 1},
    {GL_UNPACK_ROW_LENGTH, 0},
    {GL_UNPACK_SKIP_ROWS, 0},
    {GL_UNPACK_SKIP_PIXELS, 0},
    {GL_UNPACK_SWAP_BYTES, 0},
    {GL_UNPACK_LSB_FIRST, 0},
    {GL_UNPACK_IMAGE_HEIGHT, 0},
    {GL_UNPACK_SKIP_IMAGES, 0},
    {GL_PACK_ALIGNMENT, 1},
    {GL_PACK_ROW_LENGTH, 0},
    {GL_PACK_SKIP_ROWS, 0},
    {GL_PACK_SKIP_PIXELS, 0},
    {GL_PACK_SWAP_BYTES, 0},
    {GL_PACK_LSB_FIRST, 0},
    {GL_PACK_IMAGE_HEIGHT, 0},
    {GL_PACK_SKIP_IMAGES, 0},
}};

void Switch(GLenum name, bool on) {
    if (on) {
        glEnable(name);
    } else {
        glDisable(name);
    }
}

GLuint Name(GLint value) {
    return static_cast<GLuint>(value);
}
GLenum Enum(GLint value) {
    return static_cast<GLenum>(value);
}

}  // namespace

void DropGlErrors() {
    // Bounded: without a context the question is an error itself.
    for (int i = 0; i < 8 && glGetError() != GL_NO_ERROR; ++i) {
    }
}

void StateGuard::SetUp(int unitCount) {
    units.assign(static_cast<size_t>(unitCount), {});
    GLint profile = 0;
    glGetIntegerv(GL_CONTEXT_PROFILE_MASK, &profile);
    compatible = (profile & GL_CONTEXT_COMPATIBILITY_PROFILE_BIT) != 0;
}

void StateGuard::SetBaseState() const {
    for (const GLenum name : kSwitches) glDisable(name);
    if (compatible) {
        for (const GLenum name : kOldSwitches) glDisable(name);
    }
    for (const PixelStore& store : kPixelStore) glPixelStorei(store.name, store.base);
    glBindBuffer(GL_PIXEL_PACK_BUFFER, 0);
    glBindBuffer(GL_PIXEL_UNPACK_BUFFER, 0);
    glBlendEquation(GL_FUNC_ADD);
    glColorMask(GL_TRUE, GL_TRUE, GL_TRUE, GL_TRUE);
    glDepthMask(GL_TRUE);
    glDepthFunc(GL_LESS);
    glDepthRange(0, 1);
    glClearDepth(1);
    glCullFace(GL_BACK);
    glFrontFace(GL_CCW);
    glPolygonMode(GL_FRONT_AND_BACK, GL_FILL);
    glLineWidth(1);
}

void StateGuard::Save() {
    for (size_t i = 0; i < kSwitches.size(); ++i) switches[i] = glIsEnabled(kSwitches[i]);
    for (size_t i = 0; i < kPixelStore.size(); ++i) {
        glGetIntegerv(kPixelStore[i].name, &pixelStore[i]);
    }
    glGetIntegerv(GL_DRAW_FRAMEBUFFER_BINDING, &drawFramebuffer);
    glGetIntegerv(GL_READ_FRAMEBUFFER_BINDING, &readFramebuffer);
    glGetIntegerv(GL_VERTEX_ARRAY_BINDING, &vertexArray);
    glGetIntegerv(GL_CURRENT_PROGRAM, &program);
    glGetIntegerv(GL_ARRAY_BUFFER_BINDING, &arrayBuffer);
    glGetIntegerv(GL_PIXEL_PACK_BUFFER_BINDING, &packBuffer);
    glGetIntegerv(GL_PIXEL_UNPACK_BUFFER_BINDING, &unpackBuffer);
    glGetIntegerv(GL_ACTIVE_TEXTURE, &activeUnit);
    glGetIntegerv(GL_VIEWPORT, viewport);
    glGetFloatv(GL_COLOR_CLEAR_VALUE, clearColor);
    glGetBooleanv(GL_COLOR_WRITEMASK, colorMask);
    SaveBlend();
    SaveDepthAndRaster();
    for (Unit& unit : units) unit.saved = false;
}

void StateGuard::SaveBlend() {
    glGetIntegerv(GL_BLEND_SRC_RGB, &blendFactors[0]);
    glGetIntegerv(GL_BLEND_DST_RGB, &blendFactors[1]);
    glGetIntegerv(GL_BLEND_SRC_ALPHA, &blendFactors[2]);
    glGetIntegerv(GL_BLEND_DST_ALPHA, &blendFactors[3]);
    glGetIntegerv(GL_BLEND_EQUATION_RGB, &blendEquations[0]);
    glGetIntegerv(GL_BLEND_EQUATION_ALPHA, &blendEquations[1]);
}

void StateGuard::SaveDepthAndRaster() {
    glGetIntegerv(GL_DEPTH_FUNC, &depthFunction);
    glGetBooleanv(GL_DEPTH_WRITEMASK, &depthMask);
    glGetDoublev(GL_DEPTH_CLEAR_VALUE, &clearDepth);
    glGetDoublev(GL_DEPTH_RANGE, depthRange);
    glGetIntegerv(GL_CULL_FACE_MODE, &cullMode);
    glGetIntegerv(GL_FRONT_FACE, &frontFace);
    glGetIntegerv(GL_POLYGON_MODE, polygonMode);
    glGetFloatv(GL_LINE_WIDTH, &lineWidth);
    if (!compatible) return;
    for (size_t i = 0; i < kOldSwitches.size(); ++i) oldSwitches[i] = glIsEnabled(kOldSwitches[i]);
}

void StateGuard::SaveActiveUnit(int unit) {
    if (unit < 0 || static_cast<size_t>(unit) >= units.size()) return;
    Unit& saved = units[static_cast<size_t>(unit)];
    if (saved.saved) return;
    saved.saved = true;
    glGetIntegerv(GL_TEXTURE_BINDING_2D, &saved.texture);
    glGetIntegerv(GL_TEXTURE_BINDING_BUFFER, &saved.buffer);
    glGetIntegerv(GL_SAMPLER_BINDING, &saved.sampler);
}

void StateGuard::Restore() {
    RestoreUnits();
    glActiveTexture(Enum(activeUnit));
    for (size_t i = 0; i < kSwitches.size(); ++i) Switch(kSwitches[i], switches[i] != GL_FALSE);
    for (size_t i = 0; i < kPixelStore.size(); ++i) {
        glPixelStorei(kPixelStore[i].name, pixelStore[i]);
    }
    glBindFramebuffer(GL_DRAW_FRAMEBUFFER, Name(drawFramebuffer));
    glBindFramebuffer(GL_READ_FRAMEBUFFER, Name(readFramebuffer));
    glBindVertexArray(Name(vertexArray));
    glUseProgram(Name(program));
    glBindBuffer(GL_ARRAY_BUFFER, Name(arrayBuffer));
    glBindBuffer(GL_PIXEL_PACK_BUFFER, Name(packBuffer));
    glBindBuffer(GL_PIXEL_UNPACK_BUFFER, Name(unpackBuffer));
    glViewport(viewport[0], viewport[1], viewport[2], viewport[3]);
    glClearColor(clearColor[0], clearColor[1], clearColor[2], clearColor[3]);
    glColorMask(colorMask[0], colorMask[1], colorMask[2], colorMask[3]);
    RestoreBlend();
    RestoreDepthAndRaster();
}

void StateGuard::RestoreUnits() {
    for (size_t i = 0; i < units.size(); ++i) {
        if (!units[i].saved) continue;
        glActiveTexture(GL_TEXTURE0 + static_cast<GLenum>(i));
        glBindTexture(GL_TEXTURE_2D, Name(units[i].texture));
        glBindTexture(GL_TEXTURE_BUFFER, Name(units[i].buffer));
        glBindSampler(static_cast<GLuint>(i), Name(units[i].sampler));
    }
}

void StateGuard::RestoreBlend() {
    glBlendFuncSeparate(Enum(blendFactors[0]), Enum(blendFactors[1]), Enum(blendFactors[2]),
                        Enum(blendFactors[3]));
    glBlendEquationSeparate(Enum(blendEquations[0]), Enum(blendEquations[1]));
}

void StateGuard::RestoreDepthAndRaster() {
    glDepthFunc(Enum(depthFunction));
    glDepthMask(depthMask);
    glClearDepth(clearDepth);
    glDepthRange(depthRange[0], depthRange[1]);
    glCullFace(Enum(cullMode));
    glFrontFace(Enum(frontFace));
    glLineWidth(lineWidth);
    if (!compatible) {
        // Core contexts have one mode for both faces.
        glPolygonMode(GL_FRONT_AND_BACK, Enum(polygonMode[0]));
        return;
    }
    glPolygonMode(GL_FRONT, Enum(polygonMode[0]));
    glPolygonMode(GL_BACK, Enum(polygonMode[1]));
    for (size_t i = 0; i < kOldSwitches.size(); ++i) {
        Switch(kOldSwitches[i], oldSwitches[i] != GL_FALSE);
    }
}

}  // namespace kelmo
