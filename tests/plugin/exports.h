// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "contract/qor_host.h"

/// The exports as the test program links them, without a shared library in between.
extern "C" {
int32_t StartupQor(kelmo::QorPluginHost* host, kelmo::QorPluginInfo* info);
int32_t ShutdownQor();
int32_t RegisterQorEffect(int32_t index, kelmo::QorEffectRegistrar* registrar);
int32_t RegisterQorEffectFromConfPath(const char* folder, kelmo::QorEffectRegistrar* registrar);
int32_t CreateQorEffect(const char* guid, int32_t deviceType, kelmo::QorEffect** effect);
int32_t ReleaseQorEffect(kelmo::QorEffect* effect);
}
