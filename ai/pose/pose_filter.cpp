// SPDX-License-Identifier: GPL-3.0-or-later
#include "ai/pose/pose_filter.h"

namespace kelmo {

namespace {

/// The order of a record's points. Pairs are right before left. The right elbow and the right hand
/// have two places each: effects read them as 3 and 4, and as part of the pairs 7-8 and 9-10.
constexpr BodyMark kOrder[kPosePointCount] = {
    kNose,       kRightEye,   kLeftEye,    kRightElbow, kRightWrist, kRightShoulder, kLeftShoulder,
    kRightElbow, kLeftElbow,  kRightWrist, kLeftWrist,  kRightHip,   kLeftHip,       kRightKnee,
    kLeftKnee,   kRightAnkle, kLeftAnkle,  kRightEar,   kLeftEar,
};

class PoseFilter : public AiFilter {
public:
    explicit PoseFilter(std::shared_ptr<ModelStore> store) : tracker(std::move(store)) {}

    bool Transform(const cv::Mat& input, cv::Mat&) override {
        frame.Reset(input);
        tracker.Next(frame);
        AIDATA::HumanPoseDatas& data = FreshRecord(record);
        data.persons.resize(tracker.Bodies().size());
        for (size_t i = 0; i < data.persons.size(); ++i) {
            data.persons[i].points = PosePoints(tracker.Bodies()[i], input.size());
            data.persons[i].tag = tracker.Bodies()[i].number;
        }
        return true;
    }

    std::shared_ptr<AIDATA::BaseAIDATA> Result() override { return record; }

private:
    PoseTracker tracker;
    PicturePyramid frame;
    std::shared_ptr<AIDATA::HumanPoseDatas> record;
};

}  // namespace

std::vector<std::pair<float, float>> PosePoints(const TrackedBody& body, cv::Size frame) {
    std::vector<std::pair<float, float>> points;
    points.reserve(kPosePointCount);
    for (BodyMark mark : kOrder) {
        const cv::Point2f& p = body.shape.points[size_t(mark)];
        const float x = p.x / static_cast<float>(frame.width);
        const float y = p.y / static_cast<float>(frame.height);
        const bool seen = body.visible[size_t(mark)] && x >= 0 && x <= 1 && y >= 0 && y <= 1;
        points.emplace_back(seen ? x : -1.0f, seen ? y : -1.0f);
    }
    return points;
}

std::unique_ptr<AiFilter> CreatePoseFilter(std::shared_ptr<ModelStore> store, std::string& error) {
    if (!store->Prepare({NetworkId::kPoseDetector, NetworkId::kPoseLandmarks}, error))
        return nullptr;
    return std::make_unique<PoseFilter>(std::move(store));
}

}  // namespace kelmo
