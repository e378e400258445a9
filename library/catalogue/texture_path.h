// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace kelmo {

/// Longest numbered sequence. A frame of 1 x 1 pixel for each would still fit into memory; a
/// mistyped count of a billion would not.
inline constexpr int kMaxSequenceLength = 100000;

/// The files that a texture slot's path text stands for.
///
/// "prefix[N]suffix" is a numbered sequence: prefix, the index 0..N-1 with at least four digits,
/// suffix. N is the number at the start of the text between the first "[" and the first "]"; below
/// 1 it gives no files, above kMaxSequenceLength that many. Without both brackets in this order the
/// text is the one file. `cut`, if given, says whether the text asks for more than there are.
std::vector<std::string> ExpandTexturePath(std::string_view path, bool* cut = nullptr);

}  // namespace kelmo
