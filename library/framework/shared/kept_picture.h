// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <cstdlib>

namespace kelmo {

/// When the one picture that an effect keeps of an earlier frame may still be shown: not on the
/// first frame, not before one was kept, and not after the host jumped by more than a fifth of a
/// second.
class KeptPicture {
public:
    void Restart() { firstFrame = true; }
    /// `frameRate` in frames per second.
    bool Usable(int32_t position, float frameRate) const {
        if (firstFrame || !hasHistory) return false;
        const int64_t jump = static_cast<int64_t>(position) - lastPosition;
        return std::llabs(jump) <= static_cast<int64_t>(frameRate * 5.0F / 25.0F);
    }
    void Forget() { hasHistory = false; }
    /// A frame was drawn; `kept` says whether its picture was kept.
    void Drawn(int32_t position, bool kept) {
        hasHistory = hasHistory || kept;
        lastPosition = position;
        firstFrame = false;
    }

private:
    bool firstFrame = true;
    bool hasHistory = false;
    int32_t lastPosition = -1;
};

}  // namespace kelmo
