// SPDX-License-Identifier: GPL-3.0-or-later
#include "catalogue/filter_catalogue.h"

#include <nlohmann/json.hpp>
#include <utility>

#include "catalogue/folder_scan.h"
#include "catalogue/json_reader.h"

namespace kelmo {
namespace {

constexpr const char* kScannedFolders[] = {
    "/qor_effect/nle_default",
    "/qor_effect/plugin/CommonFx",
    "/qor_effect/plugin/Utility",
    "/qor_effect/Transition",
};

void ScanKnownFolders(FilterCatalogue& catalogue, const std::string& resourceFolder) {
    for (const char* const folder : kScannedFolders) {
        std::vector<std::shared_ptr<NLEFilterInfo>> found;
        ScanFolder(resourceFolder + folder, found);
        for (std::shared_ptr<NLEFilterInfo>& info : found) {
            catalogue.AddFilter(std::move(info));
        }
    }
}

}  // namespace

bool FilterCatalogue::AddFilter(std::shared_ptr<NLEFilterInfo> info) {
    if (info == nullptr) {
        return false;
    }
    const std::lock_guard guard(mutex);
    if (!byGuid.try_emplace(info->guid, info).second) {
        return false;
    }
    list.push_back(std::move(info));
    return true;
}

std::shared_ptr<NLEFilterInfo> FilterCatalogue::FindFilter(std::string_view guid) const {
    const std::lock_guard guard(mutex);
    const auto found = byGuid.find(guid);
    return found == byGuid.end() ? nullptr : found->second;
}

std::size_t FilterCatalogue::Count() const {
    const std::lock_guard guard(mutex);
    return list.size();
}

std::shared_ptr<NLEFilterInfo> FilterCatalogue::At(std::size_t index) const {
    const std::lock_guard guard(mutex);
    return index < list.size() ? list[index] : nullptr;
}

std::vector<std::shared_ptr<NLEFilterInfo>> FilterCatalogue::All() const {
    const std::lock_guard guard(mutex);
    return list;
}

FilterCatalogue& GetCatalogue() {
    // Never destroyed: effects on threads that outlive the static objects may still ask.
    static FilterCatalogue* const catalogue = new FilterCatalogue;
    return *catalogue;
}

void LoadCatalogueInto(FilterCatalogue& catalogue, const std::string& resourceFolder) {
    nlohmann::json entries;
    if (!LoadJsonFromPath(resourceFolder, entries)) {
        ScanKnownFolders(catalogue, resourceFolder);
        return;
    }
    const std::string source = CatalogueFile(resourceFolder);
    int32_t index = 0;
    for (const nlohmann::json& entry : entries) {
        catalogue.AddFilter(ReadCatalogueEntry(entry, resourceFolder, {source, index++}));
    }
}

void LoadCatalogue(const std::string& resourceFolder) {
    LoadCatalogueInto(GetCatalogue(), resourceFolder);
}

}  // namespace kelmo
