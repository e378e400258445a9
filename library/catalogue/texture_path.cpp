// SPDX-License-Identifier: GPL-3.0-or-later
#include "catalogue/texture_path.h"

#include <algorithm>
#include <cstdio>

#include "catalogue/json_fields.h"

namespace kelmo {

std::vector<std::string> ExpandTexturePath(std::string_view path, bool* cut) {
    if (cut != nullptr) *cut = false;
    const std::size_t opening = path.find('[');
    const std::size_t closing = path.find(']');
    if (opening == std::string_view::npos || closing == std::string_view::npos ||
        closing < opening) {
        return {std::string(path)};
    }
    const std::string countText(path.substr(opening + 1, closing - opening - 1));
    const int wanted = DecimalText(countText);
    const int count = std::clamp(wanted, 0, kMaxSequenceLength);
    if (cut != nullptr) *cut = wanted > count;
    std::vector<std::string> files;
    files.reserve(static_cast<std::size_t>(count));
    for (int i = 0; i < count; ++i) {
        char number[16];
        std::snprintf(number, sizeof number, "%04d", i);
        files.push_back(
            std::string(path.substr(0, opening)).append(number).append(path.substr(closing + 1)));
    }
    return files;
}

}  // namespace kelmo
