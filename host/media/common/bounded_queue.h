// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <condition_variable>
#include <cstddef>
#include <deque>
#include <mutex>
#include <optional>
#include <utility>

namespace kelmo::host {

// A queue between two threads that holds a limited number of items. Close lets the reader empty it;
// Cancel drops what it holds and wakes both sides. Any thread may call anything.
template <typename Item>
class BoundedQueue {
public:
    explicit BoundedQueue(size_t capacity) : capacity(capacity) {}

    // Waits for room. False, and the item stays with the caller, once the queue is closed.
    bool Push(Item&& item) {
        std::unique_lock lock(mutex);
        roomAppeared.wait(lock, [this] { return closed || items.size() < capacity; });
        if (closed) return false;
        items.push_back(std::move(item));
        itemAppeared.notify_one();
        return true;
    }

    // Waits for an item. Nothing once the queue is closed and empty.
    std::optional<Item> Pop() {
        std::unique_lock lock(mutex);
        itemAppeared.wait(lock, [this] { return closed || !items.empty(); });
        return TakeFront();
    }

    // The next item if there is one now.
    std::optional<Item> TryPop() {
        std::unique_lock lock(mutex);
        return TakeFront();
    }

    void Close() {
        std::unique_lock lock(mutex);
        closed = true;
        itemAppeared.notify_all();
        roomAppeared.notify_all();
    }

    void Cancel() {
        std::unique_lock lock(mutex);
        closed = true;
        items.clear();
        itemAppeared.notify_all();
        roomAppeared.notify_all();
    }

private:
    std::optional<Item> TakeFront() {
        if (items.empty()) return std::nullopt;
        std::optional<Item> item(std::move(items.front()));
        items.pop_front();
        roomAppeared.notify_one();
        return item;
    }

    const size_t capacity;
    std::mutex mutex;
    std::condition_variable itemAppeared;
    std::condition_variable roomAppeared;
    std::deque<Item> items;
    bool closed = false;
};

}  // namespace kelmo::host
