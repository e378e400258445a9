// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <vector>

#include "ai/detect/anchor_detector.h"
#include "ai/face/face_mesh.h"
#include "ai/picture/one_euro.h"
#include "ai/picture/picture_change.h"

namespace kelmo {

/// A face that is followed from frame to frame.
struct TrackedFace {
    FaceShape shape;       ///< points smoothed
    RotatedSquare region;  ///< where to look in the next frame
    OneEuro smoothing;
    int32_t number = 0;  ///< counts up, the same for the same face
};

/// Follows the faces of a row of frames. The list keeps its order: the largest first when they come
/// into the picture together, later ones behind. Faces are sought in the whole frame while there is
/// none, then each fifth frame. A jump starts anew; the same frame again changes nothing.
class FaceTracker {
public:
    explicit FaceTracker(std::shared_ptr<ModelStore> store);
    void Next(PicturePyramid& frame);
    const std::vector<TrackedFace>& Faces() const { return faces; }

private:
    void Follow(PicturePyramid& frame);
    void FindNew(PicturePyramid& frame);
    bool IsKnown(const cv::Rect2f& box) const;
    /// Takes over what was found, smoothed.
    static void Take(const FaceShape& found, TrackedFace& face);

    AnchorDetector detector;
    AnchorDetector nearDetector;
    FaceMesh mesh;
    PictureChange change;
    std::vector<TrackedFace> faces;
    int framesSinceSearch = 0;
    int32_t nextNumber = 1;
};

}  // namespace kelmo
