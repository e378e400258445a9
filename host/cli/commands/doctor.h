// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <string>
#include <vector>

#include "host/cli/installation.h"

namespace kelmo::host {

enum class Health {
    kGood,
    kReduced,  ///< something optional is missing
    kBroken,   ///< nothing can be rendered
};
/// "ok", "missing", "broken".
const char* HealthName(Health health);

/// What was found out about one part.
struct Finding {
    std::string part;
    Health health = Health::kGood;
    std::string detail;
    std::string advice;  ///< empty when there is nothing to do
};

/// Looks at the plug-in, the material, both engines, OpenGL, the AI library and the codecs. Never
/// throws: what fails is a finding.
std::vector<Finding> Examine(const Installation& where);

}  // namespace kelmo::host
