// SPDX-License-Identifier: GPL-3.0-or-later
#include "framework/textures/texture_loader.h"

#include <exception>
#include <utility>

#include "framework/textures/texture_file.h"
#include "framework/textures/texture_video.h"
#include "platform/host_access.h"

namespace kelmo {

namespace {

/// What stands in for a clip until its length is known.
constexpr std::size_t kClipPlaceholders = 2;
/// From this length on the first picture of a sequence is decoded ahead of the others, so that the
/// number of pictures that fit is known. Shorter ones fit with 128 MiB for each, the size of an 8K
/// picture.
constexpr std::size_t kLookAheadLength = 16;

bool IsClip(const std::string& pathText, const std::vector<std::string>& fileNames) {
    return fileNames.size() == 1 && pathText.find(".mp4") != std::string::npos;
}

/// The way out after an exception of the parallel run: file by file, so that a file which throws
/// spoils itself alone.
void ReadOneByOne(const std::vector<std::string>& fileNames, FrameList& list,
                  const LoaderTicket* ticket, std::size_t limitBytes) {
    for (std::size_t i = 0; i < list.Count(); ++i) {
        if (ticket != nullptr && ticket->ShouldStop()) return;
        try {
            ReadTextureFrame(fileNames[i], list, i, limitBytes);
        } catch (const std::exception& error) {
            LogError("Load Texture Failed: %s", fileNames[i].c_str());
            LogError("%s", error.what());
            list.MarkFailed(i);
        }
    }
}

void CutToLimit(const std::vector<std::string>& fileNames, FrameList& list,
                std::size_t limitBytes) {
    if (fileNames.size() < kLookAheadLength) return;
    ReadTextureFrame(fileNames.front(), list, 0, limitBytes);
    const cv::Mat& first = list.Frame(0);
    const std::size_t fitting = FramesThatFit(first.total() * first.elemSize(), limitBytes);
    if (first.empty() || fitting >= fileNames.size()) return;
    LogWarning("The sequence %s has %zu pictures of %d x %d: only %zu fit into %zu MiB",
               fileNames.front().c_str(), fileNames.size(), first.cols, first.rows, fitting,
               limitBytes >> 20);
    list.Truncate(fitting);
}

void ReadSequence(const std::vector<std::string>& fileNames, FrameList& list,
                  const LoaderTicket* ticket, std::size_t limitBytes) {
    try {
        CutToLimit(fileNames, list, limitBytes);
        const parallelReadImageInvoker body(fileNames, list, ticket, limitBytes);
        cv::parallel_for_(cv::Range(0, static_cast<int>(list.Count())), body, cv::getNumThreads());
    } catch (const cv::Exception& error) {
        LogError(
            ticket == nullptr ? "parallelReadImageInvoker:%s" : "parallelReadImageInvoker task:%s",
            error.what());
        ReadOneByOne(fileNames, list, ticket, limitBytes);
    }
}

/// Runs a loader on a thread of its own. Whatever happens to it, nobody waits for its slot in vain.
template <typename Task>
void LoadInBackground(const std::shared_ptr<TextureFrames>& frames, std::size_t slot, Task task) {
    TextureFrames* const target = frames.get();
    StartTextureLoader(frames, [target, slot, task](const LoaderTicket& ticket) {
        struct FailRest {
            TextureFrames& frames;
            std::size_t slot;
            ~FailRest() { frames.FailPending(slot); }
        } const failRest{*target, slot};
        task(*target, ticket);
    });
}

void LoadClip(std::vector<std::string> fileNames, const std::shared_ptr<TextureFrames>& frames,
              std::size_t slot, bool async, std::size_t limitBytes) {
    if (!async) {
        ReadVideoFrames(fileNames, *frames, slot, nullptr, limitBytes);
        return;
    }
    frames->Publish(slot, kClipPlaceholders);
    LoadInBackground(frames, slot,
                     [fileNames = std::move(fileNames), slot, limitBytes](
                         TextureFrames& target, const LoaderTicket& ticket) {
                         ReadVideoFrames(fileNames, target, slot, &ticket, limitBytes);
                     });
}

void LoadPictures(std::vector<std::string> fileNames, const std::shared_ptr<TextureFrames>& frames,
                  std::size_t slot, bool async, std::size_t limitBytes) {
    FrameList& list = frames->Publish(slot, fileNames.size());
    if (!async || fileNames.size() < 2) {
        ReadSequence(fileNames, list, nullptr, limitBytes);
        return;
    }
    LoadInBackground(frames, slot,
                     [fileNames = std::move(fileNames), &list, limitBytes](
                         TextureFrames&, const LoaderTicket& ticket) {
                         ReadSequence(fileNames, list, &ticket, limitBytes);
                     });
}

}  // namespace

parallelReadImageInvoker::parallelReadImageInvoker(const std::vector<std::string>& fileNames,
                                                   FrameList& list, const LoaderTicket* ticket,
                                                   std::size_t limitBytes)
    : fileNames(fileNames), list(list), ticket(ticket), limitBytes(limitBytes) {}

void parallelReadImageInvoker::operator()(const cv::Range& files) const {
    for (int i = files.start; i < files.end; ++i) {
        if (ticket != nullptr && ticket->ShouldStop()) return;
        const auto index = static_cast<std::size_t>(i);
        ReadTextureFrame(fileNames[index], list, index, limitBytes);
    }
}

parallelInitTexInvoker::parallelInitTexInvoker(std::shared_ptr<const NLEFilterInfo> info,
                                               std::shared_ptr<TextureFrames> frames, bool async)
    : info(std::move(info)), frames(std::move(frames)), async(async) {}

void parallelInitTexInvoker::operator()(const cv::Range& slots) const {
    for (int slot = slots.start; slot < slots.end; ++slot) {
        LoadTextureSlot(*info, frames, async, slot);
    }
}

void ReadTextureFrame(const std::string& fileName, FrameList& list, std::size_t frameIndex,
                      std::size_t limitBytes) {
    if (!list.Frame(frameIndex).empty()) return;
    cv::Mat picture;
    if (list.IsFull() || !LoadTextureFile(fileName, picture)) {
        list.MarkFailed(frameIndex);
        return;
    }
    picture = ToMaterialLayout(picture);
    if (!list.ReserveBytes(picture.total() * picture.elemSize(), limitBytes)) {
        if (list.MarkFull()) {
            LogWarning(
                "The pictures of a slot need more than %zu MiB: %s and others of its %zu "
                "stay empty",
                limitBytes >> 20, fileName.c_str(), list.Count());
        }
        list.MarkFailed(frameIndex);
        return;
    }
    list.Store(frameIndex, std::move(picture));
}

void LoadTextureSlot(const NLEFilterInfo& info, const std::shared_ptr<TextureFrames>& frames,
                     bool async, int32_t slotIndex, std::size_t limitBytes) {
    const auto slot = static_cast<std::size_t>(slotIndex);
    const std::string pathText = info.GetTexture(slotIndex);
    bool cut = false;
    std::vector<std::string> fileNames = ExpandTexturePath(pathText, &cut);
    if (cut) {
        LogWarning("The sequence %s is cut at %d files", pathText.c_str(), kMaxSequenceLength);
    }
    if (IsClip(pathText, fileNames)) {
        LoadClip(std::move(fileNames), frames, slot, async, limitBytes);
    } else {
        LoadPictures(std::move(fileNames), frames, slot, async, limitBytes);
    }
}

namespace {

void LoadOneByOne(const NLEFilterInfo& info, const std::shared_ptr<TextureFrames>& frames,
                  bool async) {
    for (std::size_t slot = 0; slot < frames->SlotCount(); ++slot) {
        try {
            LoadTextureSlot(info, frames, async, static_cast<int32_t>(slot));
        } catch (const cv::Exception& error) {
            LogError("parallelInitTexInvoker:%s", error.what());
            frames->FailPending(slot);
        }
    }
}

}  // namespace

void LoadTextures(const std::shared_ptr<const NLEFilterInfo>& info,
                  std::shared_ptr<TextureFrames>& frames,
                  std::shared_ptr<std::vector<TexDesc>>& descs, bool async) {
    if (info->textureCount < 1) return;
    const auto count = static_cast<std::size_t>(info->textureCount);
    frames = TextureFrames::Create(count);
    descs = std::make_shared<std::vector<TexDesc>>(count);
    const cv::Range all(0, info->textureCount);
    try {
        const parallelInitTexInvoker body(info, frames, async);
        // A loop inside a parallel loop runs on one thread; with a single slot the threads are
        // worth more to the files of that slot.
        if (count == 1) {
            body(all);
        } else {
            cv::parallel_for_(all, body, cv::getNumThreads());
        }
    } catch (const cv::Exception& error) {
        LogError("parallelInitTexInvoker:%s", error.what());
        LoadOneByOne(*info, frames, async);
    }
}

}  // namespace kelmo
