// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <string>
#include <vector>

namespace kelmo::host {

/// Refuses what would destroy a file that is needed. A path may be a pattern of numbered pictures;
/// empty ones and "-" are passed over. Throws UsageError when an output is an input or another
/// output too, HostError when it is there already (of numbered pictures the first) and `overwrite`
/// is false. Pipes and character devices hold nothing that could be lost.
void CheckOutputs(const std::vector<std::string>& outputs, const std::vector<std::string>& inputs,
                  bool overwrite);

}  // namespace kelmo::host
