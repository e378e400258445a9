// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <memory>
#include <opencv2/core.hpp>
#include <vector>

#include "effects/beam/beam_eclosion_effect.h"
#include "effects/text/vector/text_geometry.h"
#include "effects/text/vector/text_scene.h"
#include "framework/filter/nle_opengl_filter.h"
#include "framework/filter/sub_filters.h"

namespace kelmo {

/// Solid letters, lit and moved: the host's text ("TextPath"), or the mask of the clip without one.
///
/// The mesh is built anew only for a new text or a new shape; a frame sends matrices and values and
/// draws, in a work picture, the object (slot 0: the clip, then the material), and for the glow the
/// same again with "is_boom" or "is_global_boom" 1. Stages put the result together: the glow source
/// lays the object over the clip, the blurs spread what glows, and the composers add it. Every
/// parameter goes to the glow source and to the shader by its name. Shader variants: groups 0 and 1
/// are the animations of entry and exit, chosen by "AnimationType" and "AnimationExitType".
///
/// The mesh is drawn without culling: the strips of its bevels wind the other way than its faces.
class NLEOpenGLVectorText3DEffect : public NLEOpenGLFilter {
public:
    explicit NLEOpenGLVectorText3DEffect(std::shared_ptr<NLEFilterInfo> filterInfo);

    int32_t Resize(int32_t newWidth, int32_t newHeight, int32_t newStride) override;
    int32_t InitEffect() override;
    int32_t InitParams() override;
    int32_t DoEffect(const FrameRecord& second, const FrameRecord& first, FrameRecord& out,
                     int32_t frameWidth, int32_t frameHeight, int32_t frameStride) override;

private:
    /// The frames and sizes of one call of `DoEffect`.
    struct Call {
        const FrameRecord& second;
        const FrameRecord& first;
        FrameRecord& out;
        int32_t width, height, stride;
    };

    void PrepareGeometry(const Call& call);
    void TakeHostObjects();
    TextSolid WantedSolid();
    void GiveMesh();
    void SendScene();
    void SendEnvironmentAngle();
    void BindMaterial(int32_t slot);
    /// Draws the mesh into the engine's picture; "is_boom" and its like say which pass this is.
    int32_t DrawObject();
    int32_t DrawGlowSource(const Call& call, const FrameRecord& object, FrameRecord& out);
    int32_t DrawPlain(const Call& call);
    /// Draws what glows and spreads it; `kept` is the target that takes the picture drawn before.
    FrameRecord DrawGlow(const Call& call, const char* pass, int32_t kept, const char* width,
                         const char* intensity, NLEOpenGLBeamEclosionEffect* blur);

    SubFilters stages{this};
    SubFilters blurs{this};
    NLEOpenGLFilter* glowSource;
    NLEOpenGLBeamEclosionEffect* boomBlur;
    NLEOpenGLBeamEclosionEffect* globalBoomBlur;
    NLEOpenGLFilter* compose;
    NLEOpenGLFilter* boomCompose;
    NLEOpenGLFilter* saberCompose;
    TextGeometry geometry;
    TextTransform transform;
    Matrix4 mvp = kIdentity;
    Matrix4 model = kIdentity;
    std::vector<int32_t> variants{0, 0};
    cv::Mat emptyPicture;
    bool materialIsUp = false;
    bool meshIsUp = false;
};

/// The same with bevels; what the catalogue's own texts are made of.
class NLEOpenGLVectorTextRoundBevel3DEffect : public NLEOpenGLVectorText3DEffect {
public:
    using NLEOpenGLVectorText3DEffect::NLEOpenGLVectorText3DEffect;
};

/// What the type "VectorText3D" makes.
class NLEOpenGLVectorText3DEdgeSaberEffect : public NLEOpenGLVectorTextRoundBevel3DEffect {
public:
    using NLEOpenGLVectorTextRoundBevel3DEffect::NLEOpenGLVectorTextRoundBevel3DEffect;
};

}  // namespace kelmo
