// SPDX-License-Identifier: GPL-3.0-or-later
#include "framework/shared/multiply_table.h"

#include <algorithm>
#include <cmath>

namespace kelmo {

uint8_t multiplyTable[256 * 256];

namespace {

bool tableFilled = false;

// Stands in the file of the table, so that whoever links the table links its filling.
[[maybe_unused]] const bool filledOnLoad = (InitBlendTables(), true);

}  // namespace

void InitBlendTables() {
    if (tableFilled) return;
    for (int a = 0; a < 256; ++a) {
        for (int b = 0; b < 256; ++b) {
            multiplyTable[a * 256 + b] =
                static_cast<uint8_t>(std::min(std::rint(a * b / 255.0), 255.0));
        }
    }
    tableFilled = true;
}

}  // namespace kelmo
