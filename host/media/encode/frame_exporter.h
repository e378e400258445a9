// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <vector>

#include "host/media/common/libav.h"
#include "host/media/encode/gif_palette.h"
#include "host/media/picture/color_description.h"
#include "host/media/picture/picture.h"
#include "host/media/picture/scaler.h"

namespace kelmo::host {

// Private to this folder: brings pictures of the effects to the frames that an encoder takes. 8-bit
// 4:2:0 goes through loops of our own (the inverse of FrameImporter), the rest through swscale.
class FrameExporter {
public:
    // The coded size may be larger by one column or row, which repeats its neighbour. With
    // `keepAlpha` the format has an alpha channel and gets straight alpha; without, the picture
    // stands on black.
    FrameExporter(int width, int height, int codedWidth, int codedHeight, AVPixelFormat format,
                  ColorDescription color, bool keepAlpha, int threads);

    // The frame belongs to this object and is valid until the next call. Null if swscale refuses;
    // `error` is libav's number then.
    AVFrame* Export(const Picture& picture, int& error);

private:
    void ExportYuv420(const Picture& picture);
    void FillBgra(const Picture& picture, AVFrame& target);
    const uint8_t* StraightRow(const Picture& picture, int y, std::vector<uint8_t>& row) const;

    int width, height, codedWidth, codedHeight;
    AVPixelFormat format;
    ColorDescription color;
    bool keepAlpha;
    Scaler scaler;
    GifPalette palette;
    LibavPtr<AVFrame> frame;
    LibavPtr<AVFrame> bgra;
    std::vector<uint8_t> upperRow, lowerRow;
};

}  // namespace kelmo::host
