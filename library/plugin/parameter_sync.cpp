// SPDX-License-Identifier: GPL-3.0-or-later
#include "plugin/parameter_sync.h"

#include <string_view>

#include "framework/filter/parameter_upload.h"
#include "plugin/value_conversion.h"

namespace kelmo {

namespace {

constexpr std::string_view kTextPath = "TextPath";
constexpr std::string_view kTextIsUpdate = "TextIsUpdate";
constexpr std::string_view kTransformParam = "TransformParam";

bool IsFrameProperty(std::string_view name) {
    return name == kTextPath || name == kTextIsUpdate || name == kTransformParam;
}

/// The property that holds a name.
const char* PropertyOf(std::string_view name) {
    return name == kTransformParam ? "TransformParam" : "TextUserData";
}

/// What an effect wants of the host's text data: the text object, or whether the text changed. The
/// flag keeps the type pointer, and its readers take the int.
void PickFromTextData(std::string_view name, NLEParamValue& value) {
    if (value.type != kParamPointer || !value.AsPointer()) return;
    const auto* const data = static_cast<const TextUserData*>(value.AsPointer());
    if (name == kTextPath) value.Put(data->textPath);
    if (name == kTextIsUpdate) value.Put(int64_t{data->textIsUpdate != 0});
}

/// The effect places the text itself, so the host must not do it again.
void SkipGroupTransform(QorFrame& frame) {
    QorValue yes;
    yes.type = kHostBool;
    yes.b = 1;
    frame.SetProperty("SkipGroupTransform", &yes);
}

/// Brings an answer of the host to what a parameter of type `type` can hold.
bool MakeFit(NLEParamValue& value, int32_t type) {
    return type == kParamPointer || ConvertNumber(value, type);
}

QorValue RecordOf(int32_t hostType) {
    QorValue record;
    record.type = hostType;
    return record;
}

}  // namespace

void ParameterSync::Run(QorRenderContext& context, const NLEFilterInfo& info,
                        NLEOpenGLFilter& filter) {
    const int32_t position = context.GetPosition();
    SyncCataloguePart(context, info, filter, position);
    for (const std::string& name : filter.RequestedParams()) {
        SyncRequested(context, name.c_str(), filter, position);
    }
}

void ParameterSync::SyncCataloguePart(QorRenderContext& context, const NLEFilterInfo& info,
                                      NLEOpenGLFilter& filter, int32_t position) {
    for (int32_t index = 0; index < info.paramCount; ++index) {
        const auto param = info.GetParam(index);
        if (!param) continue;
        QorValue record = RecordOf(HostTypeOf(param->type));
        if (context.GetParamValue(param->name.c_str(), position, &record) == 0 &&
            ConvertHostValue(record, value) && MakeFit(value, param->type)) {
            filter.SetParam(param->name.c_str(), param->type, value);
        }
    }
}

void ParameterSync::SyncRequested(QorRenderContext& context, const char* name,
                                  NLEOpenGLFilter& filter, int32_t position) {
    if (IsFrameProperty(name)) {
        SyncFrameProperty(context, name, filter, position);
        return;
    }
    QorValue record = RecordOf(kHostPointer);
    if (context.GetParamValue(name, position, &record) == 0) SetConverted(record, name, filter);
}

void ParameterSync::SyncFrameProperty(QorRenderContext& context, const char* name,
                                      NLEOpenGLFilter& filter, int32_t position) {
    QorFrame* const frame = context.GetInputFrame(0);
    if (!frame) return;
    QorValue record = RecordOf(kHostPointer);
    if (frame->GetProperty(PropertyOf(name), &record) != 0) {
        if (name == kTextPath && context.GetParamValue(name, position, &record) == 0) {
            SetConverted(record, name, filter);
        }
        return;
    }
    if (ConvertHostValue(record, value)) {
        if (name != kTransformParam) PickFromTextData(name, value);
        filter.SetParam(name, value.type, value);
    }
    if (name == kTransformParam) SkipGroupTransform(*frame);
}

void ParameterSync::SetConverted(const QorValue& record, const char* name,
                                 NLEOpenGLFilter& filter) {
    if (ConvertHostValue(record, value)) filter.SetParam(name, value.type, value);
}

}  // namespace kelmo
