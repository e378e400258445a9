// SPDX-License-Identifier: GPL-3.0-or-later
#include "framework/textures/texture_video.h"

#include <algorithm>
#include <cmath>
#include <memory>
#include <opencv2/imgproc.hpp>
#include <opencv2/videoio.hpp>
#include <utility>

#include "platform/host_access.h"

namespace kelmo {

namespace {

/// Elements of a clip that claims a length and decodes to nothing.
constexpr std::size_t kMaxEmptyFrames = 100000;

std::size_t BytesOf(const cv::Mat& picture) {
    return picture.total() * picture.elemSize();
}

/// One clip while it is being decoded.
class ClipReader {
public:
    ClipReader(const std::string& name, std::size_t limitBytes, const LoaderTicket* ticket)
        : name(name), limitBytes(limitBytes), ticket(ticket), capture(name, cv::CAP_ANY) {}

    bool IsOpen() const { return capture.isOpened(); }

    /// The number of frames that the file claims; 0 when it does not know.
    std::size_t ClaimedCount() const {
        const double count = capture.get(cv::CAP_PROP_FRAME_COUNT);
        if (!(count >= 1.0)) return 0;
        constexpr double kLargest = 1e12;
        return static_cast<std::size_t>(std::min(count, kLargest));
    }

    /// The next frame in memory of its own; empty at the end and when nobody waits for it.
    cv::Mat Next() {
        cv::Mat frame;
        if ((ticket != nullptr && ticket->ShouldStop()) || !capture.read(frame)) return {};
        cv::Mat picture;
        cv::cvtColor(frame, picture,
                     frame.channels() == 1 ? cv::COLOR_GRAY2BGRA : cv::COLOR_BGR2BGRA);
        return picture;
    }

    void ReportCut(std::size_t claimed, std::size_t kept, const cv::Mat& picture) const {
        LogWarning("The video %s has %zu frames of %d x %d: only %zu fit into %zu MiB",
                   name.c_str(), claimed, picture.cols, picture.rows, kept, limitBytes >> 20);
    }

    void ReportFull(const FrameList& list, std::size_t decoded) const {
        LogWarning("The video %s needs more than %zu MiB: %zu of %zu frames are decoded",
                   name.c_str(), limitBytes >> 20, decoded, list.Count());
    }

    /// Decodes into a list of a known length, from `picture` on.
    void Fill(FrameList& list, cv::Mat picture) {
        std::size_t index = 0;
        for (; index < list.Count() && !picture.empty(); ++index) {
            if (!list.ReserveBytes(BytesOf(picture), limitBytes)) {
                ReportFull(list, index);
                break;
            }
            list.Store(index, std::move(picture));
            picture = index + 1 < list.Count() ? Next() : cv::Mat();
        }
        list.FailPending();
    }

    /// Decodes a clip of unknown length.
    std::unique_ptr<FrameList> Collect(cv::Mat picture) {
        const std::size_t fitting = FramesThatFit(BytesOf(picture), limitBytes);
        std::vector<cv::Mat> pictures;
        for (; !picture.empty() && pictures.size() < fitting; picture = Next()) {
            pictures.push_back(std::move(picture));
        }
        if (!picture.empty()) {
            LogWarning("The video %s needs more than %zu MiB: its first %zu frames are decoded",
                       name.c_str(), limitBytes >> 20, pictures.size());
        }
        auto list = std::make_unique<FrameList>(pictures.size());
        for (std::size_t i = 0; i < pictures.size(); ++i) list->Store(i, std::move(pictures[i]));
        return list;
    }

private:
    const std::string& name;
    std::size_t limitBytes;
    const LoaderTicket* ticket;
    cv::VideoCapture capture;
};

}  // namespace

void ReadVideoFrames(const std::vector<std::string>& fileNames, TextureFrames& frames,
                     std::size_t slotIndex, const LoaderTicket* ticket, std::size_t limitBytes) {
    const std::string& name = fileNames.front();
    ClipReader clip(name, limitBytes, ticket);
    if (!clip.IsOpen()) {
        LogError("can not open the video:%s", name.c_str());
        frames.Publish(slotIndex, fileNames.size()).FailPending();
        return;
    }
    const std::size_t claimed = clip.ClaimedCount();
    // The first frame tells the size that the memory limit is worked out from.
    cv::Mat first = clip.Next();
    if (ticket != nullptr && ticket->ShouldStop()) return;
    if (claimed == 0) {
        frames.Publish(slotIndex, clip.Collect(std::move(first)));
        return;
    }
    if (first.empty()) {
        LogError("The video %s has no frame that can be decoded", name.c_str());
        frames.Publish(slotIndex, std::min(claimed, kMaxEmptyFrames)).FailPending();
        return;
    }
    const std::size_t kept = std::min(claimed, FramesThatFit(BytesOf(first), limitBytes));
    if (kept < claimed) clip.ReportCut(claimed, kept, first);
    FrameList& list = frames.Publish(slotIndex, kept);
    clip.Fill(list, std::move(first));
}

}  // namespace kelmo
