// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "effects/image/color_statistics.h"
#include "framework/filter/nle_opengl_filter.h"

namespace kelmo {

/// Moves the colours of a clip towards those of a reference picture, whose statistics are
/// parameters
/// (`kelmo measure` prints them).
///
/// Parameters, by position: "Enabled" (0 leaves the frame out), reference means of l, alpha and
/// beta
/// ("mean_b", "mean_g", "mean_r"), their deviations ("stddb", "stddg", "stddr"), "strength". A
/// description with fewer parameters fails every frame. A frame that is left out, or whose
/// reference is all zero, fails (1) and draws nothing.
class NLEOpenGLMatchColorEffect : public NLEOpenGLFilter {
public:
    explicit NLEOpenGLMatchColorEffect(std::shared_ptr<NLEFilterInfo> filterInfo);

    int32_t DoEffect(const FrameRecord& second, const FrameRecord& first, FrameRecord& out,
                     int32_t frameWidth, int32_t frameHeight, int32_t frameStride) override;

private:
    void UploadReference();
    void UploadMeasured(const ColorStatistics& measured);

    cv::Mat scratch;
};

}  // namespace kelmo
