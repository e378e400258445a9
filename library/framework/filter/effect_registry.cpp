// SPDX-License-Identifier: GPL-3.0-or-later
#include "framework/filter/effect_registry.h"

#include <mutex>
#include <utility>

#include "framework/filter/filter_guids.h"
#include "framework/filter/nle_opengl_filter.h"

namespace kelmo {

namespace {

constexpr const char* kStickerPathAlias = "stickerPath";

/// Whether the description is a sticker filter; its path parameter then carries the name that the
/// sticker effect asks for. Effects that exist read the name without a lock: it is written once,
/// before the first of them is made.
bool TakeStickerParam(NLEFilterInfo& info) {
    static std::mutex mutex;
    const std::lock_guard guard(mutex);
    for (int32_t index = 0; index < info.paramCount; ++index) {
        const std::shared_ptr<NLEFilterParams> param = info.GetParam(index);
        if (param && param->alias == kStickerPathAlias) {
            if (param->name != kStickerPathAlias) param->name = kStickerPathAlias;
            return true;
        }
    }
    return false;
}

const EffectRegistry::Entry* EntryOf(NLEFilterInfo& info) {
    const EffectRegistry& registry = EffectRegistry::Instance();
    if (const auto* entry = registry.Find(info.typeName)) return entry;
    if (const auto* entry = registry.Find(info.guid)) return entry;
    // A build without the sticker class shows the clip through the filter's own shader.
    return TakeStickerParam(info) ? registry.Find(kStickerMasterGuid) : nullptr;
}

}  // namespace

EffectRegistry& EffectRegistry::Instance() {
    static EffectRegistry registry;
    return registry;
}

void EffectRegistry::Set(const std::string& key, Entry entry) {
    const Entry* const known = Find(key);
    if (known && known->className != entry.className) conflicts.push_back(key);
    entries.insert_or_assign(key, std::move(entry));
}

const EffectRegistry::Entry* EffectRegistry::Find(std::string_view key) const {
    const auto found = entries.find(key);
    return found == entries.end() ? nullptr : &found->second;
}

bool RegisterEffect(const char* className, const EffectFactory& factory,
                    std::initializer_list<const char*> keys) {
    for (const char* key : keys) EffectRegistry::Instance().Set(key, {className, factory});
    return true;
}

std::unique_ptr<NLEOpenGLFilter> CreateFilter(const std::shared_ptr<NLEFilterInfo>& info) {
    if (!info) return nullptr;
    const EffectRegistry::Entry* entry = EntryOf(*info);
    if (!entry) return std::make_unique<NLEOpenGLFilter>(info);
    return entry->factory(info, info->subGuid.empty() ? nullptr : info->subGuid.c_str());
}

}  // namespace kelmo
