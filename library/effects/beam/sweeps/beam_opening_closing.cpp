// SPDX-License-Identifier: GPL-3.0-or-later
#include "effects/beam/sweeps/beam_opening_closing.h"

#include <algorithm>
#include <utility>

#include "framework/filter/effect_registry.h"

namespace kelmo {
namespace {

const bool kRegistered =
    RegisterEffect("NLEOpenGLBeamOpeningClosing", MakeEffect<NLEOpenGLBeamOpeningClosing>,
                   {"97A0104D-DCF9-4377-BB12-4802B837C537", "C6EDAB12-7CAC-4699-A4E5-EF3224E7A107",
                    "C802B9A4-D3EB-4913-B63C-DC580CF57B29", "5C5525AC-5700-4B6A-9C02-256917DF35B7",
                    "85656ED9-CC2C-4FA1-9F28-7A2198906D2F", "4369F941-30AF-4C95-85BD-4232CD3FBEE2",
                    "9623A6D9-249D-4325-904F-C7482D233E05", "8D0AB953-CC69-47C6-B045-AC96B59576BB",
                    "2B1B2459-A49D-4EC0-B7F9-5C508CB38F99"});

}  // namespace

NLEOpenGLBeamOpeningClosing::NLEOpenGLBeamOpeningClosing(std::shared_ptr<NLEFilterInfo> filterInfo)
    : BeamSweepEffect(std::move(filterInfo),
                      {{"97A0104D-DCF9-4377-BB12-4802B837C537", SweepPath::kFromCentre},
                       {"C6EDAB12-7CAC-4699-A4E5-EF3224E7A107", SweepPath::kDiagonal},
                       {"C802B9A4-D3EB-4913-B63C-DC580CF57B29", SweepPath::kFromBottomLeft},
                       {"5C5525AC-5700-4B6A-9C02-256917DF35B7", SweepPath::kFromTopRight},
                       {"85656ED9-CC2C-4FA1-9F28-7A2198906D2F", SweepPath::kFromBottomRight},
                       {"4369F941-30AF-4C95-85BD-4232CD3FBEE2", SweepPath::kFromTopLeft},
                       {"9623A6D9-249D-4325-904F-C7482D233E05", SweepPath::kFromBottomLeftWithRest},
                       {"8D0AB953-CC69-47C6-B045-AC96B59576BB", SweepPath::kCross},
                       {"2B1B2459-A49D-4EC0-B7F9-5C508CB38F99", SweepPath::kFan}}) {}

int32_t NLEOpenGLBeamOpeningClosing::InitParams() {
    engine->AddUniformInt("iFrame", 0);
    engine->AddUniformInt("totalFrames", 0);
    return BeamSweepEffect::InitParams();
}

float NLEOpenGLBeamOpeningClosing::PathFrames() {
    const auto clip = static_cast<float>(duration);
    const float wanted = GetFrameRate() * FloatOr("duration", 0.0F);
    // Also what is no number ends here.
    if (!(wanted > 0.0F)) return 0.0F;
    const float frames = wanted >= clip + 1.0F ? clip : wanted;
    return position <= static_cast<int32_t>(frames) ? frames : 0.0F;
}

void NLEOpenGLBeamOpeningClosing::SendOwn() {
    engine->SetUniformInt("iFrame", position);
    engine->SetUniformInt("totalFrames", duration);
    int32_t radius = 0;
    if (Eclosion() && FindInt("uEclosion", radius)) {
        Eclosion()->SetParam("uEclosion", kParamInt, NLEParamValue::Int(radius));
    }
    if (!Beam()) return;
    for (const char* name : {"uZoomStartNode", "uZoomEndNode", "uAlphaStartNode"}) {
        Beam()->SetParam(name, kParamFloat, NLEParamValue::Float(0.0F));
    }
    Beam()->SetParam("uAlphaEndNode", kParamFloat, NLEParamValue::Float(1.0F));
}

}  // namespace kelmo
