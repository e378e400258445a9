// SPDX-License-Identifier: GPL-3.0-or-later
#include "host/media/decode/deinterlacer.h"

extern "C" {
#include <libavfilter/buffersink.h>
#include <libavfilter/buffersrc.h>
}

#include <algorithm>
#include <cstdio>
#include <string_view>

namespace kelmo::host {

int Deinterlacer::Build(const AVFrame& frame, AVRational timeBase) {
    graph.reset(avfilter_graph_alloc());
    if (!graph) return AVERROR(ENOMEM);
    graph->nb_threads = threads;
    char description[256];
    std::snprintf(description, sizeof description,
                  "buffer=video_size=%dx%d:pix_fmt=%d:time_base=%d/%d:pixel_aspect=%d/%d,"
                  "bwdif=mode=send_frame:parity=auto:deint=interlaced,buffersink",
                  frame.width, frame.height, frame.format, timeBase.num, timeBase.den,
                  frame.sample_aspect_ratio.num, std::max(1, frame.sample_aspect_ratio.den));
    AVFilterInOut* inputs = nullptr;
    AVFilterInOut* outputs = nullptr;
    int error = avfilter_graph_parse2(graph.get(), description, &inputs, &outputs);
    avfilter_inout_free(&inputs);
    avfilter_inout_free(&outputs);
    if (error >= 0) error = avfilter_graph_config(graph.get(), nullptr);
    if (error < 0) {
        Reset();
        return error;
    }
    stampBase = timeBase;
    width = frame.width;
    height = frame.height;
    format = frame.format;
    for (unsigned i = 0; i < graph->nb_filters; ++i) {
        AVFilterContext* filter = graph->filters[i];
        const std::string_view name = filter->filter->name;
        if (name == "buffer") source = filter;
        if (name == "buffersink") sink = filter;
    }
    return 0;
}

int Deinterlacer::Give(AVFrame* frame, AVRational timeBase) {
    if (!frame) return graph ? av_buffersrc_add_frame(source, nullptr) : 0;
    // A stream that changes its form begins anew.
    if (frame->width != width || frame->height != height || frame->format != format) Reset();
    if (!graph) {
        const int error = Build(*frame, timeBase);
        if (error < 0) return error;
    }
    frame->pts = frame->best_effort_timestamp;
    return av_buffersrc_add_frame(source, frame);
}

int Deinterlacer::Take(AVFrame& frame) {
    if (!graph) return AVERROR(EAGAIN);
    const int error = av_buffersink_get_frame(sink, &frame);
    if (error < 0) return error;
    if (frame.pts != AV_NOPTS_VALUE) {
        frame.pts = av_rescale_q(frame.pts, av_buffersink_get_time_base(sink), stampBase);
    }
    frame.best_effort_timestamp = frame.pts;
    return error;
}

void Deinterlacer::Reset() {
    graph.reset();
    source = nullptr;
    sink = nullptr;
}

}  // namespace kelmo::host
