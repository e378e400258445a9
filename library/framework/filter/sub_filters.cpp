// SPDX-License-Identifier: GPL-3.0-or-later
#include "framework/filter/sub_filters.h"

#include <algorithm>
#include <utility>

#include "catalogue/filter_catalogue.h"
#include "framework/filter/effect_registry.h"
#include "framework/filter/filter_guids.h"

namespace kelmo {

namespace {

SubFilterCreation& Creation() {
    static SubFilterCreation& creation = *new SubFilterCreation;
    return creation;
}

}  // namespace

void SetSubFilterCreation(SubFilterCreation creation) {
    Creation() = std::move(creation);
}

std::unique_ptr<NLEOpenGLFilter> CreateFilterFromCatalogue(const char* guid) {
    std::shared_ptr<NLEFilterInfo> info = GetCatalogue().FindFilter(guid);
    if (info && info->subGuid == kAstralSubGuid) {
        if (auto master = GetCatalogue().FindFilter(kAstralMasterGuid)) info = std::move(master);
    }
    return CreateFilter(info);
}

std::unique_ptr<NLEOpenGLFilter> CreateSubFilter(const char* guid, NLEOpenGLFilter* parent) {
    if (!guid || !Creation()) return nullptr;
    std::unique_ptr<NLEOpenGLFilter> filter = Creation()(guid);
    if (filter) filter->SetParent(parent);
    return filter;
}

std::unique_ptr<NLEOpenGLFilter> SubFilters::Make(const char* guid) {
    return CreateSubFilter(guid, owner);
}

NLEOpenGLFilter* SubFilters::Add(const char* guid) {
    auto filter = Make(guid);
    if (!filter) return nullptr;
    filters.push_back(std::move(filter));
    return filters.back().get();
}

void SubFilters::InitEffects() {
    for (const auto& filter : filters) filter->InitEffect();
}

void SubFilters::Resize(int32_t width, int32_t height, int32_t stride) {
    for (const auto& filter : filters) filter->Resize(width, height, stride);
}

bool SubFilters::NeedCpuFrame() const {
    return std::any_of(filters.begin(), filters.end(),
                       [](const auto& filter) { return filter->NeedsCpuFrame(); });
}

FrameRecord RunSubFilter(NLEOpenGLFilter& stage, const NLEOpenGLFilter& owner,
                         const FrameRecord& second, const FrameRecord& first, int32_t width,
                         int32_t height, int32_t stride) {
    stage.SetPosition(owner.GetPosition());
    stage.SetDuration(owner.GetDuration());
    FrameRecord target = FrameRecord::TargetLess(width, height, stride);
    stage.DoEffect(second, first, target, width, height, stride);
    return stage.GetResultFrame();
}

FrameRecord RunSubFilter(NLEOpenGLFilter& stage, const NLEOpenGLFilter& owner,
                         const FrameRecord& second, const FrameRecord& first,
                         const WorkingSize& size) {
    return RunSubFilter(stage, owner, second, first, size.width, size.height, size.stride);
}

void BindStageResult(NLEOpenGLEngineEffect& engine, int32_t& slot, const FrameRecord& picture,
                     const WorkingSize& size) {
    engine.SetInputTexture(slot++, picture, size.width, size.height, size.stride);
}

}  // namespace kelmo
