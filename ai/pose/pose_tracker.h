// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <bitset>
#include <vector>

#include "ai/picture/one_euro.h"
#include "ai/picture/picture_change.h"
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

/// Follows the bodies of a row of frames. The list keeps its order: the largest first when they
/// come into the picture together, later ones behind. A body is sought in the whole frame while
/// there is none, then each tenth frame. A jump starts anew; the same frame again changes nothing.
class PoseTracker {
public:
    explicit PoseTracker(std::shared_ptr<ModelStore> store);
    void Next(PicturePyramid& frame);
    const std::vector<TrackedBody>& Bodies() const { return bodies; }

private:
    void Follow(PicturePyramid& frame);
    void FindNew(PicturePyramid& frame);
    bool IsKnown(const RotatedSquare& region) const;
    static void Take(const BodyShape& found, const RotatedSquare& region, TrackedBody& body);

    PoseEstimator estimator;
    PictureChange change;
    std::vector<TrackedBody> bodies;
    int framesSinceSearch = 0;
    int32_t nextNumber = 1;
};

}  // namespace kelmo
