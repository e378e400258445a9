// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "contract/qor_host.h"

namespace kelmo::host {

/// How a parameter was published, that is which operation of the registrar described it.
enum class ParameterKind {
    kFloat,
    kDouble,
    kPercent,  ///< a float that editors show multiplied by 100; given here as it is
    kInteger,
    kColor,
    kColorStart,
    kColorEnd,
    kCheckBox,
    kPalace,      ///< one of nine places of the frame, counted by row
    kListMosaic,  ///< index into the effect's own list of patterns
    kText,
    kListMask,  ///< path of a mask picture
    kGradient,  ///< text that describes a gradient of colours
};

/// Word for a kind as `info` prints it: "float", "color", "check box"...
const char* KindName(ParameterKind kind);

struct ParameterDescription {
    int32_t index = 0;
    std::string name;
    std::string display;
    ParameterKind kind = ParameterKind::kFloat;
    /// Range and default of numbers, in the effect's own unit; colours as 0xRRGGBB, switches 0 or
    /// 1. `min` not below `max` says that there is no range.
    double min = 0;
    double max = 0;
    double def = 0;
    std::string defaultText;
    bool visible = true;

    bool IsColor() const;
    bool IsText() const;
    /// Whole numbers: everything that travels as an integer, colours and switches too.
    bool IsWhole() const;
    bool HasRange() const { return !IsText() && !IsColor() && min < max; }
    /// HostType in which the value travels.
    int32_t ValueType() const;
};

enum class EffectType { kFilter, kTransition, kText };
/// "filter", "transition", "text".
const char* TypeName(EffectType type);

struct EffectDescription {
    std::string guid;
    std::string name;
    uint32_t flags = 0;    ///< QorEffectFlags
    int32_t textKind = 0;  ///< 0 no text, 1 the whole text at once, 2 character by character
    std::vector<ParameterDescription> parameters;

    EffectType Type() const;
    /// Stages of other effects say so in their names; alone they have little to show.
    bool IsPart() const { return name.find("(part of ") != std::string::npos; }
    bool WantsAudio() const { return (flags & kFlagAudio) != 0; }
    const ParameterDescription* Parameter(std::string_view parameterName) const;
};

}  // namespace kelmo::host
