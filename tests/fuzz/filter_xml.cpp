// SPDX-License-Identifier: GPL-3.0-or-later
// The older "filter.xml".
#include <cstddef>
#include <cstdint>

#include "catalogue/xml_reader.h"
#include "description_invariants.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* bytes, std::size_t size) {
    const auto info =
        kelmo::ReadFilterXml({reinterpret_cast<const char*>(bytes), size}, "/missing/", "fuzz");
    if (info != nullptr) {
        kelmo::fuzz::RequireSoundDescription(*info);
    }
    return 0;
}
