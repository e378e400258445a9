// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <functional>
#include <memory>

#include "framework/texture_frames.h"

/// The threads that decode material, and how the library gets rid of them.
///
/// No effect waits for a loader. It holds the frames by shared ownership and touches nothing else
/// of the effect. All loaders are listed, so that a shutdown can tell them to stop and wait until
/// the last one has left the library's code; they look at that wish between two frames.
namespace kelmo {

/// One running loader: its share of the frames, and the wish to stop.
class LoaderTicket {
public:
    explicit LoaderTicket(std::shared_ptr<TextureFrames> frames);
    ~LoaderTicket();
    LoaderTicket(const LoaderTicket&) = delete;
    LoaderTicket& operator=(const LoaderTicket&) = delete;

    /// True after `StopTextureLoaders`, and as soon as only loaders still hold the frames.
    bool ShouldStop() const;

private:
    std::shared_ptr<TextureFrames> frames;
    uint64_t startedIn;
};

/// Runs `task` on a new thread, with the ticket of that thread. A system that has no more
/// threads runs it before this returns. Nothing that the task throws leaves it.
void StartTextureLoader(std::shared_ptr<TextureFrames> frames,
                        std::function<void(const LoaderTicket&)> task);

/// Asks all running loaders to stop and waits for them, at most `longestWait` milliseconds. True
/// when none is left. Loaders started later run as ever. Called when the library is shut down; the
/// end of the process or an unloading of the library does it again on its own, so that no thread
/// runs in code that is gone (but for one that hangs in a decoder for longer than the wait).
bool StopTextureLoaders(int longestWait = 5000);

}  // namespace kelmo
