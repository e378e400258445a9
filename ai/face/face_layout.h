// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <array>

#include "ai/face/face_mesh.h"

namespace kelmo {

/// Number of landmarks of a record.
inline constexpr size_t kLandmarkCount = 106;

/// The landmarks of a record in the order of docs/contracts.md, in pixels of the frame. "Left" is
/// left in the picture.
///
/// 0-32 jaw from the left ear over the chin (16) to the right ear, 33-37 and 38-42 brows, 43-46
/// bridge of the nose, 47-51 below the nose, 52-57 left eye, 58-63 right eye, 64-71 lower edges of
/// the brows, 72, 73 middle of the left eye's lids, 74 left pupil, 75-77 the same on the right,
/// 78-83 sides of the nose, 84-95 outer and 96-103 inner lips, 104, 105 pupils.
std::array<cv::Point2f, kLandmarkCount> FaceLandmarks(const FaceShape& shape);

}  // namespace kelmo
