// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <opencv2/core.hpp>
#include <vector>

#include "contract/engine.h"
#include "contract/text_path.h"
#include "effects/text/letters/char_outlines.h"
#include "effects/text/letters/char_quads.h"

namespace kelmo {

/// A quad for each letter of the host's text, built anew only when the text's box has moved. Before
/// the first text the whole frame is one letter.
class LetterQuads {
public:
    LetterQuads();

    void Take(TextPath& text, const cv::Size& frame);
    /// "position" (3), "texcoord" (2), "center" (2, device space) and, where wanted,
    /// "texcoord_center" (2, parts of the frame, y down); the vertex count.
    void Bind(NLEOpenGLEngineEffect& engine, bool withPictureCenters) const;

private:
    void Fill(const std::vector<CharQuad>& quads);

    CharOutlines outlines;
    cv::Rect bound;
    int32_t triangleCount = 0;
    std::vector<float> positions;
    std::vector<float> texcoords;
    std::vector<float> centers;
    std::vector<float> pictureCenters;
};

/// Part of its size at which a blurred picture is worked on, for a clearness of 0..1.
float ClearnessLevel(float clearness);
/// The picture at that part of `size`, one pixel at least.
void ScalePicture(const cv::Mat& picture, const cv::Size& size, float level, cv::Mat& out);

}  // namespace kelmo
