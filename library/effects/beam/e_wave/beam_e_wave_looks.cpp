// SPDX-License-Identifier: GPL-3.0-or-later
// The sliding rings. Those with names differ in the edge flow alone that draws them.
#include <utility>

#include "effects/beam/e_wave/beam_e_wave_effect.h"
#include "framework/filter/effect_registry.h"

namespace kelmo {
namespace {

struct Look {
    const char* className;
    const char* guid;
    const char* lookGuid;
};

constexpr Look kLooks[] = {
    {"NLEOpenGLBeamEWaveArcEffect", "FC1C9015-F4FB-1E0E-0B2D-39C7A9101356",
     "D0AF64B4-D133-4B73-B64D-AF3470F10E06"},
    {"NLEOpenGLBeamEWaveBurningEffect", "498E33A1-116F-B711-7332-74FD7236877D",
     "51F31FE6-4B01-6EE3-1FEA-F3819CFA27E6"},
    {"NLEOpenGLBeamEWaveCellularEffect", "E45F9210-00A7-2606-5062-623917154ADE",
     "DC701355-0655-CD4A-7065-D8AA346394E7"},
    {"NLEOpenGLBeamEWaveDefaultEffect", "5D3F4D52-DB6C-7CC0-8AF8-CBC7C37DEB1B",
     "8BA75A82-9A5A-3D05-B156-2155BC1E123E"},
    {"NLEOpenGLBeamEWaveEnergizeEffect", "F428F244-6303-564C-42EA-DC61825B5844",
     "A653EECF-24EF-988F-7029-345FD0E4A774"},
    {"NLEOpenGLBeamEWaveFireEffect", "BB5072D5-8691-4C01-D77E-65FEECC2C6AF",
     "66DD6E22-4209-F8FF-A312-B09CBAA94D4C"},
    {"NLEOpenGLBeamEWaveFireRandomEffect", "73163139-BF21-CB2A-4A60-4C8A04EFB1DF",
     "14ECBC85-F9E7-DB9A-3733-17EE8240A8D6"},
    {"NLEOpenGLBeamEWaveFogEffect", "1F8E6618-9127-EFDE-7C9E-3A950D037E34",
     "2964EE3E-BF3F-1AF9-6B56-147206F18197"},
};

std::unique_ptr<NLEOpenGLFilter> MakeWave(std::shared_ptr<NLEFilterInfo> info,
                                          const char* lookGuid) {
    return std::make_unique<NLEOpenGLBeamEWaveEffect>(std::move(info), lookGuid);
}

bool RegisterWaves() {
    for (const Look& look : kLooks) {
        const char* const lookGuid = look.lookGuid;
        RegisterEffect(look.className,
                       [lookGuid](std::shared_ptr<NLEFilterInfo> info, const char*) {
                           return MakeWave(std::move(info), lookGuid);
                       },
                       {look.guid});
    }
    return RegisterEffect("NLEOpenGLBeamEWaveEffect", MakeWave,
                          {"BeamEWave", "5222D6BB-D07E-68B3-AF6B-B365575AC683"});
}

const bool kRegistered = RegisterWaves();

}  // namespace
}  // namespace kelmo
