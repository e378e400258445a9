// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "framework/textures/texture_background.h"
#include "framework/textures/texture_frames.h"

namespace kelmo {

/// Decodes the clip `fileNames[0]` into a slot: BGRA, top row first, each frame of its own memory.
///
/// The list has as many elements as the file says it has frames (no more than fit into
/// `limitBytes`), and is published before the first is decoded; elements that the file then does
/// not deliver are marked as failed. A file that does not know its length is published once it is
/// decoded. A clip that does not open is logged and leaves one failed element.
/// `ticket` is that of a background thread, or null.
void ReadVideoFrames(const std::vector<std::string>& fileNames, TextureFrames& frames,
                     std::size_t slotIndex, const LoaderTicket* ticket = nullptr,
                     std::size_t limitBytes = kMaxSlotBytes);

}  // namespace kelmo
