// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <memory>
#include <string>
#include <utility>

#include "catalogue/nle_filter_info.h"

namespace kelmo::test {

/// A description as the catalogue would make it; `openglPath` is "<guid>.frag".
inline std::shared_ptr<NLEFilterInfo> MakeInfo(const std::string& guid,
                                               const std::string& name = "a filter") {
    auto info = std::make_shared<NLEFilterInfo>();
    info->guid = guid;
    info->name = name;
    info->openglPath = guid + ".frag";
    info->hasOpengl = 1;
    return info;
}

/// Appends a parameter whose current value is its default.
inline NLEFilterParams& AddParam(NLEFilterInfo& info, const std::string& name,
                                 const NLEParamValue& def, NLEParamValue min = {},
                                 NLEParamValue max = {}, int32_t uiType = kUiPlain) {
    auto param = std::make_shared<NLEFilterParams>();
    param->name = name;
    param->alias = name;
    param->type = def.type;
    param->uiType = uiType;
    param->minValue = std::move(min);
    param->maxValue = std::move(max);
    param->defaultValue = def;
    param->SetValue(def);
    info.AddParam(info.paramCount++, param);
    return *param;
}

}  // namespace kelmo::test
