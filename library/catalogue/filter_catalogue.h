// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstddef>
#include <functional>
#include <map>
#include <memory>
#include <mutex>
#include <string>
#include <string_view>
#include <vector>

#include "catalogue/nle_filter_info.h"

namespace kelmo {

/// Every filter on offer, in the order in which the host registers them. Descriptions are added and
/// never removed, so that an index stays valid for the life of the library.
///
/// Callable from any thread: one mutex guards both containers for the whole of each operation.
class FilterCatalogue {
public:
    /// Adds a description; when its GUID is known already the first one stays and this one is
    /// dropped. Returns whether it was added. Empty pointers are ignored.
    bool AddFilter(std::shared_ptr<NLEFilterInfo> info);
    /// Empty when the GUID is not known. The match is exact.
    std::shared_ptr<NLEFilterInfo> FindFilter(std::string_view guid) const;

    std::size_t Count() const;
    /// In order of first addition; empty outside 0..Count() - 1.
    std::shared_ptr<NLEFilterInfo> At(std::size_t index) const;
    /// Copy of the whole list.
    std::vector<std::shared_ptr<NLEFilterInfo>> All() const;

private:
    mutable std::mutex mutex;
    std::map<std::string, std::shared_ptr<NLEFilterInfo>, std::less<>> byGuid;
    std::vector<std::shared_ptr<NLEFilterInfo>> list;
};

/// The catalogue of the process, made on first use.
FilterCatalogue& GetCatalogue();

/// Fills the catalogue of the process from the host's resource folder (UTF-8, no separator at its
/// end). Called once, at start-up, on the thread of the host.
///
/// `<folder>/qor_effect/material/OpenGLFilter.conf` holds the whole catalogue. Only when it is
/// missing or broken are the folders "nle_default", "plugin/CommonFx", "plugin/Utility" and
/// "Transition" below "qor_effect" scanned, in this order.
///
/// Before this call the caller has installed the creation of sub-filters and loaded the AI filter
/// library; neither is this room's business.
void LoadCatalogue(const std::string& resourceFolder);

/// The same into a catalogue of the caller.
void LoadCatalogueInto(FilterCatalogue& catalogue, const std::string& resourceFolder);

}  // namespace kelmo
