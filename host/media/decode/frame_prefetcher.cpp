// SPDX-License-Identifier: GPL-3.0-or-later
#include "host/media/decode/frame_prefetcher.h"

#include <algorithm>
#include <exception>
#include <thread>
#include <utility>

#include "host/media/common/bounded_queue.h"

namespace kelmo::host {

class FramePrefetcher::Impl {
public:
    Impl(Produce produce, int64_t count, size_t depth)
        : produce(std::move(produce)), count(count), ready(depth), spare(depth + 2), worker([this] {
              Work();
          }) {}

    ~Impl() {
        ready.Cancel();
        spare.Cancel();
        worker.join();
    }

    bool Next(Picture& picture) {
        std::optional<Picture> next = ready.Pop();
        if (!next) {
            // The worker closed the queue after it stored the error, if there was one.
            if (error) std::rethrow_exception(std::exchange(error, nullptr));
            return false;
        }
        std::swap(picture, *next);
        spare.Push(std::move(*next));
        return true;
    }

private:
    void Work() {
        try {
            for (int64_t index = 0; count < 0 || index < count; ++index) {
                Picture picture = spare.TryPop().value_or(Picture());
                if (!produce(index, picture) || !ready.Push(std::move(picture))) break;
            }
        } catch (...) {
            error = std::current_exception();
        }
        ready.Close();
    }

    Produce produce;
    const int64_t count;
    BoundedQueue<Picture> ready;
    // Has room for every buffer that can be on its way, so that giving one back never waits.
    BoundedQueue<Picture> spare;
    std::exception_ptr error;
    std::thread worker;  // last: starts when all else is there
};

FramePrefetcher::FramePrefetcher(Produce produce, int64_t count, int depth)
    : impl(std::make_unique<Impl>(std::move(produce), count,
                                  static_cast<size_t>(std::max(depth, 1)))) {}

FramePrefetcher::~FramePrefetcher() = default;

bool FramePrefetcher::Next(Picture& picture) {
    return impl->Next(picture);
}

}  // namespace kelmo::host
