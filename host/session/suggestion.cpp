// SPDX-License-Identifier: GPL-3.0-or-later
#include "host/session/suggestion.h"

#include <algorithm>
#include <limits>

#include "host/session/text_values.h"

namespace kelmo::host {

int EditDistance(std::string_view first, std::string_view second) {
    const std::string a = LowerCase(first);
    const std::string b = LowerCase(second);
    // Three rows of the table: a swap of neighbours looks two rows back.
    std::vector<int> twoBack(b.size() + 1);
    std::vector<int> oneBack(b.size() + 1);
    std::vector<int> row(b.size() + 1);
    for (size_t j = 0; j <= b.size(); ++j) row[j] = static_cast<int>(j);
    for (size_t i = 1; i <= a.size(); ++i) {
        std::swap(twoBack, oneBack);
        std::swap(oneBack, row);
        row[0] = static_cast<int>(i);
        for (size_t j = 1; j <= b.size(); ++j) {
            const int replaced = oneBack[j - 1] + (a[i - 1] == b[j - 1] ? 0 : 1);
            row[j] = std::min({replaced, oneBack[j] + 1, row[j - 1] + 1});
            const bool swapped = i > 1 && j > 1 && a[i - 1] == b[j - 2] && a[i - 2] == b[j - 1];
            if (swapped) row[j] = std::min(row[j], twoBack[j - 2] + 1);
        }
    }
    return row[b.size()];
}

std::string NearestName(std::string_view word, const std::vector<std::string>& candidates) {
    std::string best;
    int bestDistance = std::numeric_limits<int>::max();
    for (const std::string& candidate : candidates) {
        const int distance = EditDistance(word, candidate);
        if (distance < bestDistance) {
            bestDistance = distance;
            best = candidate;
        }
    }
    const int allowed = std::max(1, static_cast<int>(word.size()) / 3);
    if (bestDistance <= allowed) return best;
    if (word.size() < 3) return {};
    const std::string lower = LowerCase(word);
    // The candidate that has the word nearest to its beginning.
    size_t bestPlace = std::string::npos;
    best.clear();
    for (const std::string& candidate : candidates) {
        const size_t place = LowerCase(candidate).find(lower);
        if (place < bestPlace) {
            bestPlace = place;
            best = candidate;
        }
    }
    return best;
}

std::string DidYouMean(std::string_view word, const std::vector<std::string>& candidates) {
    const std::string nearest = NearestName(word, candidates);
    return nearest.empty() ? std::string() : "; did you mean \"" + nearest + "\"?";
}

}  // namespace kelmo::host
