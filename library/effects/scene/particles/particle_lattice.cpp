// SPDX-License-Identifier: GPL-3.0-or-later
#include "effects/scene/particles/particle_lattice.h"

#include <algorithm>
#include <cmath>

#include "effects/scene/particles/scatter.h"
#include "framework/shared/quad_corners.h"

namespace kelmo {

cv::Size ParticleLattice::FlatSize(int32_t count, int32_t frameWidth, int32_t frameHeight) {
    if (count <= 0 || frameWidth <= 0 || frameHeight <= 0) return {};
    const int64_t longer = std::max(frameWidth, frameHeight);
    const int64_t shorter = std::min(frameWidth, frameHeight);
    const double most =
        std::sqrt(kMost * static_cast<double>(longer) / static_cast<double>(shorter));
    const auto along =
        std::min<int64_t>(count, static_cast<int64_t>(std::min<double>(most, kMost)));
    const auto across = static_cast<int32_t>(along * shorter / longer);
    const auto length = static_cast<int32_t>(along);
    return frameWidth > frameHeight ? cv::Size(length, across) : cv::Size(across, length);
}

cv::Vec3i ParticleLattice::BoxSize(const cv::Vec3i& wanted) {
    cv::Vec3i size;
    int32_t left = kMost;
    for (int i = 0; i < 3; ++i) {
        size[i] = std::clamp(wanted[i], 0, left);
        if (size[i] == 0) return {};
        left /= size[i];
    }
    return size;
}

void ParticleLattice::Resize(int32_t particles, std::size_t components) {
    const std::size_t vertices = static_cast<std::size_t>(particles) * kQuadVertices;
    positions.resize(components * vertices);
    corners.resize(2 * vertices);
}

void ParticleLattice::Put(std::size_t particle, const float* place, std::size_t components) {
    for (std::size_t k = 0; k < kQuadVertices; ++k) {
        const std::size_t vertex = particle * kQuadVertices + k;
        std::copy_n(place, components, &positions[components * vertex]);
        std::copy_n(kQuadCorners[k], 2, &corners[2 * vertex]);
    }
}

void ParticleLattice::BuildFlat(const cv::Size& size) {
    Resize(size.area(), 3);
    const auto columns = static_cast<std::size_t>(size.width);
    ForEachParticle(size.area(), [&](std::size_t i) {
        const float x = static_cast<float>(i % columns) / static_cast<float>(size.width);
        const float y = static_cast<float>(i / columns) / static_cast<float>(size.height);
        const float place[3] = {2.0F * x - 1.0F, 2.0F * y - 1.0F, 0.0F};
        Put(i, place, 3);
    });
}

void ParticleLattice::BuildBox(const cv::Vec3i& size) {
    const int32_t count = size[0] * size[1] * size[2];
    Resize(count, 4);
    const auto columns = static_cast<std::size_t>(size[0]);
    const auto rows = static_cast<std::size_t>(size[1]);
    const auto centred = [](std::size_t index, int32_t steps) {
        return static_cast<float>(index) - 0.5F * static_cast<float>(steps - 1);
    };
    ForEachParticle(count, [&](std::size_t i) {
        const float place[4] = {centred(i % columns, size[0]), centred(i / columns % rows, size[1]),
                                centred(i / (columns * rows), size[2]), Chance(i).Next()};
        Put(i, place, 4);
    });
}

}  // namespace kelmo
