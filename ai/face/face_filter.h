// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "ai/ai_filter.h"
#include "ai/runtime/model_store.h"

namespace kelmo {

/// The filter that gives `HumanFaceInfoMultiDatas`: boxes round the faces' points, head angles,
/// landmarks (`FaceLandmarks`) as fractions of the frame, also outside of it where a face is cut,
/// and for each landmark how sure the network is of the face. Null, with the reason in `error`,
/// without its networks or the head's geometry.
std::unique_ptr<AiFilter> CreateFaceFilter(std::shared_ptr<ModelStore> store, std::string& error);

}  // namespace kelmo
