// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <nlohmann/json_fwd.hpp>
#include <string>
#include <vector>

#include "catalogue/filter_pass.h"

namespace kelmo {

/// The passes of a description, and what the filter's own shader reads after them. Without "READS"
/// a pass reads the pass in front of it, the first one the clip, and the filter's own shader the
/// clip and the last pass. A pass sees the pictures of this frame of those in front of it only, and
/// those of the frame before ("name@before") of all. Throws a DescriptionError that names the pass.
std::vector<FilterPass> ReadPasses(const nlohmann::json& object, const std::string& dataPath,
                                   bool transition, std::vector<PassInput>& ownReads);

}  // namespace kelmo
