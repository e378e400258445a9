// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "contract/param_value.h"
#include "contract/qor_host.h"

namespace kelmo {

/// Turns a host record into a value of our numbering. False, and `value` as it was, for a host type
/// that is not in the table. A text is copied whole into `text`, and its first 511 bytes into
/// `data`; a null text counts as empty. `value` may be used again and again: nothing of the value
/// before shines through.
bool ConvertHostValue(const QorValue& record, NLEParamValue& value);

}  // namespace kelmo
