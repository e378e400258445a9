// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <bitset>
#include <vector>

#include "ai/picture/frame_tracker.h"
#include "ai/picture/one_euro.h"
#include "ai/pose/pose_estimator.h"

namespace kelmo {

/// A body that is followed from frame to frame.
struct TrackedBody {
    BodyShape shape;  ///< points smoothed
    std::bitset<kBodyMarkCount> visible;
    RotatedSquare region;  ///< where to look in the next frame
    OneEuro smoothing;
    int32_t number = 0;  ///< counts up, the same for the same body
};

/// Follows the bodies of a row of frames: the largest first when they come into the picture
/// together. They are sought on each tenth frame.
class PoseTracker : public FrameTracker<TrackedBody> {
public:
    explicit PoseTracker(std::shared_ptr<ModelStore> store);
    const std::vector<TrackedBody>& Bodies() const { return tracked; }

private:
    void Follow(PicturePyramid& frame) override;
    void FindNew(PicturePyramid& frame) override;
    bool IsKnown(const RotatedSquare& region) const;
    static void Take(const BodyShape& found, const RotatedSquare& region, TrackedBody& body);

    PoseEstimator estimator;
};

}  // namespace kelmo
