// SPDX-License-Identifier: GPL-3.0-or-later
#include "framework/textures/texture_background.h"

#include <algorithm>
#include <atomic>
#include <chrono>
#include <condition_variable>
#include <exception>
#include <iterator>
#include <list>
#include <mutex>
#include <thread>
#include <utility>

#include "platform/host_access.h"

namespace kelmo {

namespace {

struct Loader {
    std::thread thread;
    std::weak_ptr<TextureFrames> effectsShare;
    /// Nothing but the way out of the thread is left to run.
    bool done = false;
};

struct LoaderList {
    std::mutex mutex;
    std::condition_variable gone;
    /// Guarded, with all that is in it.
    std::list<Loader> loaders;
    /// Rises with every wish to stop; a loader compares it with the value at its start.
    std::atomic<uint64_t> generation{0};

    /// Takes out those that are done. Called with the mutex held; whoever gets them lets go of it
    /// and joins them.
    std::list<Loader> TakeDone() {
        std::list<Loader> taken;
        for (auto loader = loaders.begin(); loader != loaders.end();) {
            const auto next = std::next(loader);
            if (loader->done) taken.splice(taken.end(), loaders, loader);
            loader = next;
        }
        return taken;
    }
};

// Never destroyed: a loader that outlasts the wait at the end of the process still finds it.
LoaderList& Loaders() {
    static LoaderList* const loaders = new LoaderList;
    return *loaders;
}

/// Waits for the very end of threads that are done. A signal at thread exit would come earlier, and
/// never for a thread that ends while the process does.
void Join(std::list<Loader> done) {
    for (Loader& loader : done) loader.thread.join();
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

void SignOff(Loader& loader) {
    LoaderList& list = Loaders();
    const std::lock_guard<std::mutex> guard(list.mutex);
    loader.done = true;
    list.gone.notify_all();
}

}  // namespace

LoaderTicket::LoaderTicket(const std::shared_ptr<TextureFrames>& share)
    : frames(share->shared_from_this()),
      effectsShare(share),
      startedIn(Loaders().generation.load()) {}

bool LoaderTicket::ShouldStop() const {
    return Loaders().generation.load(std::memory_order_relaxed) != startedIn ||
           effectsShare.expired();
}

void StartTextureLoader(const std::shared_ptr<TextureFrames>& frames,
                        std::function<void(const LoaderTicket&)> task) {
    auto ticket = std::make_shared<LoaderTicket>(frames);
    std::list<Loader> started(1);
    Loader& loader = started.front();
    loader.effectsShare = frames;
    LoaderList& list = Loaders();
    std::unique_lock<std::mutex> lock(list.mutex);
    std::list<Loader> done = list.TakeDone();
    try {
        loader.thread = std::thread([ticket, task, &loader]() mutable {
            RunGuarded(task, *ticket);
            ticket.reset();
            task = nullptr;
            SignOff(loader);
        });
        list.loaders.splice(list.loaders.end(), started);
    } catch (const std::exception& error) {
        lock.unlock();
        LogWarning("No thread for loading textures (%s): loading at once", error.what());
        RunGuarded(task, *ticket);
    }
    if (lock) lock.unlock();
    Join(std::move(done));
}

namespace {

/// Waits until no listed loader is `awaited` any more.
template <typename Awaited>
bool WaitForEnds(int longestWait, Awaited awaited) {
    LoaderList& list = Loaders();
    std::unique_lock<std::mutex> lock(list.mutex);
    std::list<Loader> done;
    const bool all = list.gone.wait_for(lock, std::chrono::milliseconds(longestWait), [&] {
        done.splice(done.end(), list.TakeDone());
        return std::none_of(list.loaders.begin(), list.loaders.end(), awaited);
    });
    lock.unlock();
    Join(std::move(done));
    return all;
}

}  // namespace

bool WaitForOrphanedLoaders(int longestWait) {
    return WaitForEnds(longestWait,
                       [](const Loader& loader) { return loader.effectsShare.expired(); });
}

bool StopTextureLoaders(int longestWait) {
    Loaders().generation.fetch_add(1);
    return WaitForEnds(longestWait, [](const Loader&) { return true; });
}

}  // namespace kelmo
