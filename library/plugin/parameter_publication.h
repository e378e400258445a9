// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>

#include "catalogue/nle_filter_info.h"
#include "contract/qor_host.h"

namespace kelmo {

/// Describes one parameter to the host by the operation of its type and its UI type. A combination
/// that no operation serves (an int with a list of masks, say) is left out.
void PublishParam(const NLEFilterParams& param, int32_t index, QorEffectRegistrar& registrar);

/// "density", "size" and "alpha", which every variant of the Astral family has at indices 0, 1, 2
/// whatever its description says.
void PublishAstralParams(QorEffectRegistrar& registrar);

}  // namespace kelmo
