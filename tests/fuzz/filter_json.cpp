// SPDX-License-Identifier: GPL-3.0-or-later
// A filter's own file: one object.
#include <cstddef>
#include <cstdint>
#include <nlohmann/json.hpp>

#include "catalogue/json_reader.h"
#include "description_invariants.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* bytes, std::size_t size) {
    nlohmann::json object;
    kelmo::ParseJson({reinterpret_cast<const char*>(bytes), size}, object);
    if (const auto info = kelmo::ReadFilterJson(object, "/missing/", {"fuzz"})) {
        kelmo::fuzz::RequireSoundDescription(*info);
    }
    return 0;
}
