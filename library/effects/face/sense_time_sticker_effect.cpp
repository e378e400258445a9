// SPDX-License-Identifier: GPL-3.0-or-later
#include "effects/face/sense_time_sticker_effect.h"

#include <atomic>
#include <utility>

#include "framework/filter/effect_registry.h"
#include "framework/filter/filter_guids.h"

namespace kelmo {
namespace {

const bool kRegistered =
    RegisterEffect("NLEOpenGLSenseTimeStickerEffect", MakeEffect<NLEOpenGLSenseTimeStickerEffect>,
                   {kStickerMasterGuid});

std::atomic<uint32_t> pictures{0};

}  // namespace

NLEOpenGLSenseTimeStickerEffect::NLEOpenGLSenseTimeStickerEffect(
    std::shared_ptr<NLEFilterInfo> filterInfo)
    : NLEOpenGLSenseTimeEffect(std::move(filterInfo), kFaceSdkSticker, kFaceSdkStickerOutput) {}

void NLEOpenGLSenseTimeStickerEffect::PrepareHandle() {
    senseTime->ReleaseCachedResource(effectHandle);
}

void NLEOpenGLSenseTimeStickerEffect::ApplyParams() {
    if (!currentPackagePath.empty()) return;
    const NLEFilterParams* const path = FindParam("stickerPath");
    if (!path) return;
    currentPackagePath = path->value.AsText();
    if (currentPackagePath.empty()) return;
    std::string package;
    ReadBinaryFile(currentPackagePath, package);
    senseTime->ChangePackage(effectHandle, package);
}

double NLEOpenGLSenseTimeStickerEffect::NextTimestamp() {
    return pictures++;
}

}  // namespace kelmo
