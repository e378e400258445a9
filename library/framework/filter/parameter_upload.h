// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <memory>
#include <vector>

#include "catalogue/nle_filter_info.h"
#include "contract/engine.h"

/// From parameters to uniforms. A parameter's name is its uniform's name; no value is copied here.
namespace kelmo {

class NLEOpenGLFilter;

using FilterParamList = std::vector<std::shared_ptr<NLEFilterParams>>;

/// ParamType of the current value; that of the parameter as long as it has no value of its own.
int32_t CurrentType(const NLEFilterParams& param);
/// The current value as a number, 0 for texts and pointers. As an int, a fraction is cut and what
/// an int cannot hold becomes its nearest end.
float CurrentNumber(const NLEFilterParams& param);
int32_t CurrentInt(const NLEFilterParams& param);

/// Turns a number into the same number of another type, as above; a value that has that type
/// already, or none yet, is left as it is. False when one of the two is no number.
bool ConvertNumber(NLEParamValue& value, int32_t type);

/// Declares a uniform for each float and int.
void DeclareParams(NLEOpenGLEngineEffect& engine, const FilterParamList& params);
/// Sends a double (narrowed) or a float as a float, an int as an int; nothing for other types.
void UploadParam(NLEOpenGLEngineEffect& engine, const NLEFilterParams& param);
void UploadParams(NLEOpenGLEngineEffect& engine, const FilterParamList& params);

/// Gives every parameter of an owner to its sub-filter, with name, type and value.
void HandOverParams(const FilterParamList& params, NLEOpenGLFilter& subFilter);

}  // namespace kelmo
