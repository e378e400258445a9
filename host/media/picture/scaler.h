// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "host/media/common/libav.h"
#include "host/media/picture/color_description.h"

namespace kelmo::host {

// Private to this folder: swscale with the accurate settings, its slices on several threads. The
// context is kept while sizes, formats and colours stay the same.
class Scaler {
public:
    explicit Scaler(int threads) : threads(threads) {}

    // Converts and scales. Both frames carry width, height, format and reference counted planes.
    // `color` describes the side that is YCbCr (both if both are). Returns libav's error number,
    // negative on failure.
    int Run(const AVFrame& source, AVFrame& target, const ColorDescription& color);

private:
    int Prepare(const AVFrame& source, const AVFrame& target, const ColorDescription& color);

    struct Key {
        int sourceWidth = 0, sourceHeight = 0, sourceFormat = -1;
        int targetWidth = 0, targetHeight = 0, targetFormat = -1;
        ColorDescription color;

        bool operator==(const Key&) const = default;
    };

    int threads;
    Key key;
    LibavPtr<SwsContext> context;
};

// A frame that borrows a BGRA buffer; valid while the buffer is.
LibavPtr<AVFrame> BorrowBgra(uint8_t* pixels, int width, int height, int stride);

// A frame with planes of its own, aligned and padded as vector code likes it.
LibavPtr<AVFrame> AllocateFrame(int width, int height, AVPixelFormat format);

// Gives `frame` this size and format, keeping it when it has them already and nobody shares it.
void EnsureFrame(LibavPtr<AVFrame>& frame, int width, int height, AVPixelFormat format);

}  // namespace kelmo::host
