// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "framework/filter/nle_opengl_filter.h"

namespace kelmo {

/// Two passes by one shader, told apart by "internalType": 0 draws a first, smooth picture into CPU
/// memory of the frame's size, 1 draws the frame.
///
/// The second pass finds the first pass's picture in the input slot behind its material, so that it
/// can judge by a picture without noise; the engine still holds it, nothing is uploaded again.
class NLEOpenGLSmartDeNoise : public NLEOpenGLFilter {
public:
    explicit NLEOpenGLSmartDeNoise(std::shared_ptr<NLEFilterInfo> filterInfo);

    int32_t InitParams() override;
    int32_t DoEffect(const FrameRecord& second, const FrameRecord& first, FrameRecord& out,
                     int32_t frameWidth, int32_t frameHeight, int32_t frameStride) override;

private:
    int32_t RenderWith(FrameRecord& target, int32_t rowBytes);

    cv::Mat scratch;
};

}  // namespace kelmo
