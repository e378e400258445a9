// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <functional>
#include <memory>

#include "host/media/picture/picture.h"

namespace kelmo::host {

// Reads frames ahead on a thread of its own, in order 0, 1, 2..., so that decoding runs beside
// rendering. The buffers go round: none is allocated after the first few frames.
//
// Thread rule: Next and the destructor on one thread; `produce` runs on the thread of this object
// only, so whatever it uses (a MediaReader) must be left alone by others until this object is gone.
// The destructor waits for the frame in work and no longer.
class FramePrefetcher {
public:
    // Fills the picture of this index; false ends the sequence. What it throws, Next throws.
    using Produce = std::function<bool(int64_t index, Picture& picture)>;

    // `count` frames at most (negative: until `produce` says false), `depth` of them ahead (at
    // least 1).
    FramePrefetcher(Produce produce, int64_t count, int depth = 3);
    ~FramePrefetcher();
    FramePrefetcher(const FramePrefetcher&) = delete;
    FramePrefetcher& operator=(const FramePrefetcher&) = delete;

    // Exchanges `picture` for the next frame; its old buffer is used again. False at the end.
    bool Next(Picture& picture);

private:
    class Impl;
    std::unique_ptr<Impl> impl;
};

}  // namespace kelmo::host
