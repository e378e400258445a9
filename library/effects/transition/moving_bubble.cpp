// SPDX-License-Identifier: GPL-3.0-or-later
#include "effects/transition/moving_bubble.h"

#include <cmath>
#include <opencv2/core.hpp>

#include "framework/shared/quad_corners.h"

namespace kelmo {
namespace {

constexpr int32_t kBubbles = 80;
constexpr int32_t kFineBubbles = 160;

struct Bubble {
    double x;
    double y;
    double a[4];
};

Bubble BubbleAt(float t) {
    return {2.0 * BubbleHash(t * 10.0F * 12.989F) - 1.0,
            2.0 * (BubbleHash(t * 24.513F) + 4.5) * 0.1 - 1.0,
            {(BubbleHash(t * 10.0F * 76.523F) + 0.25) * 0.8,
             (BubbleHash(t * 40.0F * 562.23F) + 0.33333334) * 0.6,
             (BubbleHash(t * 12.562F) - 0.5) * 0.5, (BubbleHash(t * 258.245F) - 0.5) * 2.0}};
}

Bubble FineBubbleAt(float t) {
    return {2.0 * BubbleHash(t * 40.0F * 12.989F) - 1.0,
            2.0 * BubbleHash(t * 50.0F * 24.513F) - 1.0,
            {(BubbleHash(t * 61.0F * 76.523F) + 0.25) * 0.8,
             (BubbleHash(t * 38.0F * 58.234F) + 0.05263158) * 0.019,
             (BubbleHash(t * 562.23F) + 0.2) * 0.5, 0.0}};
}

Bubble SecondFineBubbleAt(float t) {
    return {2.0 * BubbleHash(t * 10.0F * 89.556F) - 1.0,
            2.0 * BubbleHash(t * 30.0F * 24.513F) - 1.0,
            {(BubbleHash(t * 52.0F * 76.523F) + 0.25) * 0.8,
             (BubbleHash(t * 61.0F * 58.234F) + 0.05263158) * 0.019,
             (BubbleHash(t * 562.23F) + 0.2) * 0.5, 0.0}};
}

void WriteBubble(BubbleSwarm& swarm, int32_t index, const Bubble& bubble) {
    float* position = &swarm.positions[static_cast<std::size_t>(index) * kQuadVertices * 4];
    float* texcoord = &swarm.texcoords[static_cast<std::size_t>(index) * kQuadVertices * 3];
    float* attribute = &swarm.attributes[static_cast<std::size_t>(index) * kQuadVertices * 4];
    for (const auto& corner : kQuadCorners) {
        *position++ = static_cast<float>(bubble.x);
        *position++ = static_cast<float>(bubble.y);
        *position++ = 0.0F;
        *position++ = 1.0F;
        *texcoord++ = corner[0];
        *texcoord++ = corner[1];
        *texcoord++ = static_cast<float>(index);
        for (const double value : bubble.a) *attribute++ = static_cast<float>(value);
    }
}

BubbleSwarm EmptySwarm(int32_t bubbles) {
    const auto vertices = static_cast<std::size_t>(bubbles) * kQuadVertices;
    BubbleSwarm swarm;
    swarm.positions.resize(vertices * 4);
    swarm.texcoords.resize(vertices * 3);
    swarm.attributes.resize(vertices * 4);
    return swarm;
}

/// Builds a range of bubbles; each call writes its own.
class parallelMovingBubble : public cv::ParallelLoopBody {
public:
    explicit parallelMovingBubble(BubbleSwarm& target) : swarm(&target) {}

    void operator()(const cv::Range& range) const override {
        for (int i = range.start; i < range.end; ++i) {
            WriteBubble(*swarm, i, BubbleAt(static_cast<float>(i) / kBubbles));
        }
    }

private:
    BubbleSwarm* swarm;
};

/// The same for the fine swarm: the second half of the list has numbers of its own.
class parallelMovingBubble2 : public cv::ParallelLoopBody {
public:
    explicit parallelMovingBubble2(BubbleSwarm& target) : swarm(&target) {}

    void operator()(const cv::Range& range) const override {
        constexpr int kHalf = kFineBubbles / 2;
        for (int i = range.start; i < range.end; ++i) {
            const bool late = i >= kHalf;
            const float t = static_cast<float>(late ? i - kHalf : i) / kHalf;
            WriteBubble(*swarm, i, late ? SecondFineBubbleAt(t) : FineBubbleAt(t));
        }
    }

private:
    BubbleSwarm* swarm;
};

}  // namespace

double BubbleHash(float a) {
    const double spread = static_cast<double>(std::sin(a)) * 43758.545;
    return spread - std::floor(spread);
}

BubbleSwarm MakeBubbles() {
    BubbleSwarm swarm = EmptySwarm(kBubbles);
    cv::parallel_for_(cv::Range(0, kBubbles), parallelMovingBubble(swarm), cv::getNumThreads());
    return swarm;
}

BubbleSwarm MakeFineBubbles() {
    BubbleSwarm swarm = EmptySwarm(kFineBubbles);
    cv::parallel_for_(cv::Range(0, kFineBubbles), parallelMovingBubble2(swarm),
                      cv::getNumThreads());
    return swarm;
}

}  // namespace kelmo
