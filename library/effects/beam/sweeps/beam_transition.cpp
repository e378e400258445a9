// SPDX-License-Identifier: GPL-3.0-or-later
#include "effects/beam/sweeps/beam_transition.h"

#include <utility>

#include "framework/filter/effect_registry.h"

namespace kelmo {
namespace {

const bool kRegistered =
    RegisterEffect("NLEOpenGLBeamTransition", MakeEffect<NLEOpenGLBeamTransition>,
                   {"B1ED40C2-6B49-4EF1-88AB-3F372DC962B5", "B0198593-30D5-4731-AEBB-B32D83AD9BC0",
                    "6B520ED1-7AB2-437C-AFE6-81F12EF6B16A", "321A7AB6-E382-4C1A-9A30-2984D5811B01",
                    "01742708-E582-442F-992D-1D6034EF5748", "7FB19DF2-2F39-4CFA-8593-06F63692A693",
                    "868ECCF9-F78B-4901-AC5B-96606DE40414", "05BBF871-6393-4A00-A34E-BA42C7DE28E0",
                    "6AAC15D0-6228-4536-8C79-39A5BCBC703A"});

/// Values that the lines take under their own names.
constexpr const char* kLineValues[] = {"uZoomStartNode", "uZoomEndNode", "uAlphaStartNode",
                                       "uAlphaEndNode"};

}  // namespace

NLEOpenGLBeamTransition::NLEOpenGLBeamTransition(std::shared_ptr<NLEFilterInfo> filterInfo)
    : BeamSweepEffect(std::move(filterInfo),
                      {{"B1ED40C2-6B49-4EF1-88AB-3F372DC962B5", SweepPath::kFromCentre},
                       {"B0198593-30D5-4731-AEBB-B32D83AD9BC0", SweepPath::kDiagonal},
                       {"6B520ED1-7AB2-437C-AFE6-81F12EF6B16A", SweepPath::kFromBottomLeft},
                       {"321A7AB6-E382-4C1A-9A30-2984D5811B01", SweepPath::kFromTopRight},
                       {"01742708-E582-442F-992D-1D6034EF5748", SweepPath::kFromBottomRight},
                       {"7FB19DF2-2F39-4CFA-8593-06F63692A693", SweepPath::kFromTopLeft},
                       {"868ECCF9-F78B-4901-AC5B-96606DE40414", SweepPath::kFromBottomLeftWithRest},
                       {"05BBF871-6393-4A00-A34E-BA42C7DE28E0", SweepPath::kCross},
                       {"6AAC15D0-6228-4536-8C79-39A5BCBC703A", SweepPath::kFan}}) {}

int32_t NLEOpenGLBeamTransition::InitParams() {
    engine->AddUniformFloat("iFrame", 0.0F);
    return BeamSweepEffect::InitParams();
}

void NLEOpenGLBeamTransition::SendOwn() {
    engine->SetUniformFloat("iFrame", static_cast<float>(position));
    float value = 0.0F;
    for (const char* name : kLineValues) {
        if (!Beam() || !FindFloat(name, value)) continue;
        Beam()->SetParam(name, kParamFloat, NLEParamValue::Float(value));
    }
}

}  // namespace kelmo
