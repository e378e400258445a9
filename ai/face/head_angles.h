// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "ai/face/face_mesh.h"

namespace kelmo {

/// How a head is turned, in degrees. pitch: positive looks down. yaw: positive looks to the left of
/// the picture. roll: positive is turned clockwise on the screen.
struct HeadAngles {
    double pitch = 0.0;
    double yaw = 0.0;
    double roll = 0.0;
};

/// A head of average shape that looks straight ahead, and the points of it that move little when a
/// face speaks. Read-only after it was made; any thread.
class HeadModel {
public:
    struct Point {
        size_t index;  ///< of the face's points
        double weight;
        cv::Point3d position;  ///< x right in the picture, y down, z away from the camera
    };

    /// Reads the geometry file that comes with the face network (a protocol buffer). Nothing when
    /// the bytes hold no such geometry.
    static std::optional<HeadModel> Parse(std::span<const uint8_t> bytes);
    static std::optional<HeadModel> Load(const std::string& path);
    explicit HeadModel(std::vector<Point> points) : points(std::move(points)) {}

    /// The turn that lays the model best over a face: weighted least squares of the rotation by
    /// singular values (Kabsch 1976). Knows no perspective, so a face at the border of a wide lens
    /// reads as turned like one in the middle.
    HeadAngles Fit(const FaceShape& shape) const;

private:
    std::vector<Point> points;
};

}  // namespace kelmo
