// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "host/session/effect_description.h"
#include "host/session/text_values.h"

namespace kelmo::host {

/// How a value gets from the keyframe before to this one, as a curve over the way between them.
enum class Easing {
    kLinear,
    kHold,       ///< stays until the keyframe, then jumps
    kEaseIn,     ///< starts slowly (cubic)
    kEaseOut,    ///< arrives slowly (cubic)
    kEaseInOut,  ///< both
};

/// 0..1 on the way to 0..1 of the change.
double Eased(Easing easing, double fraction);

/// The value of one parameter over the time of its effect.
///
/// Written as one value, or as keyframes `value@time[:easing]` between commas:
/// `0@0s,100@2s:ease-in-out`. Times count from the effect's first frame: seconds (`2s`, `500ms`, a
/// bare number), frames (`50f`) or a part of its length (`50%`, where 100 % is the last frame). The
/// easing says how the value arrives at its keyframe; without one, linearly. Before the first
/// keyframe its value holds, after the last likewise. Colours change channel by channel, switches,
/// places and list entries jump, whole numbers are rounded. Texts are one value and have no
/// keyframes: commas and @ are ordinary characters there.
class ParameterTrack {
public:
    /// Throws UsageError that names the parameter and its range.
    static ParameterTrack Parse(const ParameterDescription& parameter, std::string_view text);

    /// Turns times into frames; a track with keyframes must be resolved before it is asked. Throws
    /// UsageError when two keyframes fall on the same moment.
    void Resolve(FrameRate rate, int64_t frames);

    /// Value at a frame; a colour as 0xRRGGBB.
    double NumberAt(double frame) const;
    const std::string& Text() const { return text; }

    const ParameterDescription& Parameter() const { return parameter; }
    bool Animated() const { return keys.size() > 1; }

    struct Key {
        Moment moment;
        double frame = 0;
        double value = 0;
        Easing easing = Easing::kLinear;
    };
    const std::vector<Key>& Keys() const { return keys; }

private:
    explicit ParameterTrack(ParameterDescription description) : parameter(std::move(description)) {}

    void AddKey(std::string_view keyText);
    double ParseValue(std::string_view valueText) const;

    ParameterDescription parameter;
    std::vector<Key> keys;  // by frame once resolved
    std::string text;
};

/// Splits `name=value` and parses the value for the parameter of that name. Throws UsageError,
/// with the nearest name when there is no such parameter.
ParameterTrack ParseAssignment(const EffectDescription& effect, std::string_view assignment);

}  // namespace kelmo::host
