// SPDX-License-Identifier: GPL-3.0-or-later
#include "plugin/effect_creation.h"

#include <atomic>
#include <memory>
#include <mutex>
#include <utility>

#include "catalogue/filter_catalogue.h"
#include "framework/engine/effect_engine.h"
#include "framework/filter/effect_registry.h"
#include "framework/filter/filter_guids.h"
#include "framework/filter/nle_opengl_filter.h"
#include "platform/host_access.h"
#include "plugin/qor_opengl_filter_effect.h"

namespace kelmo {

namespace {

std::atomic<int> liveObjects{0};

using FilterInfoPtr = std::shared_ptr<NLEFilterInfo>;

bool IsSticker(const NLEFilterInfo& info) {
    const auto first = info.paramCount > 0 ? info.GetParam(0) : nullptr;
    return first && first->alias == "stickerPath";
}

/// Sticker filters are packages without shaders; they run the master's. Effects that exist read
/// both members without a lock: they are written once, before the first of them is made.
bool TakeStickerShader(NLEFilterInfo& info) {
    const FilterInfoPtr master = GetCatalogue().FindFilter(kStickerMasterGuid);
    if (!master) {
        LogError("Create OpenGLFilter Failed: %s, the sticker master %s is missing",
                 info.guid.c_str(), kStickerMasterGuid);
        return false;
    }
    static std::mutex mutex;
    const std::lock_guard guard(mutex);
    if (info.encrypt != 0) info.encrypt = 0;
    if (info.openglPath != master->openglPath) info.openglPath = master->openglPath;
    return true;
}

/// The master of the Astral family, with the texture of the variant; null when there is none.
FilterInfoPtr AstralMaster(const NLEFilterInfo& variant) {
    FilterInfoPtr master = GetCatalogue().FindFilter(kAstralMasterGuid);
    if (!master) return nullptr;
    master->AddTexture(0, variant.GetTexture(0));
    return master;
}

/// The description that an effect of this GUID is built from, or null.
FilterInfoPtr DescriptionOf(const char* guid) {
    FilterInfoPtr info = GetCatalogue().FindFilter(guid);
    if (!info) {
        LogError("Create OpenGLFilter Failed: %s", guid);
        return nullptr;
    }
    if (IsSticker(*info) && !TakeStickerShader(*info)) return nullptr;
    return info->subGuid == kAstralSubGuid ? AstralMaster(*info) : info;
}

}  // namespace

int32_t CreateEffectObject(const char* guid, int32_t deviceType, QorEffect** effect) {
    const int32_t servedType = HasOpenGLDevice() ? kQorGPUDeviceTypeOpenGL : kQorDeviceTypeCpu;
    if (deviceType != servedType || !guid || !effect) return kQorRefused;
    const FilterInfoPtr info = DescriptionOf(guid);
    if (!info) return kQorRefused;
    auto object = std::make_unique<QorOpenglFilterEffect>(info);
    object->SetFilter(CreateFilter(info));
    *effect = object.release();
    ++liveObjects;
    LogInfo("Create OpenGLFilter Success: %s", guid);
    return kQorOk;
}

void DestroyEffectObject(QorEffect* effect) {
    auto* const object = dynamic_cast<QorOpenglFilterEffect*>(effect);
    if (object == nullptr) return;
    delete object;
    --liveObjects;
}

bool HasEffectObjects() {
    return liveObjects > 0;
}

}  // namespace kelmo
