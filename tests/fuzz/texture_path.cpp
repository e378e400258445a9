// SPDX-License-Identifier: GPL-3.0-or-later
// The path text of a texture slot.
#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>
#include <string_view>
#include <vector>

#include "catalogue/nle_filter_info.h"
#include "catalogue/texture_path.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* bytes, std::size_t size) {
    // The catalogue refuses longer ones.
    const std::string_view text(reinterpret_cast<const char*>(bytes),
                                std::min(size, kelmo::kMaxPathLength));
    const std::vector<std::string> files = kelmo::ExpandTexturePath(text);
    if (files.size() > static_cast<std::size_t>(kelmo::kMaxSequenceLength)) std::abort();
    const std::size_t opening = text.find('[');
    const bool sequence = opening != std::string_view::npos && text.find(']') > opening &&
                          text.find(']') != std::string_view::npos;
    if (!sequence && (files.size() != 1 || files[0] != text)) std::abort();
    if (!sequence) return 0;
    const std::string_view suffix = text.substr(text.find(']') + 1);
    for (const std::string& file : files) {
        if (!file.starts_with(text.substr(0, opening)) || !file.ends_with(suffix)) std::abort();
    }
    return 0;
}
