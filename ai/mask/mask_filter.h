// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "ai/ai_filter.h"
#include "ai/runtime/model_store.h"

namespace kelmo {

/// The filter that writes a mask of all people, at the output's size, the same coverage in all four
/// channels. With `hasEdge` it takes the parameters "Edge Thickness" and "Edge Feather"
/// (`MaskEdge`), as floats, doubles or whole numbers. Null, with the reason in `error`, without its
/// networks.
std::unique_ptr<AiFilter> CreateMaskFilter(std::shared_ptr<ModelStore> store, bool hasEdge,
                                           std::string& error);

}  // namespace kelmo
