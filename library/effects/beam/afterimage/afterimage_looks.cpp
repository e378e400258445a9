// SPDX-License-Identifier: GPL-3.0-or-later
#include "effects/beam/afterimage/afterimage_looks.h"

#include <utility>

#include "framework/filter/effect_registry.h"

namespace kelmo {
namespace {

template <typename Look>
bool RegisterLook(const char* className, const char* guid) {
    return RegisterEffect(className, MakeEffect<Look>, {guid});
}

const bool kRegistered[] = {
    RegisterLook<NLEOpenGLBeamEdgeFlowAfterimageArcEffect>(
        "NLEOpenGLBeamEdgeFlowAfterimageArcEffect", "E8FEDA30-4CEF-A18C-A21E-6B717784FA49"),
    RegisterLook<NLEOpenGLBeamEdgeFlowAfterimageBurningEffect>(
        "NLEOpenGLBeamEdgeFlowAfterimageBurningEffect", "2C19EA70-2667-1A43-B71E-9674A61A0464"),
    RegisterLook<NLEOpenGLBeamEdgeFlowAfterimageCellularEffect>(
        "NLEOpenGLBeamEdgeFlowAfterimageCellularEffect", "526E7BF0-AF06-4B29-B8B3-F1C0C6FF2498"),
    RegisterLook<NLEOpenGLBeamEdgeFlowAfterimageDefaultEffect>(
        "NLEOpenGLBeamEdgeFlowAfterimageDefaultEffect", "2AA73AD1-C5B9-8BAF-EC0A-9A6E37882BB1"),
    RegisterLook<NLEOpenGLBeamEdgeFlowAfterimageEnergizeEffect>(
        "NLEOpenGLBeamEdgeFlowAfterimageEnergizeEffect", "D32CA8BC-053A-A758-478B-9807FF6AEC41"),
    RegisterLook<NLEOpenGLBeamEdgeFlowAfterimageFireEffect>(
        "NLEOpenGLBeamEdgeFlowAfterimageFireEffect", "FC2709BC-89C3-B916-F4E7-058F4304D3D4"),
    RegisterLook<NLEOpenGLBeamEdgeFlowAfterimageFireRandomEffect>(
        "NLEOpenGLBeamEdgeFlowAfterimageFireRandomEffect", "391FADE7-C57E-BA62-B9BE-715DFAAB3516"),
    RegisterLook<NLEOpenGLBeamEdgeFlowAfterimageFogEffect>(
        "NLEOpenGLBeamEdgeFlowAfterimageFogEffect", "18689208-3693-E2E9-4E71-C55B10999CD8"),
};

}  // namespace

NLEOpenGLBeamEdgeFlowAfterimageArcEffect::NLEOpenGLBeamEdgeFlowAfterimageArcEffect(
    std::shared_ptr<NLEFilterInfo> filterInfo)
    : NLEOpenGLBeamEdgeFlowAfterimageEffect(std::move(filterInfo),
                                            "D0AF64B4-D133-4B73-B64D-AF3470F10E06") {}

NLEOpenGLBeamEdgeFlowAfterimageBurningEffect::NLEOpenGLBeamEdgeFlowAfterimageBurningEffect(
    std::shared_ptr<NLEFilterInfo> filterInfo)
    : NLEOpenGLBeamEdgeFlowAfterimageEffect(std::move(filterInfo),
                                            "51F31FE6-4B01-6EE3-1FEA-F3819CFA27E6") {}

NLEOpenGLBeamEdgeFlowAfterimageCellularEffect::NLEOpenGLBeamEdgeFlowAfterimageCellularEffect(
    std::shared_ptr<NLEFilterInfo> filterInfo)
    : NLEOpenGLBeamEdgeFlowAfterimageEffect(std::move(filterInfo),
                                            "DC701355-0655-CD4A-7065-D8AA346394E7") {}

NLEOpenGLBeamEdgeFlowAfterimageDefaultEffect::NLEOpenGLBeamEdgeFlowAfterimageDefaultEffect(
    std::shared_ptr<NLEFilterInfo> filterInfo)
    : NLEOpenGLBeamEdgeFlowAfterimageEffect(std::move(filterInfo),
                                            "8BA75A82-9A5A-3D05-B156-2155BC1E123E") {}

NLEOpenGLBeamEdgeFlowAfterimageEnergizeEffect::NLEOpenGLBeamEdgeFlowAfterimageEnergizeEffect(
    std::shared_ptr<NLEFilterInfo> filterInfo)
    : NLEOpenGLBeamEdgeFlowAfterimageEffect(std::move(filterInfo),
                                            "A653EECF-24EF-988F-7029-345FD0E4A774") {}

NLEOpenGLBeamEdgeFlowAfterimageFireEffect::NLEOpenGLBeamEdgeFlowAfterimageFireEffect(
    std::shared_ptr<NLEFilterInfo> filterInfo)
    : NLEOpenGLBeamEdgeFlowAfterimageEffect(std::move(filterInfo),
                                            "66DD6E22-4209-F8FF-A312-B09CBAA94D4C") {}

NLEOpenGLBeamEdgeFlowAfterimageFireRandomEffect::NLEOpenGLBeamEdgeFlowAfterimageFireRandomEffect(
    std::shared_ptr<NLEFilterInfo> filterInfo)
    : NLEOpenGLBeamEdgeFlowAfterimageEffect(std::move(filterInfo),
                                            "14ECBC85-F9E7-DB9A-3733-17EE8240A8D6") {}

NLEOpenGLBeamEdgeFlowAfterimageFogEffect::NLEOpenGLBeamEdgeFlowAfterimageFogEffect(
    std::shared_ptr<NLEFilterInfo> filterInfo)
    : NLEOpenGLBeamEdgeFlowAfterimageEffect(std::move(filterInfo),
                                            "2964EE3E-BF3F-1AF9-6B56-147206F18197") {}

}  // namespace kelmo
