// SPDX-License-Identifier: GPL-3.0-or-later
#include "ai/face/face_mesh.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace kelmo {

namespace {

constexpr int kInputSize = 192;
constexpr float kMinPresence = 0.5f;
constexpr float kRegionScale = 1.5f;

/// Which points the closer looks give, in the order of the network's outputs.
constexpr int kLipPoints[] = {
    61, 146, 91, 181, 84, 17, 314, 405, 321, 375, 291, 185, 40, 39, 37, 0,  267, 269, 270, 409,
    78, 95,  88, 178, 87, 14, 317, 402, 318, 324, 308, 191, 80, 81, 82, 13, 312, 311, 310, 415,
    76, 77,  90, 180, 85, 16, 315, 404, 320, 307, 306, 184, 74, 73, 72, 11, 302, 303, 304, 408,
    62, 96,  89, 179, 86, 15, 316, 403, 319, 325, 292, 183, 42, 41, 38, 12, 268, 271, 272, 407};
constexpr int kLeftEyePoints[] = {
    33,  7,   163, 144, 145, 153, 154, 155, 133, 246, 161, 160, 159, 158, 157, 173, 130, 25,
    110, 24,  23,  22,  26,  112, 243, 247, 30,  29,  27,  28,  56,  190, 226, 31,  228, 229,
    230, 231, 232, 233, 244, 113, 225, 224, 223, 222, 221, 189, 35,  124, 46,  53,  52,  65,
    143, 111, 117, 118, 119, 120, 121, 128, 245, 156, 70,  63,  105, 66,  107, 55,  193};
constexpr int kRightEyePoints[] = {
    263, 249, 390, 373, 374, 380, 381, 382, 362, 466, 388, 387, 386, 385, 384, 398, 359, 255,
    339, 254, 253, 252, 256, 341, 463, 467, 260, 259, 257, 258, 286, 414, 446, 261, 448, 449,
    450, 451, 452, 453, 464, 342, 445, 444, 443, 442, 441, 413, 265, 353, 276, 283, 282, 295,
    372, 340, 346, 347, 348, 349, 350, 357, 465, 383, 300, 293, 334, 296, 336, 285, 417};

float Logistic(float x) {
    return 1.0f / (1.0f + std::exp(-std::clamp(x, -100.0f, 100.0f)));
}

void TakeSurface(std::span<const float> values, const CropMapping& mapping, FaceShape& shape) {
    for (size_t i = 0; i < kFaceSurfaceCount; ++i) {
        const cv::Point2f p = mapping.ToFrame(values[3 * i], values[3 * i + 1]);
        shape.points[i] = {p.x, p.y, values[3 * i + 2] * mapping.Scale()};
    }
}

/// Replaces x and y of some points; z stays.
void TakeDetail(std::span<const float> values, std::span<const int> indices,
                const CropMapping& mapping, FaceShape& shape) {
    for (size_t i = 0; i < indices.size(); ++i) {
        const cv::Point2f p = mapping.ToFrame(values[2 * i], values[2 * i + 1]);
        cv::Point3f& target = shape.points[static_cast<size_t>(indices[i])];
        target.x = p.x, target.y = p.y;
    }
}

void TakeIris(std::span<const float> values, size_t first, const CropMapping& mapping,
              FaceShape& shape) {
    for (size_t i = 0; i < 5; ++i) {
        const cv::Point2f p = mapping.ToFrame(values[2 * i], values[2 * i + 1]);
        shape.points[first + i] = {p.x, p.y, 0.0f};
    }
}

}  // namespace

float FaceShape::EyeDistance() const {
    const cv::Point2f between = At(kRightEyeCorner) - At(kLeftEyeCorner);
    return std::hypot(between.x, between.y);
}

cv::Rect2f FaceShape::Bounds() const {
    cv::Point2f low = At(0), high = At(0);
    for (size_t i = 1; i < kFaceSurfaceCount; ++i) {
        low.x = std::min(low.x, points[i].x), low.y = std::min(low.y, points[i].y);
        high.x = std::max(high.x, points[i].x), high.y = std::max(high.y, points[i].y);
    }
    return {low, high};
}

bool FaceMesh::RunCoarse(PicturePyramid& frame, const RotatedSquare& region,
                         FaceShape& shape) const {
    if (!region.IsUsable()) return false;
    NetworkLease network = store->Lease(NetworkId::kFaceMesh);
    if (!network) return false;
    frame.Crop(region, kInputSize, ColourRange::kZeroToOne, network->Input());
    if (!network->Run()) return false;
    shape.presence = Logistic(network->Output(1)[0]);
    if (!(shape.presence >= kMinPresence)) return false;
    TakeSurface(network->Output(0), CropMapping(region, kInputSize), shape);
    return true;
}

bool FaceMesh::RunFine(PicturePyramid& frame, const RotatedSquare& region, FaceShape& shape) const {
    if (!region.IsUsable()) return false;
    NetworkLease network = store->Lease(NetworkId::kFaceMeshAttention);
    if (!network) return false;
    frame.Crop(region, kInputSize, ColourRange::kZeroToOne, network->Input());
    if (!network->Run()) return false;
    shape.presence = Logistic(network->Output(1)[0]);
    if (!(shape.presence >= kMinPresence)) return false;
    const CropMapping mapping(region, kInputSize);
    TakeSurface(network->Output(0), mapping, shape);
    TakeDetail(network->Output(2), kLipPoints, mapping, shape);
    TakeDetail(network->Output(3), kLeftEyePoints, mapping, shape);
    TakeDetail(network->Output(4), kRightEyePoints, mapping, shape);
    TakeIris(network->Output(5), kLeftIris, mapping, shape);
    TakeIris(network->Output(6), kRightIris, mapping, shape);
    return true;
}

RotatedSquare FaceRegion(const FaceShape& shape) {
    const cv::Point2f eyes = shape.At(kRightEyeCorner) - shape.At(kLeftEyeCorner);
    RotatedSquare region;
    region.angle = std::atan2(eyes.y, eyes.x);
    const float c = std::cos(region.angle), s = std::sin(region.angle);
    const float most = std::numeric_limits<float>::max();
    float uMin = most, vMin = most, uMax = -most, vMax = -most;
    for (size_t i = 0; i < kFaceSurfaceCount; ++i) {
        const cv::Point2f p = shape.At(i);
        const float u = p.x * c + p.y * s, v = p.y * c - p.x * s;
        uMin = std::min(uMin, u), uMax = std::max(uMax, u);
        vMin = std::min(vMin, v), vMax = std::max(vMax, v);
    }
    const float u = (uMin + uMax) / 2, v = (vMin + vMax) / 2;
    region.centre = {u * c - v * s, u * s + v * c};
    region.side = std::max(uMax - uMin, vMax - vMin) * kRegionScale;
    return region;
}

RotatedSquare FaceRegion(const cv::Rect2f& box, const cv::Point2f& leftEye,
                         const cv::Point2f& rightEye) {
    RotatedSquare region;
    region.centre = {box.x + box.width / 2, box.y + box.height / 2};
    region.side = std::max(box.width, box.height) * kRegionScale;
    region.angle = std::atan2(rightEye.y - leftEye.y, rightEye.x - leftEye.x);
    return region;
}

}  // namespace kelmo
