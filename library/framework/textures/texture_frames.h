// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <atomic>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <mutex>
#include <opencv2/core.hpp>
#include <vector>

namespace kelmo {

/// Two words per texture slot that go to the engine with each upload.
struct TexDesc {
    int32_t word0 = 0;
    int32_t word1 = 0;
};

/// The decoded frames of one texture slot, in playing order.
///
/// Each element is pending until its loader stores a picture or says that none will come. A stored
/// picture never changes again. One loader writes an element, any thread reads it, without a lock.
class FrameList {
public:
    explicit FrameList(std::size_t count);

    std::size_t Count() const { return count.load(std::memory_order_acquire); }
    /// The picture, or an empty one while it is pending, when it failed, and beyond the end. The
    /// reference lives as long as the `TextureFrames` that holds the list.
    const cv::Mat& Frame(std::size_t index) const;
    /// True as soon as nothing more is to be expected of an element: stored, failed, or no such.
    bool IsSettled(std::size_t index) const;

    /// Both leave an element that holds a picture as it is.
    void Store(std::size_t index, cv::Mat picture);
    void MarkFailed(std::size_t index);
    /// Marks every pending element, so that nobody waits for it.
    void FailPending();
    /// Shortens the list; it never grows.
    void Truncate(std::size_t newCount);
    /// Counts memory for a picture; false, and nothing counted, when the list would then hold more
    /// than `limit`.
    bool ReserveBytes(std::size_t bytes, std::size_t limit);
    /// Remembers that a picture found no room. True for the first caller, who reports it.
    bool MarkFull() { return !full.exchange(true); }
    bool IsFull() const { return full.load(std::memory_order_relaxed); }

    /// Remembers that a wait for one of the elements ran into its bound: later ones end at once.
    void GiveUpWaiting() const { waitGivenUp.store(true, std::memory_order_relaxed); }
    bool IsWaitGivenUp() const { return waitGivenUp.load(std::memory_order_relaxed); }

private:
    enum class State : uint8_t { kPending, kStored, kFailed };
    struct Element {
        std::atomic<State> state{State::kPending};
        cv::Mat picture;
    };

    // The elements stay where they are for the life of the list; only the count is cut.
    std::vector<Element> elements;
    std::atomic<std::size_t> count;
    std::atomic<std::size_t> reservedBytes{0};
    std::atomic<bool> full{false};
    mutable std::atomic<bool> waitGivenUp{false};
};

/// The decoded material of one effect: a `FrameList` for each texture slot.
///
/// Held by shared_ptr, so that a background loader keeps it alive after its effect is gone. The
/// number of slots is fixed. A slot's list is published as a whole: a reader sees the list before
/// or the list after, never one that is being resized, and lists that were replaced live on until
/// the object goes, so that references into them stay good. Reading takes no lock and allocates
/// nothing.
class TextureFrames : public std::enable_shared_from_this<TextureFrames> {
public:
    explicit TextureFrames(std::size_t slots);
    /// For an effect: background loaders keep the frames alive beside what is returned here, and
    /// stop when its last copy is gone.
    static std::shared_ptr<TextureFrames> Create(std::size_t slots);
    TextureFrames(const TextureFrames&) = delete;
    TextureFrames& operator=(const TextureFrames&) = delete;

    std::size_t SlotCount() const { return slots.size(); }
    /// The present list; an empty one for a slot that has none (yet).
    const FrameList& Slot(std::size_t slot) const;
    std::size_t FrameCount(std::size_t slot) const { return Slot(slot).Count(); }
    /// Empty whenever there is no such picture. Code that works out `index` from a count takes both
    /// from one `Slot`.
    const cv::Mat& Frame(std::size_t slot, std::size_t index) const {
        return Slot(slot).Frame(index);
    }

    /// Makes `list` the frames of a slot. The loader goes on writing to what is returned.
    FrameList& Publish(std::size_t slot, std::unique_ptr<FrameList> list);
    FrameList& Publish(std::size_t slot, std::size_t pendingFrames);
    /// Marks what is pending in the present list of a slot. For the loader of that slot.
    void FailPending(std::size_t slot);

private:
    std::vector<std::atomic<FrameList*>> slots;
    std::mutex listMutex;
    std::vector<std::unique_ptr<FrameList>> lists;
};

/// Decoded frames of one slot take at most this many bytes. What goes beyond is not decoded, and a
/// log line names the file: 2 GiB are 258 frames of 1920 x 1080, more than ten seconds.
inline constexpr std::size_t kMaxSlotBytes = std::size_t{2} << 30;
/// How many frames of a size fit into the limit of a slot, with what an element costs beside its
/// pixels; at least 1.
std::size_t FramesThatFit(std::size_t bytesPerFrame, std::size_t limit = kMaxSlotBytes);

/// Material plays at this rate, in frames a second, whatever the rate of the project.
inline constexpr float kMaterialFrameRate = 25.0F;

/// The frame that a running count stands for in a loop of `frameCount`; counts below 0 go backwards
/// from the end. 0 for an empty list.
std::size_t WrapFrameIndex(int64_t index, std::size_t frameCount);
/// The running count of material frames at a moment in seconds: the integer part of seconds * 25.
int64_t MaterialFrameCountAt(float seconds);
/// The same at `position` frames of a project with `frameRate` frames a second; a rate that is not
/// above 0 counts as 25.
int64_t MaterialFrameCountAt(int32_t position, float frameRate);
/// Both steps: which of `frameCount` frames shows at `position`.
std::size_t FrameIndexAt(int32_t position, float frameRate, std::size_t frameCount);

/// Longest wait for one frame, in milliseconds.
inline constexpr int kLongestFrameWait = 30000;

/// The frame that effects with background loading need now. While its element is pending this logs
/// "WaitTexReaded", sleeps 10 ms and looks again; `index` is a running count that wraps around
/// whatever list is there at that moment. Returns an empty picture at once for a failed element or
/// a slot without frames, and after `longestWait` milliseconds; from then on nothing waits for that
/// list.
///
/// A lone picture of at most 2 x 2 pixels comes back like any other: whoever treats it as "no
/// material" tells it by its size.
const cv::Mat& WaitForFrame(const TextureFrames& frames, std::size_t slot, int64_t index,
                            int longestWait = kLongestFrameWait);

}  // namespace kelmo
