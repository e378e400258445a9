// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <functional>
#include <memory>

#include "framework/textures/texture_frames.h"

/// The threads that decode material, and how the library gets rid of them.
///
/// No effect waits for a loader. It holds the frames by shared ownership and touches nothing else
/// of the effect; between two frames it looks whether the effect is still there. All loaders are
/// listed, so that the end of the library can wait until the last one has left its code.
namespace kelmo {

/// One running loader: its share of the frames, and the wish to stop.
class LoaderTicket {
public:
    explicit LoaderTicket(const std::shared_ptr<TextureFrames>& frames);
    LoaderTicket(const LoaderTicket&) = delete;
    LoaderTicket& operator=(const LoaderTicket&) = delete;

    /// True after `StopTextureLoaders`, and as soon as the effect has let go of the frames.
    bool ShouldStop() const;

private:
    std::shared_ptr<TextureFrames> frames;
    std::weak_ptr<TextureFrames> effectsShare;
    uint64_t startedIn;
};

/// Runs `task` on a new thread, with the ticket of that thread. A system that has no more
/// threads runs it before this returns. Nothing that the task throws leaves it. `frames` come from
/// `TextureFrames::Create`.
void StartTextureLoader(const std::shared_ptr<TextureFrames>& frames,
                        std::function<void(const LoaderTicket&)> task);

/// Longest wait for the ends of loaders, in milliseconds.
inline constexpr int kLongestLoaderWait = 5000;

/// Waits for the loaders whose effects are gone. True when none of them is left. Those of living
/// effects go on. Called when the library is shut down: from then on a host that releases its last
/// effect may go, and few loaders are left that could log to it.
bool WaitForOrphanedLoaders(int longestWait = kLongestLoaderWait);

/// Asks all running loaders to stop and waits for them. True when none is left. Loaders started
/// later run as ever. Called on its own at the end of the process and when the library is unloaded,
/// so that no thread runs in code that is gone (but for one that hangs in a decoder for longer than
/// the wait).
bool StopTextureLoaders(int longestWait = kLongestLoaderWait);

}  // namespace kelmo
