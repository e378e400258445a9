// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <opencv2/core.hpp>

#include "framework/filter/nle_opengl_filter.h"
#include "framework/shared/working_size.h"

namespace kelmo {

/// Small blocks over what is bright in a picture, such as a text, numbered from the top left down
/// its columns.
struct BlockLattice {
    cv::Mat blocks;  ///< 8UC4, 255 in a block
    cv::Mat codes;   ///< 8UC4: the sum of a block's channels is its number, from 1 on
    cv::Rect bound;  ///< of the blocks; empty without any
    int32_t count = 0;
    int32_t block = 0;  ///< side of a block in pixels
    int32_t gap = 0;

    int32_t Step() const { return block + gap; }
    /// `picture`: 8UC3 or 8UC4 of the working size. `pixelSize` is five times the side of a block.
    void Find(const cv::Mat& picture, float pixelSize);

private:
    cv::Mat gray;
    cv::Mat mask;
};

/// A picture in small blocks that its shader moves, colours or shows one by one; nothing bright, no
/// frame (1).
///
/// Parameter "pixelSize"; all numbers go to the shader. Slots: the clip, the blocks, their numbers
/// (unfiltered pixels). Uniforms: "roiX", "roiY", "roiWidth", "roiHeight" (box of the blocks, parts
/// of the frame, y down), "blockTotalNum", "blockSizeX", "blockSizeY" (parts of that box), times.
class NLEOpenGLTextArray : public NLEOpenGLFilter {
public:
    explicit NLEOpenGLTextArray(std::shared_ptr<NLEFilterInfo> filterInfo);

    int32_t InitParams() override;
    int32_t DoEffect(const FrameRecord& second, const FrameRecord& first, FrameRecord& out,
                     int32_t frameWidth, int32_t frameHeight, int32_t frameStride) override;

private:
    void SendLattice(const WorkingSize& size);

    BlockLattice lattice;
    cv::Mat small;
    cv::Mat blocks;
    cv::Mat codes;
};

}  // namespace kelmo
