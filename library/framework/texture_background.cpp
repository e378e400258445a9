// SPDX-License-Identifier: GPL-3.0-or-later
#include "framework/texture_background.h"

#include <atomic>
#include <chrono>
#include <condition_variable>
#include <exception>
#include <mutex>
#include <system_error>
#include <thread>
#include <utility>

#include "platform/host_access.h"

namespace kelmo {

namespace {

struct LoaderCount {
    std::mutex mutex;
    std::condition_variable gone;
    int running = 0;
    /// Rises with every wish to stop; a loader compares it with the value at its start.
    std::atomic<uint64_t> generation{0};
};

// Never destroyed: a loader that outlasts the wait at the end of the process still finds it.
LoaderCount& Loaders() {
    static LoaderCount* const loaders = new LoaderCount;
    return *loaders;
}

// OpenCV's libraries are loaded before this one and hence end after it: no loader is left in a
// decoder that is being torn down.
struct StopAtUnload {
    ~StopAtUnload() { StopTextureLoaders(); }
} stopAtUnload;

void RunGuarded(const std::function<void(const LoaderTicket&)>& task, const LoaderTicket& ticket) {
    try {
        task(ticket);
    } catch (const std::exception& error) {
        LogError("Texture loader: %s", error.what());
    } catch (...) {
        LogError("Texture loader: unknown exception");
    }
}

// Signals when the thread really ends, behind the last line of ours that it runs.
void SignOffAtThreadExit() {
    LoaderCount& loaders = Loaders();
    std::unique_lock<std::mutex> lock(loaders.mutex);
    --loaders.running;
    std::notify_all_at_thread_exit(loaders.gone, std::move(lock));
}

void SignOffNow() {
    LoaderCount& loaders = Loaders();
    const std::lock_guard<std::mutex> guard(loaders.mutex);
    --loaders.running;
    loaders.gone.notify_all();
}

}  // namespace

LoaderTicket::LoaderTicket(std::shared_ptr<TextureFrames> sharedFrames)
    : frames(std::move(sharedFrames)), startedIn(Loaders().generation.load()) {
    frames->loaderReferences.fetch_add(1);
}

LoaderTicket::~LoaderTicket() {
    frames->loaderReferences.fetch_sub(1);
}

bool LoaderTicket::ShouldStop() const {
    return Loaders().generation.load(std::memory_order_relaxed) != startedIn ||
           frames.use_count() <= frames->loaderReferences.load(std::memory_order_relaxed);
}

void StartTextureLoader(std::shared_ptr<TextureFrames> frames,
                        std::function<void(const LoaderTicket&)> task) {
    {
        const std::lock_guard<std::mutex> guard(Loaders().mutex);
        ++Loaders().running;
    }
    // One shared reference a loader, that of its ticket: `ShouldStop` counts on it.
    auto ticket = std::make_shared<LoaderTicket>(std::move(frames));
    try {
        std::thread([ticket, task]() mutable {
            RunGuarded(task, *ticket);
            ticket.reset();
            task = nullptr;
            SignOffAtThreadExit();
        }).detach();
    } catch (const std::system_error& error) {
        LogWarning("No thread for loading textures (%s): loading at once", error.what());
        RunGuarded(task, *ticket);
        SignOffNow();
    }
}

bool StopTextureLoaders(int longestWait) {
    LoaderCount& loaders = Loaders();
    loaders.generation.fetch_add(1);
    std::unique_lock<std::mutex> lock(loaders.mutex);
    return loaders.gone.wait_for(lock, std::chrono::milliseconds(longestWait),
                                 [&loaders] { return loaders.running == 0; });
}

}  // namespace kelmo
