// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace kelmo::host {

/// Number of single-character insertions, removals, replacements and swaps of neighbours that turn
/// one word into the other, letter case apart (restricted Damerau-Levenshtein distance).
int EditDistance(std::string_view a, std::string_view b);

/// The candidate that somebody who typed `word` most likely meant, or an empty text when none is
/// close: at most a third of the letters wrong, or the word is a part of a candidate.
std::string NearestName(std::string_view word, const std::vector<std::string>& candidates);

/// `; did you mean "X"?`, or an empty text.
std::string DidYouMean(std::string_view word, const std::vector<std::string>& candidates);

}  // namespace kelmo::host
