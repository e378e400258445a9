// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <opencv2/core.hpp>

#include "ai/mask/person_gate.h"
#include "ai/picture/picture_change.h"

namespace kelmo {

/// The mask of all people in a row of frames, 256 x 256 for the whole frame, 0..1.
///
/// Steady: where the network is unsure, a value keeps up to 0.7 of the last frame's; where it is
/// sure, nothing lags. The same frame again gives the same mask, and a jump starts anew. Empty
/// without people: see `PersonGate`. Once somebody was seen, the mask counts for as long as it
/// overlaps the one before; when it leaves its place or vanishes, the gate looks again.
class PersonMask {
public:
    explicit PersonMask(std::shared_ptr<ModelStore> store);
    /// False when the network could not be run; the mask is then empty.
    bool Next(PicturePyramid& frame);
    /// 256 x 256 floats.
    const cv::Mat& Mask() const { return mask; }

private:
    bool RunNetwork(cv::Mat& result);
    bool Counts(const cv::Mat& found, Succession succession, PicturePyramid& frame);

    std::shared_ptr<ModelStore> store;
    PersonGate gate;
    PictureChange change;
    bool someone = false;
    cv::Mat mask, found;
};

}  // namespace kelmo
