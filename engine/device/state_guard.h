// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <epoxy/gl.h>

#include <array>
#include <vector>

namespace kelmo {

/// Forgets errors that nobody has asked for.
void DropGlErrors();

/// Keeps the host's GL state across our work in its context.
///
/// Kept are all bindings and switches that the engine touches: framebuffers, vertex array, program,
/// array and pixel buffers, pixel store, viewport, blending, depth, culling, clear values, masks,
/// and texture and sampler of each unit that we use (units are saved on first touch, so an upload
/// pays for one unit, not for all). Not kept: the current values of generic vertex attributes, and
/// the renderbuffer and texture buffer bindings, which no draw call depends on.
class StateGuard {
public:
    /// Once, in the context: the number of texture units, and what kind of context it is.
    void SetUp(int unitCount);
    /// Sets the state that all our GL work starts from: every switch that could change a pass or a
    /// transfer of ours is off, and nothing is bound where a call would take it up.
    void SetBaseState() const;
    void Save();
    /// Saves the bindings of the unit that is active now, once between Save and Restore.
    void SaveActiveUnit(int unit);
    void Restore();

private:
    static constexpr size_t kSwitchCount = 26;
    static constexpr size_t kOldSwitchCount = 3;
    static constexpr size_t kPixelStoreCount = 16;
    struct Unit {
        bool saved = false;
        GLint texture = 0;
        GLint buffer = 0;
        GLint sampler = 0;
    };

    void SaveBlend();
    void SaveDepthAndRaster();
    void RestoreBlend();
    void RestoreDepthAndRaster();
    void RestoreUnits();

    bool compatible = false;  ///< has the switches of a compatibility profile
    std::array<GLboolean, kSwitchCount> switches{};
    std::array<GLboolean, kOldSwitchCount> oldSwitches{};
    std::array<GLint, kPixelStoreCount> pixelStore{};
    std::vector<Unit> units;
    GLint drawFramebuffer = 0, readFramebuffer = 0, vertexArray = 0, program = 0;
    GLint arrayBuffer = 0, packBuffer = 0, unpackBuffer = 0, activeUnit = 0;
    GLint viewport[4] = {};
    GLint blendFactors[4] = {}, blendEquations[2] = {};
    GLint depthFunction = 0, cullMode = 0, frontFace = 0, polygonMode[2] = {};
    GLboolean depthMask = 0, colorMask[4] = {};
    GLfloat clearColor[4] = {}, lineWidth = 1;
    GLdouble clearDepth = 1, depthRange[2] = {};
};

}  // namespace kelmo
