// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <opencv2/core.hpp>

#include "effects/beam/lines/beam_effect.h"
#include "framework/filter/nle_opengl_filter.h"
#include "framework/filter/sub_filters.h"

namespace kelmo {

/// One line that grows across the frame with time.
///
/// Parameters: "range" (float, 1), half of its length in device space; "hour", "minute", "second"
/// (int), how long it takes, the length of the clip when all are 0. Every parameter goes to the
/// line renderer, too. Shader: clip, second clip of a transition, line (an empty picture at the
/// first frame), then the material.
class NLEOpenGLBeamSineWaveEffect : public NLEOpenGLFilter {
public:
    explicit NLEOpenGLBeamSineWaveEffect(std::shared_ptr<NLEFilterInfo> filterInfo);

    int32_t InitEffect() override;
    int32_t Resize(int32_t newWidth, int32_t newHeight, int32_t newStride) override;
    int32_t InitParams() override;
    int32_t DoEffect(const FrameRecord& second, const FrameRecord& first, FrameRecord& out,
                     int32_t frameWidth, int32_t frameHeight, int32_t frameStride) override;

private:
    /// In frames.
    int32_t Span();
    void DrawLine(const FrameRecord& first, int32_t frameWidth, int32_t frameHeight);

    SubFilters stages{this};
    NLEOpenGLBeamEffect* beam;
    cv::Mat resetFrame;
};

/// Light made of noise alone, in front of the clip. "evolution" (float) goes to the noise.
///
/// Shader: with "calLayer" 1 the noise in slot 0 and the material behind it; with 2 the clip and
/// what was drawn before.
class NLEOpenGLCharmBeamEffect : public NLEOpenGLFilter {
public:
    explicit NLEOpenGLCharmBeamEffect(std::shared_ptr<NLEFilterInfo> filterInfo);

    int32_t InitEffect() override;
    int32_t Resize(int32_t newWidth, int32_t newHeight, int32_t newStride) override;
    int32_t InitParams() override;
    int32_t DoEffect(const FrameRecord& second, const FrameRecord& first, FrameRecord& out,
                     int32_t frameWidth, int32_t frameHeight, int32_t frameStride) override;

private:
    void SetNoise(int32_t frameWidth, int32_t frameHeight);

    SubFilters stages{this};
    NLEOpenGLFilter* noise;
};

}  // namespace kelmo
