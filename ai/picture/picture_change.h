// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <opencv2/core.hpp>

#include "ai/picture/picture_pyramid.h"

namespace kelmo {

/// How a frame follows the one before it.
enum class Succession {
    kSame,       ///< the same picture again: the last result holds
    kContinues,  ///< the same scene
    kJump,       ///< the first frame, a cut, a seek, another size: nothing of the past holds
};

/// Tells how frames follow each other by looking at them, since a filter is told no time: by a
/// small copy of the frame, so that the same row of frames always gives the same row of answers.
///
/// The same picture is one whose reduced copies (256 x 256) agree to the bit. A jump is a mean
/// difference of more than 24 levels of 255 between 32 x 32 averages: a cut between two street
/// scenes makes 43, a walking camera 2, a clip of a restless parrot mostly under 16.
class PictureChange {
public:
    Succession Next(PicturePyramid& frame);
    /// The reduced copy of the last frame, 256 x 256, 4 channels of 8 bits.
    const cv::Mat& Reduced() const { return reduced; }

private:
    cv::Size size;
    cv::Mat reduced, previousReduced;
    cv::Mat halves[2], small, previousSmall;
};

}  // namespace kelmo
