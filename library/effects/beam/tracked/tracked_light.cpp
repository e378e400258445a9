// SPDX-License-Identifier: GPL-3.0-or-later
#include "effects/beam/tracked/tracked_light.h"

#include <opencv2/imgproc.hpp>
#include <utility>

#include "framework/filter/filter_guids.h"

namespace kelmo {

TrackedLight::TrackedLight(std::shared_ptr<NLEFilterInfo> filterInfo, const char* lookGuid,
                           const char* aiGuid)
    : NLEOpenGLCombineFilter(std::move(filterInfo)),
      tracker(aiGuid),
      look(looks.AddAs<NLEOpenGLBeamEdgeFlowEffect>(lookGuid ? lookGuid : kTrackedLookGuid)) {
    needCpuFrame = 1;
}

int32_t TrackedLight::InitEffect() {
    looks.InitEffects();
    return NLEOpenGLCombineFilter::InitEffect();
}

int32_t TrackedLight::Resize(int32_t newWidth, int32_t newHeight, int32_t newStride) {
    looks.Resize(newWidth, newHeight, newStride);
    return NLEOpenGLCombineFilter::Resize(newWidth, newHeight, newStride);
}

void TrackedLight::AddRing(const std::vector<cv::Point>& points) {
    if (points.empty()) return;
    box |= cv::boundingRect(points);
    NLEOpenGLBeamEffect& lines = *look->GetOwnedBeam();
    converter.Convert(points, size, 0.0F, true, true,
                      [&](const CurveLine& line) { lines.SetLine(line, count++); });
}

void TrackedLight::AddRay(const cv::Point2f& from, const cv::Point2f& to) {
    const std::vector<cv::Point> ends = {cv::Point(cvRound(from.x), cvRound(from.y)),
                                         cv::Point(cvRound(to.x), cvRound(to.y))};
    box |= cv::boundingRect(ends);
    look->GetOwnedBeam()->SetLine(
        CurveLine::Straight(ToDeviceSpace(from, size), ToDeviceSpace(to, size), 0.0F, 1.0F),
        count++);
}

void TrackedLight::SendBound() {
    int32_t softness = 0;
    if (FindInt("uEclosion", softness)) boundMargin = softness / 2 + 1;
    const auto columns = static_cast<float>(size.width), rows = static_cast<float>(size.height);
    const float bound[4] = {static_cast<float>(box.x - boundMargin) / columns,
                            static_cast<float>(box.y - boundMargin) / rows,
                            static_cast<float>(box.br().x + boundMargin) / columns,
                            static_cast<float>(box.br().y + boundMargin) / rows};
    look->SetFixedBound(bound);
}

int32_t TrackedLight::DoEffect(const FrameRecord& second, const FrameRecord& first,
                               FrameRecord& out, int32_t frameWidth, int32_t frameHeight,
                               int32_t frameStride) {
    NLEOpenGLBeamEffect* const lines = look ? look->GetOwnedBeam() : nullptr;
    if (!engine || !lines) return kFilterFailed;
    look->SetPosition(position);
    look->SetDuration(duration);
    HandOverParams(params, *look);
    UploadParams();
    lines->SetProgress(0.0F, 1.0F);
    const WorkingSize working = WorkingSize::For(frameWidth, frameHeight);
    size = cv::Size(working.width, working.height);
    box = {};
    count = 0;
    cv::Mat picture;
    GetMat(picture, first);
    if (tracker && !picture.empty()) {
        MakeLines({nullptr, frameWidth, frameHeight, frameStride},
                  {picture.data, picture.cols, picture.rows, static_cast<int32_t>(picture.step)});
    }
    if (count == 0) {
        constexpr float kClear[4] = {};
        lines->SetLine(CurveLine(), 0);
        lines->SetLineColor(kClear, 0);
    }
    lines->SetLineCount(count > 0 ? count : 1);
    SendBound();
    return look->DoEffect(second, first, out, frameWidth, frameHeight, frameStride);
}

}  // namespace kelmo
