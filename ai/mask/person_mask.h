// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <opencv2/core.hpp>

#include "ai/mask/person_gate.h"
#include "ai/picture/picture_change.h"

namespace kelmo {

/// The mask of all people in a row of frames, 0..1, at most 256 pixels high and wide.
///
/// A wide frame goes into the network's square with bars above and below: of people who are
/// squeezed thin it misses whole parts. A tall frame fills the square, which makes people broad;
/// that does no harm, and bars would cost detail. Intersection over union with outlines drawn by
/// hand, means over crops of four photos: at 16:9 0.79 squeezed and 0.92 with bars, at 9:16 0.96
/// and 0.91.
///
/// Small holes inside a person are closed.
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
    /// Floats for the whole frame.
    const cv::Mat& Mask() const { return mask; }

private:
    bool RunNetwork(PicturePyramid& frame, cv::Mat& result);
    bool Counts(const cv::Mat& found, Succession succession, PicturePyramid& frame);

    std::shared_ptr<ModelStore> store;
    PersonGate gate;
    PictureChange change;
    bool ran = true;  ///< the network, on the present picture
    bool someone = false;
    cv::Mat mask, found;
};

}  // namespace kelmo
