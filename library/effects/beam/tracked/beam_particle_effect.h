// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <opencv2/core.hpp>
#include <vector>

#include "effects/beam/lines/beam_effect.h"
#include "framework/filter/nle_opengl_filter.h"
#include "framework/filter/sub_filters.h"

namespace kelmo {

/// Base of the effects that take the clip's bright parts to pieces: every pixel of the working size
/// that is not black becomes a line to the next one, and the line renderer draws it as a particle.
///
/// Parameters: "duration" (float, seconds), "reverse" (int), "lifetime" and "amount" (floats, 50),
/// which the renderer has as "uDuration", "uReverse", "uLifetime" and "uAmount"; "uBoundLeftX" and
/// "uBoundRightX" (device space) are the ends of the bright parts, both -1 when there are none.
/// Shader: clip, second clip of a transition, particles.
class BeamParticleEffect : public NLEOpenGLFilter {
public:
    /// Of more pixels only some become particles, evenly.
    static constexpr int32_t kMostParticles = 40000;

    int32_t InitEffect() override;
    int32_t Resize(int32_t newWidth, int32_t newHeight, int32_t newStride) override;
    int32_t InitParams() override;
    int32_t DoEffect(const FrameRecord& second, const FrameRecord& first, FrameRecord& out,
                     int32_t frameWidth, int32_t frameHeight, int32_t frameStride) override;

protected:
    BeamParticleEffect(std::shared_ptr<NLEFilterInfo> filterInfo, const char* beamGuid,
                       float usualDuration);

private:
    struct Pixel {
        cv::Point place;
        cv::Vec4b color;
    };
    /// Gives the box of what is bright.
    cv::Rect MakeLines(const FrameRecord& first, const cv::Size& size);
    void Collect(const cv::Rect& part, int32_t step);
    int32_t AddLines(int32_t base, const cv::Size& size);
    void SendBoth(const char* own, const char* ofBeam, float value);

    SubFilters stages{this};
    NLEOpenGLBeamEffect* beam;
    float usualDuration;
    cv::Mat small;
    cv::Mat gray;
    cv::Mat binary;
    std::vector<std::vector<cv::Point>> contours;
    std::vector<Pixel> pixels;
};

/// Particles fly in and become the picture.
class NLEOpenGLBeamParticleConverge : public BeamParticleEffect {
public:
    explicit NLEOpenGLBeamParticleConverge(std::shared_ptr<NLEFilterInfo> filterInfo);
};

/// The picture flies away in particles.
class NLEOpenGLBeamParticleDissipate : public BeamParticleEffect {
public:
    explicit NLEOpenGLBeamParticleDissipate(std::shared_ptr<NLEFilterInfo> filterInfo);
};

}  // namespace kelmo
