// SPDX-License-Identifier: GPL-3.0-or-later
// Options of a network's own operations, from a model file: any bytes are read without leaving
// them.
#include "ai/runtime/flex_map.h"

#include <cstdlib>

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, std::size_t size) {
    const kelmo::FlexMap map(data, size);
    for (const char* key : {"a", "f", "l", "", "output_width", "subset_idxs"}) {
        const auto whole = map.Integer(key);
        if (whole && !map.Number(key)) std::abort();
        if (map.Integers(key).size() > size) std::abort();
    }
    return 0;
}
