// SPDX-License-Identifier: GPL-3.0-or-later
#include "tests/effects/support/material_effect.h"

#include <stdexcept>
#include <vector>

#include "catalogue/filter_catalogue.h"
#include "catalogue/folder_scan.h"
#include "framework/filter/effect_registry.h"
#include "framework/filter/sub_filters.h"

namespace kelmo::test {
namespace {

void FillCatalogueOnce() {
    static const bool filled = [] {
        std::vector<std::shared_ptr<NLEFilterInfo>> found;
        ScanFolder(KELMO_SOURCE_DIR "/material/qor_effect/material", found);
        for (const auto& info : found) GetCatalogue().AddFilter(info);
        return true;
    }();
    (void)filled;
}

}  // namespace

MaterialEffects::MaterialEffects() {
    FillCatalogueOnce();
    SetSubFilterCreation(CreateFilterFromCatalogue);
}

MaterialEffects::~MaterialEffects() {
    SetSubFilterCreation(nullptr);
}

std::unique_ptr<NLEOpenGLFilter> MaterialEffects::Make(const std::string& guid, int32_t width,
                                                       int32_t height) {
    const auto info = GetCatalogue().FindFilter(guid);
    if (!info) throw std::runtime_error("the material has no " + guid);
    auto filter = CreateFilter(info);
    filter->SetFrameRate(25.0F);
    filter->SetDuration(100);
    if (filter->InitEffect() != kFilterOk) throw std::runtime_error("cannot start " + guid);
    filter->Resize(width, height, width * 4);
    return filter;
}

FrameRecord RecordOf(cv::Mat& picture) {
    FrameRecord record =
        FrameRecord::TargetLess(picture.cols, picture.rows, static_cast<int32_t>(picture.step[0]));
    record.pixels = picture.data;
    record.channels = picture.channels();
    return record;
}

int32_t DrawFrame(NLEOpenGLFilter& filter, int32_t position, const FrameRecord& first,
                  const FrameRecord& second) {
    filter.SetPosition(position);
    const int32_t width = filter.Engine() ? filter.Engine()->GetWidth() : 16;
    const int32_t height = filter.Engine() ? filter.Engine()->GetHeight() : 16;
    FrameRecord out = FrameRecord::TargetLess(width, height, width * 4);
    return filter.DoEffect(second, first, out, width, height, width * 4);
}

}  // namespace kelmo::test
