// SPDX-License-Identifier: GPL-3.0-or-later
#include "effects/text/letters/letter_quads.h"

#include <algorithm>
#include <opencv2/imgproc.hpp>

namespace kelmo {

LetterQuads::LetterQuads() {
    CharQuad frame;
    frame.corners = {{{0.0F, 0.0F}, {0.0F, 1.0F}, {1.0F, 1.0F}, {1.0F, 0.0F}}};
    Fill({frame});
}

void LetterQuads::Take(TextPath& text, const cv::Size& frame) {
    CharReading reading;
    reading.farthestX *= static_cast<float>(frame.width) / static_cast<float>(frame.height);
    outlines.ReadCharOutlines(text, frame, reading);
    const bool moved = outlines.Bound() != bound;
    bound = outlines.Bound();
    if (!moved || outlines.Count() == 0) return;
    Fill(BuildCharQuads(outlines, frame, outlines.Placement()));
}

void LetterQuads::Fill(const std::vector<CharQuad>& quads) {
    triangleCount = static_cast<int32_t>(2 * quads.size());
    FillCharPlaces(quads, positions, texcoords);
    FillCharVertices<2>(quads, centers, [](const CharQuad& quad, std::size_t, std::size_t) {
        return std::array{quad.center.x, quad.center.y};
    });
    FillCharVertices<2>(quads, pictureCenters, [](const CharQuad& quad, std::size_t, std::size_t) {
        return std::array{0.5F + 0.5F * quad.center.x, 0.5F - 0.5F * quad.center.y};
    });
}

void LetterQuads::Bind(NLEOpenGLEngineEffect& engine, bool withPictureCenters) const {
    engine.AddVertexAttribute("position", 3, positions.data(), false, false);
    engine.AddVertexAttribute("texcoord", 2, texcoords.data(), false, false);
    engine.AddVertexAttribute("center", 2, centers.data(), false, false);
    if (withPictureCenters) {
        engine.AddVertexAttribute("texcoord_center", 2, pictureCenters.data(), false, false);
    }
    engine.SetVertexCount(3 * triangleCount);
}

float ClearnessLevel(float clearness) {
    if (clearness < 0.1F) return 0.0F;
    for (const float level : {0.2F, 0.4F, 0.6F, 0.8F}) {
        if (clearness < level) return level;
    }
    return 1.0F;
}

void ScalePicture(const cv::Mat& picture, const cv::Size& size, float level, cv::Mat& out) {
    const cv::Size scaled(std::max(1, static_cast<int>(static_cast<float>(size.width) * level)),
                          std::max(1, static_cast<int>(static_cast<float>(size.height) * level)));
    if (picture.empty()) {
        out.release();
    } else {
        cv::resize(picture, out, scaled, 0.0, 0.0, cv::INTER_LINEAR);
    }
}

}  // namespace kelmo
