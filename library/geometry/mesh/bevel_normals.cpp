// SPDX-License-Identifier: GPL-3.0-or-later
#include "geometry/mesh/bevel_normals.h"

#include <cmath>

namespace kelmo {
namespace {

constexpr size_t kWindow = 3;
// Below this area a quad's direction is the rounding of its corners; normalised frame space, where
// the frame is 2 high.
constexpr double kSmallestArea = 1e-14;
// Upright quads lean to either side by rounding.
constexpr float kUprightTolerance = 0.01f;
// A mean this short comes from opposite normals.
constexpr double kSmallestMean = 0.001;

}  // namespace

void BevelNormals::Reset(size_t stepCount, size_t quadsPerStep, bool isBack) {
    steps = stepCount;
    quads = quadsPerStep;
    side = isBack ? -1.0f : 1.0f;
    raw.resize(steps * quads);
    straight.resize(steps * quads);
}

void BevelNormals::Set(size_t step, size_t quad, const cv::Vec3d& areaVector) {
    Normal& normal = raw[step * quads + quad];
    const double length = std::sqrt(areaVector.dot(areaVector));
    if (!(length > kSmallestArea) || !std::isfinite(length)) {
        normal = {{0, 0, 0}, false};
        return;
    }
    normal.direction = cv::Vec3f(areaVector / length);
    normal.isGood = normal.direction[2] * side >= -kUprightTolerance;
}

const BevelNormals::Normal* BevelNormals::NearestGood(size_t step, size_t quad) const {
    for (size_t distance = 1; distance <= kWindow && distance < steps; ++distance) {
        for (const size_t other : {step + steps - distance, step + distance}) {
            const Normal& normal = raw[other % steps * quads + quad];
            if (normal.isGood) return &normal;
        }
    }
    return nullptr;
}

void BevelNormals::Straighten(const std::vector<cv::Vec3f>& fallback) {
    for (size_t step = 0; step < steps; ++step) {
        for (size_t quad = 0; quad < quads; ++quad) {
            const size_t place = step * quads + quad;
            straight[place] = raw[place].direction;
            if (raw[place].isGood) continue;
            if (const Normal* good = NearestGood(step, quad)) {
                straight[place] = good->direction;
            } else if (raw[place].direction == cv::Vec3f()) {
                straight[place] = fallback[step];
            }
        }
    }
}

cv::Vec3f BevelNormals::Mean(size_t step, size_t other, size_t quad) const {
    const cv::Vec3f& own = straight[step * quads + quad];
    const cv::Vec3f mean = (own + straight[other * quads + quad]) * 0.5f;
    return cv::norm(mean) < kSmallestMean ? own : mean;
}

cv::Vec3f BevelNormals::AtStart(size_t step, size_t quad) const {
    return Mean(step, (step + steps - 1) % steps, quad);
}

cv::Vec3f BevelNormals::AtEnd(size_t step, size_t quad) const {
    return Mean(step, (step + 1) % steps, quad);
}

}  // namespace kelmo
