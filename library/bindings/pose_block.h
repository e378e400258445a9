// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstddef>
#include <cstdint>

#include "contract/ai_filter.h"

namespace kelmo {

/// A shorter block is no pose block.
inline constexpr std::size_t kMinPoseBlockSize = 100;

/// Reads the body points that a host computed (`ObjectAiDataTransfer::GetPoseBlock`) into `poses`,
/// which is emptied first; its memory is reused. Returns 0, or 1 when the block is too short.
///
/// The block is foreign: its counts are believed only as far as its bytes go. Persons that lie in
/// it whole are kept; the one that it cuts, and all behind, are dropped, and the result is still 0.
/// A point that was not found keeps its negative coordinates.
int32_t ParsePoseBlock(const uint8_t* bytes, std::size_t size, AIDATA::HumanPoseDatas& poses);

}  // namespace kelmo
