// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <memory>
#include <opencv2/core.hpp>
#include <vector>

#include "ai/picture/picture_pyramid.h"
#include "ai/runtime/model_store.h"

namespace kelmo {

/// Something that a detector found, in pixels of the frame.
struct Detection {
    cv::Rect2f box;
    std::vector<cv::Point2f> keypoints;
    float score = 0.0f;  ///< 0..1
};

/// Intersection over union of two boxes, 0 when they do not meet.
float Overlap(const cv::Rect2f& a, const cv::Rect2f& b);

/// Merges what overlaps: the best of a group gives the score, all of it the place, weighted by
/// their scores. The best first.
std::vector<Detection> MergeDetections(std::vector<Detection> found);

/// A network that looks at the whole frame once and gives, for each of its anchors (a grid of
/// places), a box, key points and a score.
class AnchorDetector {
public:
    /// A grid of `cells` x `cells` with `anchors` in each cell.
    struct Layer {
        int cells;
        int anchors;
    };
    /// Outputs of the network: 0 the boxes with `keypoints` points each, 1 the scores.
    AnchorDetector(std::shared_ptr<ModelStore> store, NetworkId id, std::vector<Layer> layers,
                   int keypoints);

    static AnchorDetector Face(std::shared_ptr<ModelStore> store);
    /// For faces that fill most of the frame.
    static AnchorDetector NearFace(std::shared_ptr<ModelStore> store);
    static AnchorDetector Pose(std::shared_ptr<ModelStore> store);

    /// What is there with a score of at least 0.5, the best first; empty when the network fails.
    std::vector<Detection> Detect(PicturePyramid& frame) const;

private:
    std::shared_ptr<ModelStore> store;
    NetworkId id;
    int keypointCount;
    std::vector<cv::Point2f> anchors;  ///< centres, fractions of the input
};

}  // namespace kelmo
