// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <memory>

#include "catalogue/nle_filter_info.h"
#include "contract/qor_host.h"

/// How filters are described to the host.
namespace kelmo {

/// QorEffectFlags of a description.
uint32_t FilterFlags(const NLEFilterInfo& info, bool hasOpenGLDevice);

/// Describes one filter to the host, and adds it to the catalogue unless its GUID is known there.
void PublishFilter(const std::shared_ptr<NLEFilterInfo>& info, QorEffectRegistrar& registrar);

/// The filter at an index of the catalogue. 0, or 2 for a negative index, one behind the end, or a
/// null registrar.
int32_t PublishFilterAt(int32_t index, QorEffectRegistrar* registrar);

/// The first filter found below a folder; others there are dropped. 0, or 2 when there is none.
int32_t PublishFilterFromFolder(const char* folder, QorEffectRegistrar* registrar);

}  // namespace kelmo
