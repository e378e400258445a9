// SPDX-License-Identifier: GPL-3.0-or-later
#include "effects/beam/lightning/fractal_bolt.h"

#include <algorithm>
#include <cmath>

#include "effects/beam/lightning/random_fraction.h"

namespace kelmo {
namespace {

constexpr int32_t kOffsetSteps = 100;

float Length(const cv::Point2f& vector) {
    return std::hypot(vector.x, vector.y);
}

class Splitter {
public:
    Splitter(const BoltRoughness& roughness, BoltPath* boltPath, const BoltLineSink& lineSink)
        : detail(std::max(roughness.detail, kFinestBoltDetail)),
          scale(roughness.scale),
          path(boltPath),
          sink(lineSink) {}

    void Split(BoltLine line, float displace, int levels) const {
        for (; displace >= detail && levels > 0; --levels) {
            const BoltPoint middle = MiddleOf(line, displace * scale);
            if (path) path->Add(middle.at, middle.progress);
            displace *= 0.5F;
            BoltLine firstHalf = line;
            firstHalf.end = middle.at;
            firstHalf.endProgress = middle.progress;
            Split(firstHalf, displace, levels - 1);
            line.start = middle.at;
            line.startProgress = middle.progress;
        }
        sink(line);
    }

private:
    static BoltPoint MiddleOf(const BoltLine& line, float offset) {
        const float x = RandomOffset(kOffsetSteps) * offset + (line.start.x + line.end.x) * 0.5F;
        const float y = RandomOffset(kOffsetSteps) * offset + (line.start.y + line.end.y) * 0.5F;
        const cv::Point2f at(x, y);
        const float length = Length(line.end - line.start);
        const float share = length > 0.0F ? Length(at - line.start) / length : 0.0F;
        return {at, share * (line.endProgress - line.startProgress) + line.startProgress};
    }

    float detail;
    float scale;
    BoltPath* path;
    const BoltLineSink& sink;
};

}  // namespace

void FractalBolt(const BoltLine& line, const BoltRoughness& roughness, BoltPath* path,
                 const BoltLineSink& sink) {
    if (!std::isfinite(Length(line.end - line.start))) return;
    const float displace = std::isfinite(roughness.displace * roughness.scale)  //
                               ? roughness.displace
                               : 0.0F;
    Splitter(roughness, path, sink).Split(line, displace, kMostBoltLevels);
}

}  // namespace kelmo
