// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <array>
#include <vector>

#include "ai/detect/anchor_detector.h"

namespace kelmo {

/// Points of the body network. Left and right are the person's own: the left hand of somebody who
/// faces the camera is on the right of the picture.
enum BodyMark : int {
    kNose = 0,
    kLeftEye = 2,
    kRightEye = 5,
    kLeftEar = 7,
    kRightEar = 8,
    kLeftShoulder = 11,
    kRightShoulder = 12,
    kLeftElbow = 13,
    kRightElbow = 14,
    kLeftWrist = 15,
    kRightWrist = 16,
    kLeftHip = 23,
    kRightHip = 24,
    kLeftKnee = 25,
    kRightKnee = 26,
    kLeftAnkle = 27,
    kRightAnkle = 28,
    kBodyMarkCount = 33,
    /// Two helpers behind them: the middle of the hips, and a point that gives size and direction.
    kBodyCentre = 33,
    kBodyTop = 34,
    kBodyPointCount = 35,
};

/// One body, in pixels of the frame.
struct BodyShape {
    std::array<cv::Point2f, kBodyPointCount> points;
    /// How sure it is that a mark is there and can be seen, 0..1.
    std::array<float, kBodyMarkCount> confidence;
    float presence = 0.0f;  ///< that there is a body at all, 0..1
};

/// The square round a body for the next frame, from its two helper points.
RotatedSquare BodyRegion(const cv::Point2f& centre, const cv::Point2f& top);

/// Finds bodies in a frame and their points. Keeps nothing from frame to frame.
class PoseEstimator {
public:
    explicit PoseEstimator(std::shared_ptr<ModelStore> store);
    /// Where bodies may be, the most certain first.
    std::vector<RotatedSquare> Detect(PicturePyramid& frame) const;
    /// The body in a square. False when there is none (presence below 0.5).
    bool Run(PicturePyramid& frame, const RotatedSquare& region, BodyShape& shape) const;

private:
    std::shared_ptr<ModelStore> store;
    AnchorDetector detector;
};

}  // namespace kelmo
