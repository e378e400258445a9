// SPDX-License-Identifier: GPL-3.0-or-later
#include "plugin/publication.h"

#include <vector>

#include "catalogue/filter_catalogue.h"
#include "catalogue/folder_scan.h"
#include "framework/engine/effect_engine.h"
#include "framework/filter/filter_guids.h"
#include "platform/host_access.h"
#include "plugin/parameter_publication.h"

namespace kelmo {

namespace {

enum TextKind : int32_t { kTextNone = 0, kTextWhole = 1, kTextByCharacter = 2 };

TextKind TextKindOf(const std::string& typeName) {
    if (typeName == "VectorText3D" || typeName == "VectorText3DAudioVisual") return kTextWhole;
    return typeName == "SingleChar" ? kTextByCharacter : kTextNone;
}

void PublishParams(const NLEFilterInfo& info, QorEffectRegistrar& registrar) {
    for (int32_t index = 0; index < info.paramCount; ++index) {
        if (const auto param = info.GetParam(index)) PublishParam(*param, index, registrar);
    }
    if (info.subGuid == kAstralSubGuid) PublishAstralParams(registrar);
}

}  // namespace

uint32_t FilterFlags(const NLEFilterInfo& info, bool hasOpenGLDevice) {
    uint32_t flags = kFlagAlways;
    flags |= hasOpenGLDevice ? kFlagGpuFrames : kFlagCpuFrames;
    flags |= info.transition ? kFlagTwoInputs : kFlagOneInput;
    if (info.hasAudio) flags |= kFlagAudio;
    if (info.dynamic) flags |= kFlagDynamic;
    if (info.blankFrameRender) flags |= kFlagRenderBlankFrames;
    return flags;
}

void PublishFilter(const std::shared_ptr<NLEFilterInfo>& info, QorEffectRegistrar& registrar) {
    GetCatalogue().AddFilter(info);
    registrar.SetIdentity(info->guid.c_str(), info->name.c_str());
    registrar.SetFlags(FilterFlags(*info, HasOpenGLDevice()));
    registrar.SetReserved(0);
    info->resourcePath = HostPath(kPathResources);
    if (const TextKind kind = TextKindOf(info->typeName)) registrar.SetTextKind(kind);
    PublishParams(*info, registrar);
    LogInfo("Register OpenGLFilter Success: %s %s", info->guid.c_str(), info->name.c_str());
}

int32_t PublishFilterAt(int32_t index, QorEffectRegistrar* registrar) {
    if (index < 0 || !registrar) return kQorRefused;
    const auto info = GetCatalogue().At(static_cast<std::size_t>(index));
    if (!info) return kQorRefused;
    PublishFilter(info, *registrar);
    return kQorOk;
}

int32_t PublishFilterFromFolder(const char* folder, QorEffectRegistrar* registrar) {
    if (!folder || !registrar) return kQorRefused;
    std::vector<std::shared_ptr<NLEFilterInfo>> found;
    ScanFolder(folder, found);
    if (found.empty()) {
        LogError("Register OpenGLFilter Failed: %s", folder);
        return kQorRefused;
    }
    PublishFilter(found.front(), *registrar);
    return kQorOk;
}

}  // namespace kelmo
