// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <memory>

#include "effects/beam/afterimage/beam_edge_flow_afterimage_effect.h"

namespace kelmo {

/// The afterimage of one look of the edge flow each.
class NLEOpenGLBeamEdgeFlowAfterimageArcEffect : public NLEOpenGLBeamEdgeFlowAfterimageEffect {
public:
    explicit NLEOpenGLBeamEdgeFlowAfterimageArcEffect(std::shared_ptr<NLEFilterInfo> filterInfo);
};

class NLEOpenGLBeamEdgeFlowAfterimageBurningEffect : public NLEOpenGLBeamEdgeFlowAfterimageEffect {
public:
    explicit NLEOpenGLBeamEdgeFlowAfterimageBurningEffect(
        std::shared_ptr<NLEFilterInfo> filterInfo);
};

class NLEOpenGLBeamEdgeFlowAfterimageCellularEffect : public NLEOpenGLBeamEdgeFlowAfterimageEffect {
public:
    explicit NLEOpenGLBeamEdgeFlowAfterimageCellularEffect(
        std::shared_ptr<NLEFilterInfo> filterInfo);
};

class NLEOpenGLBeamEdgeFlowAfterimageDefaultEffect : public NLEOpenGLBeamEdgeFlowAfterimageEffect {
public:
    explicit NLEOpenGLBeamEdgeFlowAfterimageDefaultEffect(
        std::shared_ptr<NLEFilterInfo> filterInfo);
};

class NLEOpenGLBeamEdgeFlowAfterimageEnergizeEffect : public NLEOpenGLBeamEdgeFlowAfterimageEffect {
public:
    explicit NLEOpenGLBeamEdgeFlowAfterimageEnergizeEffect(
        std::shared_ptr<NLEFilterInfo> filterInfo);
};

class NLEOpenGLBeamEdgeFlowAfterimageFireEffect : public NLEOpenGLBeamEdgeFlowAfterimageEffect {
public:
    explicit NLEOpenGLBeamEdgeFlowAfterimageFireEffect(std::shared_ptr<NLEFilterInfo> filterInfo);
};

class NLEOpenGLBeamEdgeFlowAfterimageFireRandomEffect
    : public NLEOpenGLBeamEdgeFlowAfterimageEffect {
public:
    explicit NLEOpenGLBeamEdgeFlowAfterimageFireRandomEffect(
        std::shared_ptr<NLEFilterInfo> filterInfo);
};

class NLEOpenGLBeamEdgeFlowAfterimageFogEffect : public NLEOpenGLBeamEdgeFlowAfterimageEffect {
public:
    explicit NLEOpenGLBeamEdgeFlowAfterimageFogEffect(std::shared_ptr<NLEFilterInfo> filterInfo);
};

}  // namespace kelmo
