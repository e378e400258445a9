// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>

#include "contract/qor_host.h"

namespace kelmo {

/// Makes the effect of a GUID. With an OpenGL device only device type 2 is served, without only 0.
/// 0 and an object that the host gives back with `DestroyEffectObject`; 2 for a wrong device, an
/// unknown GUID, or a filter whose master description is missing. An effect object without filter,
/// when the factory gave none, refuses to be prepared.
int32_t CreateEffectObject(const char* guid, int32_t deviceType, QorEffect** effect);

/// Ends an effect of ours; anything else is left alone.
void DestroyEffectObject(QorEffect* effect);

/// Whether an effect of ours is still alive.
bool HasEffectObjects();

}  // namespace kelmo
