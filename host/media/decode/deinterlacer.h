// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "host/media/common/libav.h"

namespace kelmo::host {

// Private to this folder: makes whole pictures of interlaced ones, as many as go in. Each frame
// says itself whether it is interlaced and which field is first; one that is not passes unchanged.
// A picture comes out when its successor has gone in.
class Deinterlacer {
public:
    explicit Deinterlacer(int threads) : threads(threads) {}

    // Takes a decoded frame (left empty), its stamp in `timeBase`; null ends the stream. Returns
    // libav's error number, negative on failure.
    int Give(AVFrame* frame, AVRational timeBase);

    // The next picture, with its stamp in the time base that was given. AVERROR(EAGAIN) when more
    // has to go in, AVERROR_EOF at the end.
    int Take(AVFrame& frame);

    // Forgets what is on its way.
    void Reset();

private:
    int Build(const AVFrame& frame, AVRational timeBase);

    int threads;
    AVRational stampBase{0, 1};
    int width = 0, height = 0, format = -1;  // that the graph is made for
    LibavPtr<AVFilterGraph> graph;
    AVFilterContext* source = nullptr;  // both owned by the graph
    AVFilterContext* sink = nullptr;
};

}  // namespace kelmo::host
