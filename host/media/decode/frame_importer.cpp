// SPDX-License-Identifier: GPL-3.0-or-later
#include "host/media/decode/frame_importer.h"

#include <cstring>

namespace kelmo::host {

namespace {

// The formats of the direct way: 8 bits, chroma at full or half the resolution.
struct DirectFormat {
    bool supported = false;
    int shiftX = 0;      // chroma columns: width >> shiftX
    int shiftY = 0;      // chroma rows
    int chromaStep = 1;  // 2 when U and V share a plane
    bool alpha = false;
};

DirectFormat DirectFormatOf(AVPixelFormat format) {
    switch (format) {
        case AV_PIX_FMT_YUV420P:
            return {true, 1, 1, 1, false};
        case AV_PIX_FMT_YUV422P:
            return {true, 1, 0, 1, false};
        case AV_PIX_FMT_YUV444P:
            return {true, 0, 0, 1, false};
        case AV_PIX_FMT_NV12:
            return {true, 1, 1, 2, false};
        case AV_PIX_FMT_YUVA420P:
            return {true, 1, 1, 1, true};
        case AV_PIX_FMT_YUVA422P:
            return {true, 1, 0, 1, true};
        case AV_PIX_FMT_YUVA444P:
            return {true, 0, 0, 1, true};
        default:
            return {};
    }
}

void PremultiplyRows(uint8_t* pixels, int stride, int width, int height) {
    for (int y = 0; y < height; ++y) PremultiplyRow(pixels + ptrdiff_t{y} * stride, width);
}

void ClearOutside(Picture& picture, int left, int top, int width, int height) {
    const size_t rowBytes = static_cast<size_t>(picture.width) * 4;
    for (int y = 0; y < picture.height; ++y) {
        uint8_t* row = picture.Row(y);
        if (y < top || y >= top + height) {
            std::memset(row, 0, rowBytes);
            continue;
        }
        std::memset(row, 0, static_cast<size_t>(left) * 4);
        const size_t right = static_cast<size_t>(left + width) * 4;
        std::memset(row + right, 0, rowBytes - right);
    }
}

}  // namespace

void FrameImporter::Configure(int newWidth, int newHeight, FitMode fit, Orientation turn,
                              int shownWidth, int shownHeight) {
    width = newWidth;
    height = newHeight;
    orientation = turn;
    shown = {0, 0, width, height};
    if (fit == FitMode::kLetterbox) shown = FittedInto(width, height, shownWidth, shownHeight);
    scaledWidth = orientation.transposed ? shown.height : shown.width;
    scaledHeight = orientation.transposed ? shown.width : shown.height;
}

int FrameImporter::Import(const AVFrame& frame, AVCodecID codec, Picture& picture) {
    picture.Resize(width, height);
    ClearOutside(picture, shown.left, shown.top, shown.width, shown.height);
    uint8_t* place = picture.Row(shown.top) + ptrdiff_t{shown.left} * 4;

    uint8_t* target = place;
    int stride = picture.stride;
    if (!orientation.Identity()) {
        stride = scaledWidth * 4;
        turned.resize(static_cast<size_t>(stride) * static_cast<size_t>(scaledHeight));
        target = turned.data();
    }

    const ColorDescription color = DescribeColor(frame, codec);
    const bool sameSize = frame.width == scaledWidth && frame.height == scaledHeight;
    const bool alpha = FormatHasAlpha(static_cast<AVPixelFormat>(frame.format));
    const Light light = LightOf(frame);
    int error = 0;
    if (light != Light::kBt709 && !alpha) {
        error = ConvertLight(frame, color, light, target, stride);
    } else if (!sameSize || !ConvertDirectly(frame, color, target, stride)) {
        if (alpha && !sameSize) {
            error = ScaleWithAlpha(frame, color, target, stride);
        } else {
            error = ScaleInto(frame, color, target, stride);
        }
    }
    if (error < 0) return error;
    if (alpha && sameSize) PremultiplyRows(target, stride, scaledWidth, scaledHeight);
    if (!orientation.Identity()) {
        CopyOriented(target, stride, scaledWidth, scaledHeight, orientation, place, picture.stride);
    }
    return 0;
}

bool FrameImporter::ConvertDirectly(const AVFrame& frame, const ColorDescription& color,
                                    uint8_t* target, int stride) {
    const DirectFormat format =
        DirectFormatOf(WithoutRange(static_cast<AVPixelFormat>(frame.format)));
    if (!format.supported) return false;
    const YuvToBgrFactors factors = YuvToBgrFactors::From(color.weights, color.fullRange);
    const size_t rowBytes = static_cast<size_t>(frame.width);
    chromaRows.resize(2 * rowBytes);
    uint8_t* wideU = chromaRows.data();
    uint8_t* wideV = chromaRows.data() + rowBytes;
    for (int y = 0; y < frame.height; ++y) {
        const int chromaY = y >> format.shiftY;
        const uint8_t* u = frame.data[1] + ptrdiff_t{chromaY} * frame.linesize[1];
        const uint8_t* v =
            format.chromaStep == 2 ? u + 1 : frame.data[2] + ptrdiff_t{chromaY} * frame.linesize[2];
        if (format.shiftX == 1) {
            if (format.shiftY == 0 || y % 2 == 0) {
                RepeatSamples(u, format.chromaStep, frame.width, wideU);
                RepeatSamples(v, format.chromaStep, frame.width, wideV);
            }
            u = wideU;
            v = wideV;
        }
        const uint8_t* alpha =
            format.alpha ? frame.data[3] + ptrdiff_t{y} * frame.linesize[3] : nullptr;
        YuvRowToBgra(frame.data[0] + ptrdiff_t{y} * frame.linesize[0], u, v, alpha, frame.width,
                     factors, target + ptrdiff_t{y} * stride);
    }
    return true;
}

int FrameImporter::ConvertLight(const AVFrame& frame, const ColorDescription& color, Light light,
                                uint8_t* target, int stride) {
    if (!converter || light != converterLight) converter = std::make_unique<LightConverter>(light);
    converterLight = light;
    EnsureFrame(deep, scaledWidth, scaledHeight, AV_PIX_FMT_RGB48);
    const int error = scaler.Run(frame, *deep, color);
    if (error < 0) return error;
    for (int y = 0; y < scaledHeight; ++y) {
        const uint8_t* row = deep->data[0] + ptrdiff_t{y} * deep->linesize[0];
        converter->ConvertRow(reinterpret_cast<const uint16_t*>(row), scaledWidth,
                              target + ptrdiff_t{y} * stride);
    }
    return 0;
}

// swscale may write past the end of a row of odd width; only rows that end on its step are given to
// it directly.
int FrameImporter::ScaleInto(const AVFrame& frame, const ColorDescription& color, uint8_t* target,
                             int stride) {
    constexpr int kSafeStep = 16;  // pixels
    if (scaledWidth % kSafeStep == 0 && stride == scaledWidth * 4) {
        LibavPtr<AVFrame> borrowed = BorrowBgra(target, scaledWidth, scaledHeight, stride);
        return scaler.Run(frame, *borrowed, color);
    }
    EnsureFrame(scaled, scaledWidth, scaledHeight, AV_PIX_FMT_BGRA);
    const int error = scaler.Run(frame, *scaled, color);
    if (error < 0) return error;
    av_image_copy_plane(target, stride, scaled->data[0], scaled->linesize[0], scaledWidth * 4,
                        scaledHeight);
    return 0;
}

// Colours of transparent places must not bleed into their neighbours: premultiplied first, then
// scaled.
int FrameImporter::ScaleWithAlpha(const AVFrame& frame, const ColorDescription& color,
                                  uint8_t* target, int stride) {
    EnsureFrame(premultiplied, frame.width, frame.height, AV_PIX_FMT_BGRA);
    int error = scaler.Run(frame, *premultiplied, color);
    if (error < 0) return error;
    PremultiplyRows(premultiplied->data[0], premultiplied->linesize[0], frame.width, frame.height);
    EnsureFrame(scaled, scaledWidth, scaledHeight, AV_PIX_FMT_BGRA);
    error = alphaScaler.Run(*premultiplied, *scaled, color);
    if (error < 0) return error;
    for (int y = 0; y < scaledHeight; ++y) {
        uint8_t* row = target + ptrdiff_t{y} * stride;
        std::memcpy(row, scaled->data[0] + ptrdiff_t{y} * scaled->linesize[0],
                    static_cast<size_t>(scaledWidth) * 4);
        LimitToAlphaRow(row, scaledWidth);
    }
    return 0;
}

}  // namespace kelmo::host
