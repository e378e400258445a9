// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <string>

#include "host/media/common/libav.h"
#include "host/media/picture/pixel_kernels.h"

namespace kelmo::host {

// Private to this folder: how the samples of a frame are to be read as RGB.
struct ColorDescription {
    int swsMatrix = SWS_CS_ITU709;  // swscale's number of the matrix
    LumaWeights weights;
    bool fullRange = false;
    std::string name;  // libav's name of the matrix, "gbr" for RGB

    bool operator==(const ColorDescription& other) const {
        return swsMatrix == other.swsMatrix && fullRange == other.fullRange && name == other.name;
    }
};

// By the tags of the frame; what they leave open by the habits of the codec and by the size.
ColorDescription DescribeColor(const AVFrame& frame, AVCodecID codec);

// The description that a matrix and a range give.
ColorDescription ColorOf(AVColorSpace matrix, bool fullRange);

// The same samples without the range in the name of the format ("yuvj420p" -> "yuv420p").
AVPixelFormat WithoutRange(AVPixelFormat format);

bool FormatHasAlpha(AVPixelFormat format);

}  // namespace kelmo::host
