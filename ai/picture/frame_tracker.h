// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <vector>

#include "ai/picture/picture_change.h"

namespace kelmo {

/// Follows things of one kind through a row of frames: those known are looked for where they were,
/// new ones in the whole frame while there is none, and else once in a while. A jump starts anew;
/// the same frame again changes nothing. The list keeps its order, new ones come behind.
template <typename Tracked>
class FrameTracker {
public:
    virtual ~FrameTracker() = default;

    void Next(PicturePyramid& frame) {
        const Succession succession = change.Next(frame);
        if (succession == Succession::kSame) return;
        if (succession == Succession::kJump) tracked.clear();
        Follow(frame);
        if (!tracked.empty() && ++framesSinceSearch < searchInterval) return;
        framesSinceSearch = 0;
        FindNew(frame);
    }

protected:
    /// `searchInterval`: frames from one search of the whole frame to the next.
    explicit FrameTracker(int searchInterval) : searchInterval(searchInterval) {}

    /// Looks for each of `tracked` near its place; drops what is gone.
    virtual void Follow(PicturePyramid& frame) = 0;
    /// Adds what is not in `tracked` yet.
    virtual void FindNew(PicturePyramid& frame) = 0;
    /// Counts up from 1.
    int32_t NextNumber() { return ++lastNumber; }

    std::vector<Tracked> tracked;

private:
    const int searchInterval;
    PictureChange change;
    int framesSinceSearch = 0;
    int32_t lastNumber = 0;
};

}  // namespace kelmo
