// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <functional>
#include <opencv2/core.hpp>
#include <vector>

#include "bindings/ai_filter_handle.h"
#include "effects/beam/e_wave/body_ring.h"
#include "effects/beam/lines/beam_effect.h"
#include "framework/engine/color_uniform.h"
#include "framework/filter/nle_opengl_combine_filter.h"
#include "framework/shared/working_size.h"

namespace kelmo {

/// What the rings share that slide along bodies: the bodies of a frame, and their lines. "duration"
/// (thousands of ticks of a cycle), "isMutiHuman" (1: a ring for each contour, otherwise one round
/// all).
class BodyRingEffect : public NLEOpenGLCombineFilter {
protected:
    explicit BodyRingEffect(std::shared_ptr<NLEFilterInfo> filterInfo);

    /// False without a mask.
    bool FindBodies(const FrameRecord& first, const WorkingSize& size);
    /// Fills the table with the ring of each body in the band that `bandOf` gives for the body's
    /// box. Gives the box of all rings, empty without any.
    cv::Rect MakeRings(NLEOpenGLBeamEffect& lines, bool open, const WorkingSize& size,
                       const std::function<Band(const cv::Rect&)>& bandOf);
    /// How far the cycle has come, 0..1.
    float Cycle();
    /// "color", when there is one, and its bytes.
    void SendColor();
    /// Left, top, right, bottom of the box with a margin in pixels, as fractions of the frame.
    static cv::Vec4f Bound(const cv::Rect& box, float margin, const WorkingSize& size);

    ColorUniform colorBytes{"color"};

private:
    AIFilterHandle segmentation{kAIMaskFilter};
    cv::Mat mask;
    cv::Mat binary;
    std::vector<std::vector<cv::Point>> contours;
    std::vector<cv::Point> points;
    int32_t durationFrames = 21;
    int32_t colorValue = 0x39FF14;
};

}  // namespace kelmo
