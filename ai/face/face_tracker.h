// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <vector>

#include "ai/detect/anchor_detector.h"
#include "ai/face/face_mesh.h"
#include "ai/picture/frame_tracker.h"
#include "ai/picture/one_euro.h"

namespace kelmo {

/// A face that is followed from frame to frame.
struct TrackedFace {
    FaceShape shape;       ///< points smoothed
    RotatedSquare region;  ///< where to look in the next frame
    OneEuro smoothing;
    int32_t number = 0;  ///< counts up, the same for the same face
};

/// Follows the faces of a row of frames: the largest first when they come into the picture
/// together. They are sought on each fifth frame.
class FaceTracker : public FrameTracker<TrackedFace> {
public:
    explicit FaceTracker(std::shared_ptr<ModelStore> store);
    const std::vector<TrackedFace>& Faces() const { return tracked; }

private:
    void Follow(PicturePyramid& frame) override;
    void FindNew(PicturePyramid& frame) override;
    bool IsKnown(const cv::Rect2f& box) const;
    /// Takes over what was found, smoothed.
    static void Take(const FaceShape& found, TrackedFace& face);

    AnchorDetector detector;
    AnchorDetector nearDetector;
    FaceMesh mesh;
};

}  // namespace kelmo
