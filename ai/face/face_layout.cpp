// SPDX-License-Identifier: GPL-3.0-or-later
#include "ai/face/face_layout.h"

#include <algorithm>
#include <cmath>
#include <iterator>
#include <span>
#include <vector>

namespace kelmo {

namespace {

/// Outline from the ears to the chin, on the surface.
constexpr int kJawLeft[] = {127, 234, 93, 132, 58, 172, 136, 150, 149, 176, 148, 152};
constexpr int kJawRight[] = {152, 377, 400, 378, 379, 365, 397, 288, 361, 323, 454, 356};
constexpr size_t kJawHalf = 16;

/// The surface point of a landmark, or the middle of two.
struct Source {
    int a;
    int b = -1;
};

constexpr size_t kFirstTabled = 33;
constexpr Source kSources[] = {
    // 33 brows
    {70},
    {63},
    {105},
    {66},
    {107},
    {336},
    {296},
    {334},
    {293},
    {300},
    // 43 nose
    {168},
    {197},
    {5},
    {1},
    {98},
    {97},
    {2},
    {326},
    {327},
    // 52 left eye: outer corner, upper lid, inner corner, lower lid
    {33},
    {160, 159},
    {158, 157},
    {133},
    {153},
    {144},
    // 58 right eye: inner corner, upper lid, outer corner, lower lid
    {362},
    {385, 384},
    {387, 386},
    {263},
    {373},
    {380},
    // 64 lower edges of the brows
    {53},
    {52},
    {65},
    {55},
    {285},
    {295},
    {282},
    {283},
    // 72 middle of the lids and pupils
    {159, 158},
    {145},
    {int(kLeftIris)},
    {386, 385},
    {374},
    {int(kRightIris)},
    // 78 sides of the nose
    {193},
    {417},
    {198},
    {420},
    {129},
    {358},
    // 84 outer lips
    {61},
    {40},
    {37},
    {0},
    {267},
    {270},
    {291},
    {321},
    {405},
    {17},
    {181},
    {91},
    // 96 inner lips
    {78},
    {81},
    {13},
    {311},
    {308},
    {402},
    {14},
    {178},
    // 104 pupils
    {int(kLeftIris)},
    {int(kRightIris)}};
static_assert(std::size(kSources) == kLandmarkCount - kFirstTabled);

/// Points at even distances along a line of surface points, both ends included.
void Resample(const FaceShape& shape, std::span<const int> line, std::span<cv::Point2f> result) {
    std::vector<float> along{0.0f};
    for (size_t i = 1; i < line.size(); ++i) {
        const cv::Point2f step = shape.At(size_t(line[i])) - shape.At(size_t(line[i - 1]));
        along.push_back(along.back() + std::hypot(step.x, step.y));
    }
    size_t segment = 1;
    for (size_t k = 0; k < result.size(); ++k) {
        const float at = along.back() * static_cast<float>(k) / float(result.size() - 1);
        while (segment + 1 < line.size() && along[segment] < at) ++segment;
        const float length = along[segment] - along[segment - 1];
        const float t = length > 0 ? std::min(1.0f, (at - along[segment - 1]) / length) : 0.0f;
        const cv::Point2f a = shape.At(size_t(line[segment - 1]));
        result[k] = a + (shape.At(size_t(line[segment])) - a) * t;
    }
}

}  // namespace

std::array<cv::Point2f, kLandmarkCount> FaceLandmarks(const FaceShape& shape) {
    std::array<cv::Point2f, kLandmarkCount> marks;
    const std::span<cv::Point2f> all(marks);
    Resample(shape, kJawLeft, all.subspan(0, kJawHalf + 1));
    Resample(shape, kJawRight, all.subspan(kJawHalf, kJawHalf + 1));
    for (size_t i = 0; i < std::size(kSources); ++i) {
        const Source& source = kSources[i];
        cv::Point2f p = shape.At(size_t(source.a));
        if (source.b >= 0) p = (p + shape.At(size_t(source.b))) * 0.5f;
        marks[kFirstTabled + i] = p;
    }
    return marks;
}

}  // namespace kelmo
