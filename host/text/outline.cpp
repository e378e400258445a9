// SPDX-License-Identifier: GPL-3.0-or-later
#include "host/text/outline.h"

#include <algorithm>

#include "contract/text_path.h"

namespace kelmo::host {

void Outline::Reverse(size_t first) {
    while (first < Size()) {
        const auto begin = types.begin() + static_cast<ptrdiff_t>(first);
        const auto end = std::find(begin + 1, types.end(), uint8_t(kTextMoveTo));
        const size_t last = static_cast<size_t>(end - types.begin());
        // A point now ends the segment that began behind it: the types stand in reverse order, too,
        // shifted by the move.
        std::reverse(begin + 1, end);
        std::reverse(xs.begin() + static_cast<ptrdiff_t>(first),
                     xs.begin() + static_cast<ptrdiff_t>(last));
        std::reverse(ys.begin() + static_cast<ptrdiff_t>(first),
                     ys.begin() + static_cast<ptrdiff_t>(last));
        first = last;
    }
}

}  // namespace kelmo::host
