// SPDX-License-Identifier: GPL-3.0-or-later
#include "host/media/picture/scaler.h"

#include <new>

namespace kelmo::host {

int Scaler::Prepare(const AVFrame& source, const AVFrame& target, const ColorDescription& color) {
    Key wanted{source.width,  source.height, source.format, target.width,
               target.height, target.format, color};
    if (context && wanted == key) return 0;
    context.reset(sws_alloc_context());
    if (!context) return AVERROR(ENOMEM);
    av_opt_set_int(context.get(), "srcw", source.width, 0);
    av_opt_set_int(context.get(), "srch", source.height, 0);
    av_opt_set_int(context.get(), "src_format",
                   WithoutRange(static_cast<AVPixelFormat>(source.format)), 0);
    av_opt_set_int(context.get(), "dstw", target.width, 0);
    av_opt_set_int(context.get(), "dsth", target.height, 0);
    av_opt_set_int(context.get(), "dst_format",
                   WithoutRange(static_cast<AVPixelFormat>(target.format)), 0);
    av_opt_set_int(context.get(), "sws_flags",
                   SWS_BICUBIC | SWS_ACCURATE_RND | SWS_FULL_CHR_H_INT | SWS_FULL_CHR_H_INP, 0);
    av_opt_set_int(context.get(), "threads", threads, 0);
    int error = sws_init_context(context.get(), nullptr, nullptr);
    if (error < 0) {
        context.reset();
        return error;
    }
    const int* table = sws_getCoefficients(color.swsMatrix);
    // RGB needs no range; it answers with an error then, which is none.
    sws_setColorspaceDetails(context.get(), table, color.fullRange, table, color.fullRange, 0,
                             1 << 16, 1 << 16);
    key = wanted;
    return 0;
}

int Scaler::Run(const AVFrame& source, AVFrame& target, const ColorDescription& color) {
    const int error = Prepare(source, target, color);
    if (error < 0) return error;
    return sws_scale_frame(context.get(), &target, &source);
}

LibavPtr<AVFrame> BorrowBgra(uint8_t* pixels, int width, int height, int stride) {
    LibavPtr<AVFrame> frame = NewFrame();
    frame->width = width;
    frame->height = height;
    frame->format = AV_PIX_FMT_BGRA;
    frame->data[0] = pixels;
    frame->linesize[0] = stride;
    frame->buf[0] = av_buffer_create(
        pixels, static_cast<size_t>(stride) * static_cast<size_t>(height), [](void*, uint8_t*) {},
        nullptr, 0);
    if (!frame->buf[0]) throw std::bad_alloc();
    return frame;
}

LibavPtr<AVFrame> AllocateFrame(int width, int height, AVPixelFormat format) {
    LibavPtr<AVFrame> frame = NewFrame();
    frame->width = width;
    frame->height = height;
    frame->format = format;
    if (av_frame_get_buffer(frame.get(), 0) < 0) throw std::bad_alloc();
    return frame;
}

void EnsureFrame(LibavPtr<AVFrame>& frame, int width, int height, AVPixelFormat format) {
    const bool fits = frame && frame->width == width && frame->height == height &&
                      frame->format == format && av_frame_is_writable(frame.get());
    if (!fits) frame = AllocateFrame(width, height, format);
}

}  // namespace kelmo::host
