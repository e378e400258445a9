// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <memory>
#include <vector>

#include "host/media/common/libav.h"
#include "host/media/decode/media_reader.h"
#include "host/media/picture/color_description.h"
#include "host/media/picture/fit.h"
#include "host/media/picture/light.h"
#include "host/media/picture/picture.h"
#include "host/media/picture/pixel_kernels.h"
#include "host/media/picture/scaler.h"

namespace kelmo::host {

// Private to this folder: brings decoded frames to pictures of the effects. Frames of the usual
// 8-bit YCbCr formats that keep their size go through loops of our own (see pixel_kernels.h), which
// repeat chroma samples so that a picture that nobody changes is encoded to the samples that it
// came from; all others through swscale, HDR and wide colours in 16 bits and on to BT.709.
class FrameImporter {
public:
    explicit FrameImporter(int threads) : scaler(threads) {}

    // Size of the pictures, how the frame fits in, and how it is turned. `shownWidth`,
    // `shownHeight` are the size of the frame as seen: turned, square pixels.
    void Configure(int width, int height, FitMode fit, Orientation orientation, int shownWidth,
                   int shownHeight);

    // Returns libav's error number, negative on failure.
    int Import(const AVFrame& frame, AVCodecID codec, Picture& picture);

private:
    bool ConvertDirectly(const AVFrame& frame, const ColorDescription& color, uint8_t* target,
                         int stride);
    int ScaleWithAlpha(const AVFrame& frame, const ColorDescription& color, uint8_t* target,
                       int stride);
    int ConvertLight(const AVFrame& frame, const ColorDescription& color, Light light,
                     uint8_t* target, int stride);
    int ScaleInto(const AVFrame& frame, const ColorDescription& color, uint8_t* target, int stride);

    int width = 0;
    int height = 0;
    Orientation orientation;
    Rectangle shown;       // where the frame lies in the picture
    int scaledWidth = 0;   // size of the frame before it is turned
    int scaledHeight = 0;  //
    Scaler scaler;
    Scaler alphaScaler{1};  // second step of frames with alpha: straight -> premultiplied -> scaled
    std::vector<uint8_t> turned;
    std::vector<uint8_t> chromaRows;
    LibavPtr<AVFrame> premultiplied;
    LibavPtr<AVFrame> scaled;
    LibavPtr<AVFrame> deep;  // 16-bit RGB
    Light converterLight = Light::kBt709;
    std::unique_ptr<LightConverter> converter;  // for converterLight
};

}  // namespace kelmo::host
