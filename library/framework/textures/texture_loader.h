// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <opencv2/core/utility.hpp>
#include <string>
#include <vector>

#include "catalogue/nle_filter_info.h"
#include "catalogue/texture_path.h"
#include "framework/textures/texture_background.h"
#include "framework/textures/texture_frames.h"

/// Decodes the material of an effect: each texture slot of its description becomes a list of frames
/// in main memory, so that rendering does no file or decoder work.
///
/// Stills and ".astc" files are kept with their bottom row first; frames of a clip as the decoder
/// gives them, top row first. The pictures are as `texture_file.h` describes them. A file that
/// fails is logged by name and leaves its element empty; the rest goes on. Nothing here makes
/// `InitEffect` fail.
namespace kelmo {

/// The material step of `InitEffect`. A description without texture slots leaves `frames` and
/// `descs` alone; otherwise both are made anew. With `async`, sequences of two or more files and
/// clips are left to background threads: their slots start with pending elements (two for a clip,
/// whose length is not known yet).
void LoadTextures(const std::shared_ptr<const NLEFilterInfo>& info,
                  std::shared_ptr<TextureFrames>& frames,
                  std::shared_ptr<std::vector<TexDesc>>& descs, bool async);

/// Fills one slot, or starts the background thread that does. Decoded frames take at most
/// `limitBytes`; a sequence that is longer loops over what fits.
void LoadTextureSlot(const NLEFilterInfo& info, const std::shared_ptr<TextureFrames>& frames,
                     bool async, int32_t slotIndex, std::size_t limitBytes = kMaxSlotBytes);

/// Decodes one file of a sequence into its element. An element that has a picture stays.
void ReadTextureFrame(const std::string& fileName, FrameList& list, std::size_t frameIndex,
                      std::size_t limitBytes = kMaxSlotBytes);

/// The slots of a description, spread over OpenCV's threads.
class parallelInitTexInvoker : public cv::ParallelLoopBody {
public:
    parallelInitTexInvoker(std::shared_ptr<const NLEFilterInfo> info,
                           std::shared_ptr<TextureFrames> frames, bool async);
    void operator()(const cv::Range& slots) const override;

private:
    std::shared_ptr<const NLEFilterInfo> info;
    std::shared_ptr<TextureFrames> frames;
    bool async;
};

/// The files of one slot, spread over OpenCV's threads. Whoever runs it keeps names and list alive.
/// On a background thread (with a ticket) it ends early when nobody is left to see the frames.
class parallelReadImageInvoker : public cv::ParallelLoopBody {
public:
    parallelReadImageInvoker(const std::vector<std::string>& fileNames, FrameList& list,
                             const LoaderTicket* ticket, std::size_t limitBytes);
    void operator()(const cv::Range& files) const override;

private:
    const std::vector<std::string>& fileNames;
    FrameList& list;
    const LoaderTicket* ticket;
    std::size_t limitBytes;
};

}  // namespace kelmo
