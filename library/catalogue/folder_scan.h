// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "catalogue/nle_filter_info.h"

namespace kelmo {

/// Appends a description for each filter found in a folder (UTF-8) and below.
///
/// A folder yields one filter at most, after those of its sub-folders: its last file in name order
/// with ".conf" anywhere in its name, or, only without such a file, its last one with "filter.xml".
/// Entries are taken in the order of the bytes of their names. Pipes and devices are passed
/// over. Links to folders are followed, but each real folder is looked at once and 64 levels deep
/// at most, so that a circle of links ends. What cannot be listed adds nothing. Callable from any
/// thread.
void ScanFolder(const std::string& folder, std::vector<std::shared_ptr<NLEFilterInfo>>& found);

}  // namespace kelmo
