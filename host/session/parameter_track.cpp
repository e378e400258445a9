// SPDX-License-Identifier: GPL-3.0-or-later
#include "host/session/parameter_track.h"

#include <algorithm>
#include <cmath>
#include <iterator>

#include <fmt/format.h>

#include "host/session/host_error.h"
#include "host/session/suggestion.h"

namespace kelmo::host {

namespace {

struct EasingName {
    const char* name;
    Easing easing;
};
constexpr EasingName kEasings[] = {
    {"linear", Easing::kLinear},         {"hold", Easing::kHold},
    {"ease-in", Easing::kEaseIn},        {"ease-out", Easing::kEaseOut},
    {"ease-in-out", Easing::kEaseInOut},
};

std::vector<std::string> EasingNames() {
    std::vector<std::string> names;
    for (const EasingName& entry : kEasings) names.emplace_back(entry.name);
    return names;
}

double MixedColor(double from, double to, double fraction) {
    const int32_t a = static_cast<int32_t>(from);
    const int32_t b = static_cast<int32_t>(to);
    int32_t mixed = 0;
    for (int shift = 0; shift <= 16; shift += 8) {
        const double channelA = (a >> shift) & 0xFF;
        const double channelB = (b >> shift) & 0xFF;
        const double channel = channelA + (channelB - channelA) * fraction;
        mixed |= static_cast<int32_t>(std::lround(channel)) << shift;
    }
    return mixed;
}

/// Choices have nothing between them.
bool Jumps(ParameterKind kind) {
    return kind == ParameterKind::kCheckBox || kind == ParameterKind::kPalace ||
           kind == ParameterKind::kListMosaic;
}

}  // namespace

double Eased(Easing easing, double fraction) {
    const double rest = 1 - fraction;
    switch (easing) {
        case Easing::kHold:
            return fraction < 1 ? 0 : 1;
        case Easing::kEaseIn:
            return fraction * fraction * fraction;
        case Easing::kEaseOut:
            return 1 - rest * rest * rest;
        case Easing::kEaseInOut:
            return fraction < 0.5 ? 4 * fraction * fraction * fraction : 1 - 4 * rest * rest * rest;
        case Easing::kLinear:
            break;
    }
    return fraction;
}

double ParameterTrack::ParseValue(std::string_view valueText) const {
    const std::string_view trimmed = Trimmed(valueText);
    if (parameter.IsColor()) {
        const std::optional<int32_t> color = ParseColor(trimmed);
        if (color) return *color;
        throw UsageError(fmt::format(
            "parameter \"{}\": \"{}\" is no colour; write #RRGGBB, 0xRRGGBB or a name like red",
            parameter.name, trimmed));
    }
    if (parameter.kind == ParameterKind::kCheckBox) {
        const std::optional<bool> on = ParseSwitch(trimmed);
        if (on) return *on ? 1 : 0;
        throw UsageError(fmt::format("parameter \"{}\": \"{}\" is no switch; write on or off",
                                     parameter.name, trimmed));
    }
    const std::optional<double> number = ParseNumber(trimmed);
    if (!number) {
        throw UsageError(
            fmt::format("parameter \"{}\": \"{}\" is no number", parameter.name, trimmed));
    }
    if (parameter.HasRange() && (*number < parameter.min || *number > parameter.max)) {
        throw UsageError(fmt::format("parameter \"{}\": {} is out of range; it goes from {} to {}",
                                     parameter.name, trimmed, parameter.min, parameter.max));
    }
    const double largest = parameter.IsWhole() ? 2147483647.0 : 3.4e38;
    if (std::fabs(*number) > largest) {
        throw UsageError(fmt::format("parameter \"{}\": {} is too large", parameter.name, trimmed));
    }
    return *number;
}

void ParameterTrack::AddKey(std::string_view keyText) {
    const size_t at = keyText.rfind('@');
    if (at == std::string_view::npos) {
        throw UsageError(
            fmt::format("parameter \"{}\": \"{}\" has no time; write value@time, like 100@2s",
                        parameter.name, Trimmed(keyText)));
    }
    Key key;
    key.value = ParseValue(keyText.substr(0, at));
    std::string_view time = keyText.substr(at + 1);
    // A clock time has colons too: only a word behind the last one is an easing.
    const size_t colon = time.rfind(':');
    const std::string_view word =
        colon == std::string_view::npos ? std::string_view() : Trimmed(time.substr(colon + 1));
    if (!word.empty() && (word[0] < '0' || word[0] > '9')) {
        const auto found = std::find_if(std::begin(kEasings), std::end(kEasings),
                                        [&](const EasingName& e) { return word == e.name; });
        if (found == std::end(kEasings)) {
            throw UsageError(fmt::format("parameter \"{}\": unknown easing \"{}\"{}; there are {}",
                                         parameter.name, word, DidYouMean(word, EasingNames()),
                                         fmt::join(EasingNames(), ", ")));
        }
        key.easing = found->easing;
        time = time.substr(0, colon);
    }
    const std::optional<Moment> moment = ParseMoment(time);
    if (!moment) {
        throw UsageError(fmt::format("parameter \"{}\": \"{}\" is no time; write 2s, 50f or 50%",
                                     parameter.name, Trimmed(time)));
    }
    key.moment = *moment;
    keys.push_back(key);
}

ParameterTrack ParameterTrack::Parse(const ParameterDescription& parameter, std::string_view text) {
    ParameterTrack track(parameter);
    if (parameter.IsText()) {
        track.text = text;
    } else if (text.find('@') == std::string_view::npos) {
        Key key;
        key.value = track.ParseValue(text);
        track.keys.push_back(key);
    } else {
        for (const std::string_view keyText : SplitAt(text, ',')) track.AddKey(keyText);
    }
    return track;
}

void ParameterTrack::Resolve(FrameRate rate, int64_t frames) {
    for (Key& key : keys) key.frame = key.moment.InFrames(rate, frames);
    std::stable_sort(keys.begin(), keys.end(),
                     [](const Key& a, const Key& b) { return a.frame < b.frame; });
    const auto same = std::adjacent_find(
        keys.begin(), keys.end(), [](const Key& a, const Key& b) { return a.frame == b.frame; });
    if (same != keys.end()) {
        throw UsageError(fmt::format("parameter \"{}\": two keyframes at frame {:g}",
                                     parameter.name, same->frame));
    }
}

double ParameterTrack::NumberAt(double frame) const {
    if (keys.empty()) return 0;
    const auto next = std::upper_bound(keys.begin(), keys.end(), frame,
                                       [](double f, const Key& key) { return f < key.frame; });
    if (next == keys.begin()) return keys.front().value;
    const Key& from = *(next - 1);
    if (next == keys.end()) return from.value;
    const double way = (frame - from.frame) / (next->frame - from.frame);
    const double fraction = Eased(Jumps(parameter.kind) ? Easing::kHold : next->easing, way);
    if (parameter.IsColor()) return MixedColor(from.value, next->value, fraction);
    return from.value + (next->value - from.value) * fraction;
}

ParameterTrack ParseAssignment(const EffectDescription& effect, std::string_view assignment) {
    const size_t equals = assignment.find('=');
    if (equals == std::string_view::npos || equals == 0) {
        throw UsageError(
            fmt::format("parameter \"{}\": write name=value, like amount=50", assignment));
    }
    const std::string_view name = Trimmed(assignment.substr(0, equals));
    const ParameterDescription* parameter = effect.Parameter(name);
    if (parameter != nullptr) {
        return ParameterTrack::Parse(*parameter, assignment.substr(equals + 1));
    }
    std::vector<std::string> names;
    for (const ParameterDescription& known : effect.parameters) names.push_back(known.name);
    throw UsageError(
        fmt::format("effect \"{}\" has no parameter \"{}\"{} (`kelmo info {}` lists them)",
                    effect.name, name, DidYouMean(name, names), effect.guid));
}

}  // namespace kelmo::host
