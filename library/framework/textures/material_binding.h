// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstddef>
#include <cstdint>
#include <opencv2/core.hpp>
#include <vector>

#include "contract/engine.h"
#include "framework/textures/texture_frames.h"

/// How decoded material reaches the input slots of the engine. Each rule takes the next free input
/// slot, `slot`, and steps it by the slots that it used. A null `frames` has no texture slots.
namespace kelmo {

/// Whether a frame is material to show; smaller ones (at most 2 x 2 pixels) are placeholders.
inline bool IsPicture(const cv::Mat& frame) {
    return frame.cols >= 3 || frame.rows >= 3;
}

/// Hands one frame to an input slot. An empty frame goes up as 0 by 0 without data.
void BindMaterialFrame(NLEOpenGLEngineEffect& engine, int32_t slot, const cv::Mat& frame,
                       const TexDesc& desc = {});

/// The frame of the moment, in seconds, of every texture slot from `firstTexture` on: placeholders
/// and empty frames included, so that the shader finds each texture at its place. `descs` may be
/// null or shorter than `frames`; what is missing counts as zeros.
void BindMaterialAtTime(NLEOpenGLEngineEffect& engine, int32_t& slot, const TextureFrames* frames,
                        const std::vector<TexDesc>* descs, float seconds,
                        std::size_t firstTexture = 0);
/// The same for effects that load in the background: waits for each frame that has not arrived yet,
/// and ends at the first placeholder. A frame that failed goes up empty.
void BindMaterialWaiting(NLEOpenGLEngineEffect& engine, int32_t& slot, const TextureFrames* frames,
                         float seconds);
/// The first frame of each texture slot, until one is a placeholder or `most` are bound. Returns
/// the number bound.
int32_t BindFirstMaterial(NLEOpenGLEngineEffect& engine, int32_t& slot, const TextureFrames* frames,
                          std::size_t most = SIZE_MAX);
/// The first frame of every texture slot, whatever its size.
void BindAllMaterial(NLEOpenGLEngineEffect& engine, int32_t& slot, const TextureFrames* frames);
/// Picture `index` of every texture slot, counted in a loop.
void BindMaterialAtIndex(NLEOpenGLEngineEffect& engine, int32_t& slot, const TextureFrames* frames,
                         int64_t index);
/// Hands a frame over by the road of a clip's pixels: the engine turns them, so that a still
/// picture arrives upside down, and takes its alpha as premultiplied. Shaders of effects that do so
/// know.
void BindImageFrame(NLEOpenGLEngineEffect& engine, int32_t slot, const cv::Mat& frame);
/// The first frame of every texture slot by that road.
void BindAllMaterialAsImages(NLEOpenGLEngineEffect& engine, int32_t& slot,
                             const TextureFrames* frames);

}  // namespace kelmo
