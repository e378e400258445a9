// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <memory>

#include "contract/frame_record.h"
#include "contract/qor_host.h"
#include "framework/filter/nle_opengl_filter.h"
#include "plugin/parameter_sync.h"

namespace kelmo {

/// What the host holds for each effect on its timeline: turns the host's calls into calls on one
/// filter.
///
/// States: created, prepared (`PrepareResource` succeeded), released (no filter, and no way back).
/// Preparation that fails for want of an engine may be tried again; any other failure releases.
/// Frames and audio of the host are borrowed for a call, never copied. With an OpenGL device every
/// frame must come on the thread of `PrepareResource`. No lock; no exception leaves an operation.
class QorOpenglFilterEffect : public QorEffect {
public:
    explicit QorOpenglFilterEffect(std::shared_ptr<NLEFilterInfo> filterInfo);
    ~QorOpenglFilterEffect() override;

    /// 0, or 4 and nothing stored for an empty pointer.
    int32_t SetFilter(std::shared_ptr<NLEOpenGLFilter> newFilter);

    int32_t PrepareResource(QorRenderContext* context) override;
    int32_t Reserved1(QorRenderContext* context) override;
    int32_t SyncFrame(QorRenderContext* context) override;
    int32_t GLRender(QorRenderContext* context) override;
    int32_t GLRenderAlt(QorRenderContext* context) override;
    int32_t Reserved2(QorRenderContext* context) override;
    void ReleaseResource(QorRenderContext* context) override;
    int32_t Reserved3(QorRenderContext* context) override;
    int32_t Reserved4(QorRenderContext* context) override;

private:
    int32_t Prepare(QorRenderContext& context);
    void Sync(QorRenderContext& context);
    int32_t Render(QorRenderContext& context);
    void PassAiTransfer(QorRenderContext& context);
    void PassAudio(QorRenderContext& context);

    std::shared_ptr<NLEOpenGLFilter> filter;
    std::shared_ptr<NLEFilterInfo> info;
    bool prepared = false;
    /// Thread of `PrepareResource`, 0 before it; kept only with an OpenGL device.
    uint64_t renderThread = 0;
    ParameterSync parameterSync;
};

}  // namespace kelmo
