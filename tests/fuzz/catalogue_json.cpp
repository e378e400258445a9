// SPDX-License-Identifier: GPL-3.0-or-later
// The catalogue file: an array of filters.
#include <cstddef>
#include <cstdint>
#include <nlohmann/json.hpp>
#include <string_view>

#include "catalogue/filter_catalogue.h"
#include "catalogue/json_reader.h"
#include "description_invariants.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* bytes, std::size_t size) {
    nlohmann::json entries;
    if (!kelmo::ParseJson({reinterpret_cast<const char*>(bytes), size}, entries)) {
        return 0;
    }
    kelmo::FilterCatalogue catalogue;
    for (const nlohmann::json& entry : entries) {
        catalogue.AddFilter(kelmo::ReadCatalogueEntry(entry, "/missing", {"fuzz", 0}));
    }
    for (const auto& info : catalogue.All()) {
        kelmo::fuzz::RequireSoundDescription(*info);
    }
    return 0;
}
