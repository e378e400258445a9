// SPDX-License-Identifier: GPL-3.0-or-later
#include "framework/textures/texture_frames.h"

#include <algorithm>
#include <chrono>
#include <cmath>
#include <thread>

#include "platform/host_access.h"

namespace kelmo {

namespace {

const cv::Mat& EmptyPicture() {
    static const cv::Mat empty;
    return empty;
}

const FrameList& EmptyList() {
    static const FrameList empty(0);
    return empty;
}

}  // namespace

FrameList::FrameList(std::size_t count) : elements(count), count(count) {}

const cv::Mat& FrameList::Frame(std::size_t index) const {
    if (index >= Count()) return EmptyPicture();
    const Element& element = elements[index];
    // Acquire: what the loader wrote to the picture before it said "stored" is seen here.
    const bool stored = element.state.load(std::memory_order_acquire) == State::kStored;
    return stored ? element.picture : EmptyPicture();
}

bool FrameList::IsSettled(std::size_t index) const {
    return index >= Count() ||
           elements[index].state.load(std::memory_order_acquire) != State::kPending;
}

void FrameList::Store(std::size_t index, cv::Mat picture) {
    if (index >= elements.size()) return;
    Element& element = elements[index];
    if (element.state.load(std::memory_order_relaxed) == State::kStored) return;
    element.picture = std::move(picture);
    element.state.store(State::kStored, std::memory_order_release);
}

void FrameList::MarkFailed(std::size_t index) {
    if (index >= elements.size()) return;
    State expected = State::kPending;
    elements[index].state.compare_exchange_strong(expected, State::kFailed);
}

void FrameList::FailPending() {
    for (std::size_t i = 0; i < elements.size(); ++i) MarkFailed(i);
}

void FrameList::Truncate(std::size_t newCount) {
    if (newCount < Count()) count.store(newCount, std::memory_order_release);
}

bool FrameList::ReserveBytes(std::size_t bytes, std::size_t limit) {
    const std::size_t before = reservedBytes.fetch_add(bytes);
    if (before <= limit && bytes <= limit - before) return true;
    reservedBytes.fetch_sub(bytes);
    return false;
}

TextureFrames::TextureFrames(std::size_t slotCount) : slots(slotCount) {}

std::shared_ptr<TextureFrames> TextureFrames::Create(std::size_t slots) {
    // The pointer in the deleter keeps the frames for the effect; loaders have pointers of their
    // own.
    auto frames = std::make_shared<TextureFrames>(slots);
    TextureFrames* const bare = frames.get();
    return {bare, [frames = std::move(frames)](TextureFrames*) mutable { frames.reset(); }};
}

const FrameList& TextureFrames::Slot(std::size_t slot) const {
    if (slot >= slots.size()) return EmptyList();
    const FrameList* const list = slots[slot].load(std::memory_order_acquire);
    return list == nullptr ? EmptyList() : *list;
}

FrameList& TextureFrames::Publish(std::size_t slot, std::unique_ptr<FrameList> list) {
    FrameList& published = *list;
    {
        const std::lock_guard<std::mutex> guard(listMutex);
        lists.push_back(std::move(list));
    }
    if (slot < slots.size()) slots[slot].store(&published, std::memory_order_release);
    return published;
}

FrameList& TextureFrames::Publish(std::size_t slot, std::size_t pendingFrames) {
    return Publish(slot, std::make_unique<FrameList>(pendingFrames));
}

void TextureFrames::FailPending(std::size_t slot) {
    if (slot >= slots.size()) return;
    FrameList* const list = slots[slot].load(std::memory_order_acquire);
    if (list != nullptr) list->FailPending();
}

std::size_t FramesThatFit(std::size_t bytesPerFrame, std::size_t limit) {
    // The element, the matrix header behind it and the allocator's share.
    constexpr std::size_t kElementBytes = 256;
    return std::max<std::size_t>(1, limit / (bytesPerFrame + kElementBytes));
}

std::size_t WrapFrameIndex(int64_t index, std::size_t frameCount) {
    if (frameCount == 0) return 0;
    const auto count = static_cast<int64_t>(frameCount);
    const int64_t remainder = index % count;
    return static_cast<std::size_t>(remainder < 0 ? remainder + count : remainder);
}

int64_t MaterialFrameCountAt(float seconds) {
    // The largest count that is far from the limits of the integer; an effect of that length would
    // run for a million years.
    constexpr float kLargest = 1e15F;
    const float count = seconds * kMaterialFrameRate;
    if (std::isnan(count)) return 0;
    return static_cast<int64_t>(std::clamp(count, -kLargest, kLargest));
}

int64_t MaterialFrameCountAt(int32_t position, float frameRate) {
    const float rate = frameRate > 0.0F ? frameRate : kMaterialFrameRate;
    return MaterialFrameCountAt(static_cast<float>(position) / rate);
}

std::size_t FrameIndexAt(int32_t position, float frameRate, std::size_t frameCount) {
    return WrapFrameIndex(MaterialFrameCountAt(position, frameRate), frameCount);
}

const cv::Mat& WaitForFrame(const TextureFrames& frames, std::size_t slot, int64_t index,
                            int longestWait) {
    constexpr int kNapMilliseconds = 10;
    for (int waited = 0;; waited += kNapMilliseconds) {
        const FrameList& list = frames.Slot(slot);
        const std::size_t count = list.Count();
        if (count == 0) return EmptyPicture();
        const std::size_t element = WrapFrameIndex(index, count);
        if (list.IsSettled(element) || list.IsWaitGivenUp()) return list.Frame(element);
        if (waited >= longestWait) {
            list.GiveUpWaiting();
            LogWarning("Texture %zu: no frame %zu after %d ms, going on without it", slot, element,
                       waited);
            return EmptyPicture();
        }
        LogInfo("WaitTexReaded");
        std::this_thread::sleep_for(std::chrono::milliseconds(kNapMilliseconds));
    }
}

}  // namespace kelmo
