// SPDX-License-Identifier: GPL-3.0-or-later
#include "host/media/encode/frame_exporter.h"

#include <algorithm>
#include <cstring>

namespace kelmo::host {

namespace {

// Repeats the last column and the last row up to the coded size.
void PadPlane(uint8_t* plane, int stride, int width, int height, int codedWidth, int codedHeight,
              int pixelBytes) {
    for (int y = 0; y < height && codedWidth > width; ++y) {
        uint8_t* row = plane + ptrdiff_t{y} * stride;
        for (int x = width; x < codedWidth; ++x) {
            std::memcpy(row + ptrdiff_t{x} * pixelBytes, row + (ptrdiff_t{width} - 1) * pixelBytes,
                        static_cast<size_t>(pixelBytes));
        }
    }
    for (int y = height; y < codedHeight; ++y) {
        std::memcpy(plane + ptrdiff_t{y} * stride, plane + (ptrdiff_t{height} - 1) * stride,
                    static_cast<size_t>(codedWidth) * static_cast<size_t>(pixelBytes));
    }
}

}  // namespace

FrameExporter::FrameExporter(int width, int height, int codedWidth, int codedHeight,
                             AVPixelFormat format, ColorDescription color, bool keepAlpha,
                             int threads)
    : width(width),
      height(height),
      codedWidth(codedWidth),
      codedHeight(codedHeight),
      format(format),
      color(std::move(color)),
      keepAlpha(keepAlpha),
      scaler(threads) {
    upperRow.resize(static_cast<size_t>(width) * 4);
    lowerRow.resize(static_cast<size_t>(width) * 4);
}

AVFrame* FrameExporter::Export(const Picture& picture, int& error) {
    error = 0;
    // The encoder may still hold the last frame; then this one gets planes of its own.
    EnsureFrame(frame, codedWidth, codedHeight, format);
    if (format == AV_PIX_FMT_YUV420P || format == AV_PIX_FMT_YUVA420P) {
        ExportYuv420(picture);
    } else if (format == AV_PIX_FMT_PAL8) {
        palette.Quantize(picture.pixels.data(), picture.stride, width, height, keepAlpha,
                         frame->data[0], frame->linesize[0],
                         reinterpret_cast<uint32_t*>(frame->data[1]));
        PadPlane(frame->data[0], frame->linesize[0], width, height, codedWidth, codedHeight, 1);
    } else if (format == AV_PIX_FMT_BGRA || format == AV_PIX_FMT_BGR0) {
        FillBgra(picture, *frame);
    } else {
        EnsureFrame(bgra, codedWidth, codedHeight, AV_PIX_FMT_BGRA);
        FillBgra(picture, *bgra);
        error = scaler.Run(*bgra, *frame, color);
        if (error < 0) return nullptr;
    }
    return frame.get();
}

// The row as the file wants it: straight, or as it is (premultiplied is "on black").
const uint8_t* FrameExporter::StraightRow(const Picture& picture, int y,
                                          std::vector<uint8_t>& row) const {
    if (!keepAlpha) return picture.Row(y);
    UnpremultiplyRow(picture.Row(y), width, row.data());
    return row.data();
}

void FrameExporter::FillBgra(const Picture& picture, AVFrame& target) {
    for (int y = 0; y < height; ++y) {
        uint8_t* row = target.data[0] + ptrdiff_t{y} * target.linesize[0];
        if (keepAlpha) {
            UnpremultiplyRow(picture.Row(y), width, row);
        } else {
            OpaqueRow(picture.Row(y), width, row);
        }
    }
    PadPlane(target.data[0], target.linesize[0], width, height, codedWidth, codedHeight, 4);
}

void FrameExporter::ExportYuv420(const Picture& picture) {
    const BgrToYuvFactors factors = BgrToYuvFactors::From(color.weights, color.fullRange);
    const auto row = [this](int plane, int y) {
        return frame->data[plane] + ptrdiff_t{y} * frame->linesize[plane];
    };
    for (int y = 0; y < height; y += 2) {
        const bool single = y + 1 == height;
        const uint8_t* upper = StraightRow(picture, y, upperRow);
        const uint8_t* lower = single ? upper : StraightRow(picture, y + 1, lowerRow);
        BgraRowsToYuv420(upper, lower, width, factors, row(0, y), row(0, single ? y : y + 1),
                         row(1, y / 2), row(2, y / 2));
        if (format == AV_PIX_FMT_YUVA420P) {
            AlphaOfRow(upper, width, row(3, y));
            if (!single) AlphaOfRow(lower, width, row(3, y + 1));
        }
    }
    PadPlane(frame->data[0], frame->linesize[0], width, height, codedWidth, codedHeight, 1);
    if (format == AV_PIX_FMT_YUVA420P) {
        PadPlane(frame->data[3], frame->linesize[3], width, height, codedWidth, codedHeight, 1);
    }
}

}  // namespace kelmo::host
