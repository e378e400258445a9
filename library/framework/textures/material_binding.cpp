// SPDX-License-Identifier: GPL-3.0-or-later
#include "framework/textures/material_binding.h"

#include <algorithm>

#include "framework/textures/texture_file.h"

namespace kelmo {

namespace {

constexpr int32_t kMaterialChannels = 4;

std::size_t SlotCount(const TextureFrames* frames) {
    return frames ? frames->SlotCount() : 0;
}

const cv::Mat& FrameAt(const TextureFrames& frames, std::size_t texture, float seconds) {
    const FrameList& list = frames.Slot(texture);
    return list.Frame(WrapFrameIndex(MaterialFrameCountAt(seconds), list.Count()));
}

}  // namespace

void BindMaterialFrame(NLEOpenGLEngineEffect& engine, int32_t slot, const cv::Mat& frame,
                       const TexDesc& desc) {
    const MaterialView view = MaterialView::Of(frame);
    engine.SetInputMaterial(slot, view.pixels, view.cols, view.rows, view.step, kMaterialChannels,
                            false, 0, desc.word0, desc.word1);
}

void BindMaterialAtTime(NLEOpenGLEngineEffect& engine, int32_t& slot, const TextureFrames* frames,
                        const std::vector<TexDesc>* descs, float seconds,
                        std::size_t firstTexture) {
    for (std::size_t texture = firstTexture; texture < SlotCount(frames); ++texture) {
        const TexDesc desc = descs && texture < descs->size() ? (*descs)[texture] : TexDesc();
        BindMaterialFrame(engine, slot++, FrameAt(*frames, texture, seconds), desc);
    }
}

void BindMaterialWaiting(NLEOpenGLEngineEffect& engine, int32_t& slot, const TextureFrames* frames,
                         float seconds) {
    const int64_t count = MaterialFrameCountAt(seconds);
    for (std::size_t texture = 0; texture < SlotCount(frames); ++texture) {
        const cv::Mat& frame = WaitForFrame(*frames, texture, count);
        if (!frame.empty() && !IsPicture(frame)) return;
        BindMaterialFrame(engine, slot++, frame);
    }
}

int32_t BindFirstMaterial(NLEOpenGLEngineEffect& engine, int32_t& slot, const TextureFrames* frames,
                          std::size_t most) {
    int32_t bound = 0;
    for (std::size_t texture = 0; texture < std::min(SlotCount(frames), most); ++texture) {
        const cv::Mat& frame = frames->Frame(texture, 0);
        if (!IsPicture(frame)) break;
        BindMaterialFrame(engine, slot++, frame);
        ++bound;
    }
    return bound;
}

void BindAllMaterial(NLEOpenGLEngineEffect& engine, int32_t& slot, const TextureFrames* frames) {
    for (std::size_t texture = 0; texture < SlotCount(frames); ++texture) {
        BindMaterialFrame(engine, slot++, frames->Frame(texture, 0));
    }
}

void BindImageFrame(NLEOpenGLEngineEffect& engine, int32_t slot, const cv::Mat& frame) {
    const MaterialView view = MaterialView::Of(frame);
    // By this road a row has 4 bytes a pixel or there is no picture.
    const bool fits = view.pixels && view.step >= view.cols * kMaterialChannels;
    engine.SetInputImage(slot, fits ? view.pixels : nullptr, fits ? view.cols : 0,
                         fits ? view.rows : 0, fits ? view.step : 0, kMaterialChannels, false, 0);
}

void BindAllMaterialAsImages(NLEOpenGLEngineEffect& engine, int32_t& slot,
                             const TextureFrames* frames) {
    for (std::size_t texture = 0; texture < SlotCount(frames); ++texture) {
        BindImageFrame(engine, slot++, frames->Frame(texture, 0));
    }
}

void BindMaterialAtIndex(NLEOpenGLEngineEffect& engine, int32_t& slot, const TextureFrames* frames,
                         int64_t index) {
    for (std::size_t texture = 0; texture < SlotCount(frames); ++texture) {
        const auto count = static_cast<int64_t>(frames->FrameCount(texture));
        const int64_t frame = count > 0 ? ((index % count) + count) % count : 0;
        BindMaterialFrame(engine, slot++, frames->Frame(texture, static_cast<std::size_t>(frame)));
    }
}

}  // namespace kelmo
