// SPDX-License-Identifier: GPL-3.0-or-later
#include "host/session/effect_session.h"

#include <algorithm>
#include <cmath>
#include <cstring>

#include <fmt/format.h>

#include "host/session/host_error.h"

namespace kelmo::host {

namespace {

/// Puts a number into the record in the type that is asked for; false for types that hold none.
bool PutNumber(double number, int32_t type, QorValue& value) {
    value = QorValue{};
    value.type = type;
    switch (type) {
        case kHostInt:
            value.i = static_cast<int32_t>(std::lround(number));
            return true;
        case kHostFloat:
            value.f = static_cast<float>(number);
            return true;
        case kHostDouble:
            value.d = number;
            return true;
        case kHostBool:
            value.b = number != 0 ? 1 : 0;
            return true;
        default:
            return false;
    }
}

}  // namespace

EffectSession::EffectSession(PluginLibrary& library, HostServices& hostServices,
                             const EffectDescription& effectDescription,
                             std::vector<ParameterTrack> parameterTracks,
                             const SessionFormat& sessionFormat)
    : services(hostServices),
      description(effectDescription),
      tracks(std::move(parameterTracks)),
      format(sessionFormat) {
    for (ParameterTrack& track : tracks) track.Resolve(format.rate, format.frames);
    for (const ParameterDescription& parameter : description.parameters) {
        // The last of several assignments counts.
        const auto given = std::find_if(tracks.rbegin(), tracks.rend(), [&](const auto& track) {
            return track.Parameter().name == parameter.name;
        });
        values.push_back({&parameter, given == tracks.rend() ? nullptr : &*given});
    }
    std::sort(values.begin(), values.end(),
              [](const Value& a, const Value& b) { return a.parameter->name < b.parameter->name; });

    services.ForgetError();
    effect = library.CreateEffect(description.guid, services.DeviceType());
    if (!effect) Fail("could not be created");
    if (effect->PrepareResource(&context) != kQorOk) Fail("could not be prepared");
}

EffectSession::~EffectSession() {
    if (effect) effect->ReleaseResource(&context);
}

void EffectSession::Fail(const std::string& what) const {
    const std::string reason = services.LastError();
    throw HostError(fmt::format("effect \"{}\" {}{}{}", description.name, what,
                                reason.empty() ? "" : ": ", reason));
}

bool EffectSession::Render(int64_t position, const FrameInputs& inputs) {
    services.ForgetError();
    context.position = static_cast<int32_t>(position);
    context.inputs = inputs;
    effect->SyncFrame(&context);
    const int32_t result = effect->GLRender(&context);
    context.inputs = FrameInputs{};
    if (result == kQorOk) return true;
    // An effect that went wrong has said so; one that has nothing to draw fails without a word.
    if (services.LastError().empty()) return false;
    Fail(fmt::format("failed at frame {}", position));
}

int32_t EffectSession::Context::GetDuration() {
    return static_cast<int32_t>(std::min<int64_t>(owner.format.frames, INT32_MAX));
}

void EffectSession::Context::GetFrameRate(int64_t* numerator, int64_t* denominator) {
    if (numerator != nullptr) *numerator = owner.format.rate.numerator;
    if (denominator != nullptr) *denominator = owner.format.rate.denominator;
}

QorFrame* EffectSession::Context::GetInputFrame(int32_t index) {
    if (index == 0) return inputs.first;
    return index == 1 ? inputs.second : nullptr;
}

int32_t EffectSession::Context::GetCustomData(const char* name, int32_t hostType, void* out,
                                              int32_t size) {
    if (name == nullptr || out == nullptr || hostType != kHostPointer) return kQorRefused;
    if (size < static_cast<int32_t>(sizeof(void*))) return kQorRefused;
    if (inputs.ai == nullptr || std::strcmp(name, kAiTransferParam) != 0) return kQorRefused;
    // A pointer to the contract's class, as the receiver casts it back.
    ObjectAiDataTransfer* transfer = inputs.ai;
    std::memcpy(out, &transfer, sizeof transfer);
    return kQorOk;
}

int32_t EffectSession::Context::GetParamValue(const char* name, int32_t at, QorValue* value) {
    if (name == nullptr || value == nullptr) return kQorRefused;
    const auto found =
        std::lower_bound(owner.values.begin(), owner.values.end(), name,
                         [](const Value& v, const char* key) { return v.parameter->name < key; });
    if (found == owner.values.end() || found->parameter->name != name) return kQorRefused;
    const ParameterDescription& parameter = *found->parameter;
    // Names that an effect asks for on its own come as pointers; the answer has its own type.
    const int32_t type = value->type == kHostPointer ? parameter.ValueType() : value->type;
    if (parameter.IsText()) {
        if (found->track == nullptr || type != kHostText) return kQorRefused;
        *value = QorValue{};
        value->type = kHostText;
        value->s = found->track->Text().c_str();
        return kQorOk;
    }
    const double number =
        found->track == nullptr ? parameter.def : found->track->NumberAt(static_cast<double>(at));
    return PutNumber(number, type, *value) ? kQorOk : kQorRefused;
}

}  // namespace kelmo::host
