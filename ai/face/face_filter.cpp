// SPDX-License-Identifier: GPL-3.0-or-later
#include "ai/face/face_filter.h"

#include "ai/face/face_layout.h"
#include "ai/face/face_tracker.h"
#include "ai/face/head_angles.h"

namespace kelmo {

namespace {

constexpr const char* kGeometryFile = "face_geometry.pb";

class FaceFilter : public AiFilter {
public:
    FaceFilter(std::shared_ptr<ModelStore> store, HeadModel head)
        : tracker(std::move(store)), head(std::move(head)) {}

    bool Transform(const cv::Mat& input, cv::Mat&) override {
        frame.Reset(input);
        tracker.Next(frame);
        AIDATA::HumanFaceInfoMultiDatas& data = FreshRecord(record);
        data.faces.resize(tracker.Faces().size());
        for (size_t i = 0; i < data.faces.size(); ++i)
            Describe(tracker.Faces()[i], input.size(), data.faces[i]);
        return true;
    }

    std::shared_ptr<AIDATA::BaseAIDATA> Result() override { return record; }

private:
    void Describe(const TrackedFace& face, cv::Size size, AIDATA::HumanFaceInfo& info) const {
        const float width = static_cast<float>(size.width);
        const float height = static_cast<float>(size.height);
        const HeadAngles angles = head.Fit(face.shape);
        info.pitch = angles.pitch;
        info.yaw = angles.yaw;
        info.roll = angles.roll;
        const cv::Rect2f box = face.shape.Bounds();
        info.rect[0] = box.x / width;
        info.rect[1] = box.y / height;
        info.rect[2] = (box.x + box.width) / width;
        info.rect[3] = (box.y + box.height) / height;
        info.landmarks.clear();
        for (const cv::Point2f& p : FaceLandmarks(face.shape))
            info.landmarks.emplace_back(p.x / width, p.y / height);
        info.reserved = face.number;
        info.landmarkScores.assign(kLandmarkCount, face.shape.presence);
    }

    FaceTracker tracker;
    const HeadModel head;
    PicturePyramid frame;
    std::shared_ptr<AIDATA::HumanFaceInfoMultiDatas> record;
};

}  // namespace

std::unique_ptr<AiFilter> CreateFaceFilter(std::shared_ptr<ModelStore> store, std::string& error) {
    const std::string geometry = store->Folder() + "/" + kGeometryFile;
    std::optional<HeadModel> head = HeadModel::Load(geometry);
    if (!head) {
        error = geometry + " is missing or is no head geometry";
        return nullptr;
    }
    if (!store->Prepare({NetworkId::kFaceDetector, NetworkId::kFaceDetectorNear,
                         NetworkId::kFaceMesh, NetworkId::kFaceMeshAttention},
                        error))
        return nullptr;
    return std::make_unique<FaceFilter>(std::move(store), std::move(*head));
}

}  // namespace kelmo
