// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <opencv2/core.hpp>
#include <vector>

#include "contract/engine.h"
#include "framework/frame_time.h"

/// How decoded material reaches the input slots of the engine. Three rules serve all effects; each
/// takes the next free input slot and steps it by the slots that it used.
namespace kelmo {

class TextureFrames;
struct TexDesc;

/// Whether a frame is material to show; smaller ones (at most 2 x 2 pixels) are placeholders.
inline bool IsPicture(const cv::Mat& frame) {
    return frame.cols >= 3 || frame.rows >= 3;
}

/// Number of texture slots; 0 for null.
std::size_t MaterialSlots(const TextureFrames* frames);
/// The first frame of a texture slot, empty when it has none (yet).
cv::Mat FirstMaterialFrame(const TextureFrames& frames, std::size_t slot);
/// The frame of a moment, at 25 frames a second in a loop, whatever the rate of the clip.
cv::Mat MaterialFrameAt(const TextureFrames& frames, std::size_t slot, float seconds);

/// Hands one frame to an input slot. An empty frame goes up as 0 by 0 without data.
void BindMaterialFrame(NLEOpenGLEngineEffect& engine, int32_t slot, const cv::Mat& frame,
                       const TexDesc* desc = nullptr);

/// The frame of the current time of every texture slot, placeholders and empty frames included.
/// `descs` may be shorter than `frames`; what is missing counts as zeros.
void BindMaterialAtTime(NLEOpenGLEngineEffect& engine, int32_t& slot, const TextureFrames& frames,
                        const std::vector<TexDesc>& descs, const FrameTime& time);
/// The first frame of each texture slot, until one is a placeholder. Returns the number bound.
int32_t BindFirstMaterial(NLEOpenGLEngineEffect& engine, int32_t& slot,
                          const TextureFrames* frames);
/// The first frame of every texture slot, whatever its size.
void BindAllMaterial(NLEOpenGLEngineEffect& engine, int32_t& slot, const TextureFrames* frames);

}  // namespace kelmo
