// SPDX-License-Identifier: GPL-3.0-or-later
#include "plugin/qor_opengl_filter_effect.h"

#include <algorithm>
#include <utility>

#include "contract/ai_transfer.h"
#include "framework/engine/effect_engine.h"
#include "framework/filter/filter_guids.h"
#include "platform/gl_entry_points.h"
#include "platform/host_access.h"
#include "platform/thread_id.h"
#include "plugin/boundary.h"
#include "plugin/corner_pin_step.h"
#include "plugin/host_frames.h"

namespace kelmo {

QorOpenglFilterEffect::QorOpenglFilterEffect(std::shared_ptr<NLEFilterInfo> filterInfo)
    : info(std::move(filterInfo)) {}

QorOpenglFilterEffect::~QorOpenglFilterEffect() = default;

int32_t QorOpenglFilterEffect::SetFilter(std::shared_ptr<NLEOpenGLFilter> newFilter) {
    if (!newFilter) return kQorEffectFailed;
    filter = std::move(newFilter);
    return kQorOk;
}

// ---------------------------------------------------------------------------------------------
// Preparation
// ---------------------------------------------------------------------------------------------

int32_t QorOpenglFilterEffect::PrepareResource(QorRenderContext* context) {
    if (!filter || !context) return kQorEffectFailed;
    return AtBoundary("PrepareResource", kQorEffectFailed, [&] { return Prepare(*context); });
}

int32_t QorOpenglFilterEffect::Prepare(QorRenderContext& context) {
    context.SetNeedCpuFrame(filter->NeedsCpuFrame());
    if (HasOpenGLDevice()) {
        LoadGLEntryPoints();
        renderThread = CurrentThreadId();
    }
    if (prepared) {
        LogError("PrepareResource:multiple initialization");
        return kQorEffectFailed;
    }
    const int32_t result = AtBoundary("InitEffect", static_cast<int32_t>(kFilterFailed),
                                      [&] { return filter->InitEffect(); });
    if (result == kFilterOk) {
        prepared = true;
        return kQorOk;
    }
    if (result != kFilterNoEngine) ReleaseResource(&context);
    return kQorEffectFailed;
}

void QorOpenglFilterEffect::ReleaseResource(QorRenderContext*) {
    if (!filter) return;
    filter.reset();
    prepared = false;
}

// ---------------------------------------------------------------------------------------------
// One frame
// ---------------------------------------------------------------------------------------------

int32_t QorOpenglFilterEffect::SyncFrame(QorRenderContext* context) {
    if (!filter || !context) return kQorOk;
    return AtBoundary("SyncFrame", kQorOk, [&] {
        Sync(*context);
        return static_cast<int32_t>(kQorOk);
    });
}

void QorOpenglFilterEffect::Sync(QorRenderContext& context) {
    filter->SetPosition(context.GetPosition());
    filter->SetDuration(context.GetDuration());
    int64_t numerator = 0;
    int64_t denominator = 0;
    context.GetFrameRate(&numerator, &denominator);
    const int64_t wholeRate = numerator / std::max<int64_t>(denominator, 1);
    filter->SetFrameRate(static_cast<float>(wholeRate));
    parameterSync.Run(context, *info, *filter);
    if (info->guid == kCornerPinGuid) RunCornerPinStep(context, *filter);
}

int32_t QorOpenglFilterEffect::GLRender(QorRenderContext* context) {
    if (HasOpenGLDevice() && CurrentThreadId() != renderThread) {
        LogError("GLRender:ThreadID is changed!");
        return kQorEffectFailed;
    }
    if (!filter || !context) return kQorEffectFailed;
    return AtBoundary("GLRender", kQorEffectFailed, [&] { return Render(*context); });
}

int32_t QorOpenglFilterEffect::Render(QorRenderContext& context) {
    QorFrame* const first = context.GetInputFrame(0);
    QorFrame* const second = context.GetInputFrame(1);
    QorFrame* const output = context.GetOutputFrame();
    PassAiTransfer(context);
    if (!output) {
        LogError("GLRender:no output frame!");
        return kQorEffectFailed;
    }
    const int32_t width = output->GetWidth();
    const int32_t height = output->GetHeight();
    const int32_t stride = output->GetStride();
    if (filter->Resize(width, height, stride) != kFilterOk) {
        LogError("GLRender:Prepare failed!");
        return kQorEffectFailed;
    }
    const FrameRecord secondRecord = InputRecord(second);
    const FrameRecord firstRecord = InputRecord(first);
    FrameRecord outRecord = OutputRecord(output);
    PassAudio(context);
    const int32_t result =
        filter->DoEffect(secondRecord, firstRecord, outRecord, width, height, stride);
    return result == kFilterOk ? kQorOk : kQorEffectFailed;
}

void QorOpenglFilterEffect::PassAiTransfer(QorRenderContext& context) {
    NLEParamValue value;
    context.GetCustomData(kAiTransferParam, kHostPointer, value.data, sizeof(void*));
    value.type = kParamPointer;
    filter->SetParam(kAiTransferParam, kParamPointer, std::move(value));
}

void QorOpenglFilterEffect::PassAudio(QorRenderContext& context) {
    const AudioInput audio = AudioOf(context.GetAudio(0));
    filter->SetAudioInput(audio.channels, audio.samples, audio.bytes, audio.format, audio.data);
}

// ---------------------------------------------------------------------------------------------
// Entries of the interface without work of their own
// ---------------------------------------------------------------------------------------------

int32_t QorOpenglFilterEffect::GLRenderAlt(QorRenderContext* context) {
    return GLRender(context);
}

int32_t QorOpenglFilterEffect::Reserved1(QorRenderContext*) {
    return kQorOk;
}

int32_t QorOpenglFilterEffect::Reserved2(QorRenderContext*) {
    return kQorOk;
}

int32_t QorOpenglFilterEffect::Reserved3(QorRenderContext*) {
    return kQorOk;
}

int32_t QorOpenglFilterEffect::Reserved4(QorRenderContext*) {
    return kQorOk;
}

}  // namespace kelmo
