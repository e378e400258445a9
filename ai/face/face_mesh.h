// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <array>
#include <memory>

#include "ai/picture/picture_pyramid.h"
#include "ai/runtime/model_store.h"

namespace kelmo {

/// Points of the face network: 468 of the surface, then five of each iris (middle, right, top,
/// left, bottom): first of the eye that is left in the picture, then of the other.
inline constexpr size_t kFaceSurfaceCount = 468;
inline constexpr size_t kLeftIris = 468;
inline constexpr size_t kRightIris = 473;
inline constexpr size_t kFacePointCount = 478;
/// Outer corners of the eyes, left and right in the picture.
inline constexpr size_t kLeftEyeCorner = 33;
inline constexpr size_t kRightEyeCorner = 263;

/// A face: x, y in pixels of the frame; z in the same unit, away from the camera, from the middle
/// of the head. z of the irises is 0.
struct FaceShape {
    std::array<cv::Point3f, kFacePointCount> points;
    float presence = 0.0f;  ///< that there is a face at all, 0..1

    cv::Point2f At(size_t index) const { return {points[index].x, points[index].y}; }
    /// Distance of the outer corners of the eyes.
    float EyeDistance() const;
    /// The upright box round the surface.
    cv::Rect2f Bounds() const;
};

/// Finds the points of one face in a square of the frame. Keeps nothing from frame to frame.
class FaceMesh {
public:
    explicit FaceMesh(std::shared_ptr<ModelStore> store) : store(std::move(store)) {}
    /// The surface alone, from a rough square; the better judge of whether there is a face. False
    /// when there is none (presence below 0.5).
    bool RunCoarse(PicturePyramid& frame, const RotatedSquare& region, FaceShape& shape) const;
    /// Surface, with closer looks at eyes and lips, and irises.
    bool RunFine(PicturePyramid& frame, const RotatedSquare& region, FaceShape& shape) const;

private:
    std::shared_ptr<ModelStore> store;
};

/// The square to look at in the next frame: round all points, upright by the line of the eyes.
RotatedSquare FaceRegion(const FaceShape& shape);
/// The same from what a detector says: its box and the places of the eyes.
RotatedSquare FaceRegion(const cv::Rect2f& box, const cv::Point2f& leftEye,
                         const cv::Point2f& rightEye);

}  // namespace kelmo
