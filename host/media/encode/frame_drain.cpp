// SPDX-License-Identifier: GPL-3.0-or-later
#include "host/media/encode/frame_drain.h"

#include <algorithm>
#include <exception>
#include <thread>
#include <utility>

#include "host/media/common/bounded_queue.h"

namespace kelmo::host {

class FrameDrain::Impl {
public:
    Impl(Consume consume, size_t depth)
        : consume(std::move(consume)),
          waiting(depth),
          spare(depth + 2),
          worker([this] { Work(); }) {}

    ~Impl() { Cancel(); }

    void Put(Picture& picture) {
        if (!waiting.Push(std::move(picture))) {
            Join();
            Rethrow();
            return;  // put after Finish or Cancel: nobody is there to take it
        }
        picture = spare.TryPop().value_or(Picture());
    }

    void Finish() {
        waiting.Close();
        Join();
        Rethrow();
    }

    void Cancel() noexcept {
        waiting.Cancel();
        Join();
    }

private:
    void Work() {
        try {
            while (std::optional<Picture> picture = waiting.Pop()) {
                consume(*picture);
                spare.Push(std::move(*picture));
            }
        } catch (...) {
            error = std::current_exception();
            waiting.Cancel();
        }
        // A closed list of spares cannot make the last Push wait when nobody takes any more.
        spare.Cancel();
    }

    void Join() noexcept {
        if (worker.joinable()) worker.join();
    }

    void Rethrow() {
        if (error) std::rethrow_exception(std::exchange(error, nullptr));
    }

    Consume consume;
    BoundedQueue<Picture> waiting;
    // Has room for every buffer that can be on its way, so that giving one back never waits.
    BoundedQueue<Picture> spare;
    std::exception_ptr error;  // read only after the worker was joined
    std::thread worker;        // last: starts when all else is there
};

FrameDrain::FrameDrain(Consume consume, int depth)
    : impl(std::make_unique<Impl>(std::move(consume), static_cast<size_t>(std::max(depth, 1)))) {}

FrameDrain::~FrameDrain() = default;

void FrameDrain::Put(Picture& picture) {
    impl->Put(picture);
}

void FrameDrain::Finish() {
    impl->Finish();
}

void FrameDrain::Cancel() noexcept {
    impl->Cancel();
}

}  // namespace kelmo::host
