// SPDX-License-Identifier: GPL-3.0-or-later
#include "effects/scene/particles/emitted_particles.h"

#include <algorithm>

#include "effects/scene/particles/scatter.h"
#include "framework/shared/quad_corners.h"

namespace kelmo {
namespace {

/// 0..1 as -1..1.
float Both(float value) {
    return 2.0F * value - 1.0F;
}

}  // namespace

int32_t EmittedParticles::Within(int64_t count) {
    return static_cast<int32_t>(std::clamp<int64_t>(count, 0, kMost));
}

int32_t EmittedParticles::VertexCount() const {
    return kQuadVertices * count;
}

void EmittedParticles::Resize(int32_t particles, bool withDirections) {
    count = Within(particles);
    const std::size_t vertices = static_cast<std::size_t>(count) * kQuadVertices;
    positions.resize(4 * vertices);
    directions.resize(withDirections ? 4 * vertices : 0);
    corners.resize(3 * vertices);
}

void EmittedParticles::PutVertices(std::size_t particle, const cv::Vec4f& position, float third) {
    for (std::size_t k = 0; k < kQuadVertices; ++k) {
        const std::size_t vertex = particle * kQuadVertices + k;
        std::copy_n(position.val, 4, &positions[4 * vertex]);
        corners[3 * vertex] = kQuadCorners[k][0];
        corners[3 * vertex + 1] = kQuadCorners[k][1];
        corners[3 * vertex + 2] = third;
    }
}

void EmittedParticles::BuildOver(const cv::Mat& picture, int32_t particles) {
    Resize(particles, true);
    ForEachParticle(count, [&](std::size_t i) {
        Chance chance(i);
        const ScatteredPlace place = ScatterOver(picture, chance);
        const float size = 0.15F * chance.Next() + 0.01F;
        const float own = chance.Next();
        const float dx = chance.Next(), dy = chance.Next(), dz = chance.Next();
        PutVertices(i, {Both(place.u), Both(place.v), Both(place.z), size}, own);
        const cv::Vec4f direction(Both(dx), Both(dy), Both(dz), size);
        for (std::size_t k = 0; k < kQuadVertices; ++k) {
            std::copy_n(direction.val, 4, &directions[4 * (i * kQuadVertices + k)]);
        }
    });
}

void EmittedParticles::Build(int32_t particles) {
    Resize(particles, false);
    ForEachParticle(count, [&](std::size_t i) {
        Chance chance(i);
        const float x = chance.Next(), y = chance.Next(), z = chance.Next(), own = chance.Next();
        PutVertices(i, {Both(x), Both(y), Both(z), own}, static_cast<float>(i));
    });
}

}  // namespace kelmo
