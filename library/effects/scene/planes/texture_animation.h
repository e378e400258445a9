// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <array>
#include <opencv2/core.hpp>
#include <vector>

#include "contract/text_path.h"
#include "framework/filter/nle_opengl_filter.h"

namespace kelmo {

/// One textured quad for each piece of the host's text, so that a shader can move letters that the
/// host has drawn into the clip.
///
/// Attributes: "position" (3, device space), "texcoord" (2, its place in the clip) and the piece's
/// transform of the host, "matrix_column0" to "matrix_column3" (4 each). Slot 0 is the clip. Before
/// the first text the whole clip is one piece.
class NLEOpenGLTextureAnimation : public NLEOpenGLFilter {
public:
    explicit NLEOpenGLTextureAnimation(std::shared_ptr<NLEFilterInfo> filterInfo);

    int32_t DoEffect(const FrameRecord& second, const FrameRecord& first, FrameRecord& out,
                     int32_t frameWidth, int32_t frameHeight, int32_t frameStride) override;

private:
    /// At most so many pieces are read.
    static constexpr int32_t kMostPieces = 4096;

    void TakeText(TextPath& text, int32_t frameWidth, int32_t frameHeight);
    void Clear();
    void PutQuad(const cv::Point2f (&corners)[4], const float* transform);
    void PutVertex(const cv::Point2f& place, const float* transform);

    bool hasText = false;
    std::vector<float> positions;
    std::vector<float> texcoords;
    std::array<std::vector<float>, 4> columns;
};

}  // namespace kelmo
