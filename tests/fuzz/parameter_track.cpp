// SPDX-License-Identifier: GPL-3.0-or-later
// A value of the command line, with keyframes or without: it is refused in a sentence, or stays in
// its parameter's range at every frame.
#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <string_view>

#include "host/session/host_error.h"
#include "host/session/parameter_track.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* bytes, std::size_t size) {
    using namespace kelmo::host;
    if (size == 0) return 0;
    constexpr int kKinds = static_cast<int>(ParameterKind::kGradient) + 1;
    constexpr int kFrames = 50;
    ParameterDescription parameter;
    parameter.name = "amount";
    parameter.kind = static_cast<ParameterKind>(bytes[0] % kKinds);
    parameter.min = -10;
    parameter.max = 100;
    try {
        const std::string_view text(reinterpret_cast<const char*>(bytes) + 1, size - 1);
        ParameterTrack track = ParameterTrack::Parse(parameter, text);
        track.Resolve({25, 1}, kFrames);
        for (int frame = 0; frame < kFrames && !parameter.IsText(); ++frame) {
            const double value = track.NumberAt(frame);
            if (!std::isfinite(value)) std::abort();
            if (parameter.HasRange() && (value < parameter.min || value > parameter.max)) {
                std::abort();
            }
        }
    } catch (const UsageError&) {
    }
    return 0;
}
