// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

// Private to this folder: libav's headers and owners for its objects.

extern "C" {
#include <libavcodec/avcodec.h>
#include <libavfilter/avfilter.h>
#include <libavformat/avformat.h>
#include <libavutil/imgutils.h>
#include <libavutil/opt.h>
#include <libavutil/pixdesc.h>
#include <libswresample/swresample.h>
#include <libswscale/swscale.h>
}

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

namespace kelmo::host {

struct LibavDeleter {
    void operator()(AVFormatContext* context) const;
    void operator()(AVCodecContext* context) const { avcodec_free_context(&context); }
    void operator()(AVFilterGraph* graph) const { avfilter_graph_free(&graph); }
    void operator()(AVFrame* frame) const { av_frame_free(&frame); }
    void operator()(AVPacket* packet) const { av_packet_free(&packet); }
    void operator()(SwsContext* context) const { sws_freeContext(context); }
    void operator()(SwrContext* context) const { swr_free(&context); }
};

template <typename Object>
using LibavPtr = std::unique_ptr<Object, LibavDeleter>;

LibavPtr<AVFrame> NewFrame();
LibavPtr<AVPacket> NewPacket();

// libav's text for an error number, with a lower-case start, to follow a colon.
std::string LibavErrorText(int error);

// libav prints to the standard error by itself; everything worth saying comes from us. Keeps only
// its fatal messages unless the program chose a level. Called before anything is opened.
void PrepareLibav();

// The path as libav must be given it, so that it is a local file whatever it looks like.
std::string FileUrl(const std::string& path);

// Adds a sentence unless it is there already.
void AddOnce(std::vector<std::string>& sentences, const std::string& sentence);

inline double Seconds(int64_t timeStamp, AVRational timeBase) {
    return static_cast<double>(timeStamp) * timeBase.num / timeBase.den;
}

}  // namespace kelmo::host
