// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

namespace kelmo {

inline constexpr const char* kBubbleMaskGuid = "C2ACEAC8-2F94-48E7-82BA-A72A0B451EE9";
inline constexpr const char* kFineBubbleMaskGuid = "305E1AC6-A8A4-435F-9F40-ADCCEDBD3104";
inline constexpr const char* kBubbleTransitionGuid = "3A064398-D580-424F-A9B9-DEEE03A1972A";
inline constexpr const char* kFineBubbleTransitionGuid = "A099073B-63B5-4C01-BA79-DDA01C2BD1F9";

}  // namespace kelmo
