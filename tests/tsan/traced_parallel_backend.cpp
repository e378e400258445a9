// SPDX-License-Identifier: GPL-3.0-or-later
// cv::parallel_for_ on threads that ThreadSanitizer sees. OpenCV's own pool hands work over inside
// a library that is not instrumented: each hand-over would look like a race, and a true race of two
// bodies would drown among them. Linked into the programs of that run alone, at work before main().
#include <algorithm>
#include <atomic>
#include <memory>
#include <opencv2/core/parallel/parallel_backend.hpp>
#include <thread>
#include <vector>

namespace kelmo {
namespace {

thread_local int threadNumber = 0;

class TracedParallelBackend : public cv::parallel::ParallelForAPI {
public:
    void parallel_for(int tasks, FN_parallel_for_body_cb_t body, void* data) override {
        std::atomic<int> next = 0;
        const auto work = [&](int number) {
            threadNumber = number;
            for (int task = next++; task < tasks; task = next++) body(task, task + 1, data);
            threadNumber = 0;
        };
        std::vector<std::jthread> helpers;
        for (int number = 1; number < std::min<int>(threads, tasks); ++number)
            helpers.emplace_back(work, number);
        work(0);
    }

    int getThreadNum() const override { return threadNumber; }
    int getNumThreads() const override { return threads; }
    int setNumThreads(int count) override {
        const int before = threads;
        threads = count > 0 ? count : kThreads;
        return before;
    }
    const char* getName() const override { return "traced"; }

private:
    static constexpr int kThreads = 4;
    std::atomic<int> threads = kThreads;
};

const bool kInstalled = [] {
    cv::parallel::setParallelForBackend(std::make_shared<TracedParallelBackend>(), false);
    return true;
}();

}  // namespace
}  // namespace kelmo
