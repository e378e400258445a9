// SPDX-License-Identifier: GPL-3.0-or-later
// The runtime with the real networks: our own operations against the runtime's.
#include <opencv2/imgproc.hpp>

#include "ai/picture/picture_pyramid.h"
#include "ai/runtime/model_store.h"
#include "ai_session.h"

namespace kelmo::test {
namespace {

std::vector<std::vector<float>> Outputs(const TensorRuntime& runtime, NetworkId id,
                                        bool withXnnpack, const cv::Mat& photo) {
    const NetworkSpec& spec = SpecOf(id);
    std::string error;
    auto model = NetworkModel::Open(runtime, ModelFolder() + "/" + spec.file);
    auto network = Network::Create(runtime, model, spec, withXnnpack, error);
    EXPECT_NE(network, nullptr) << error;
    if (!network) return {};
    cv::Mat scaled;
    cv::resize(photo, scaled, {spec.inputWidth, spec.inputHeight}, 0, 0, cv::INTER_AREA);
    PicturePyramid::ToInput(scaled, ColourRange::kZeroToOne, network->Input());
    EXPECT_TRUE(network->Run());
    std::vector<std::vector<float>> outputs;
    for (size_t i = 0; i < spec.outputs.size(); ++i)
        outputs.emplace_back(network->Output(i).begin(), network->Output(i).end());
    return outputs;
}

TEST(Networks, AgreeWithAndWithoutTheAccelerator) {
    KELMO_NEED_MODELS();
    KELMO_NEED_PHOTO(astronaut, "astronaut.png");
    std::string error;
    const auto runtime = TensorRuntime::Load(ModelFolder() + "/libtensorflowlite_c.so", error);
    ASSERT_NE(runtime, nullptr) << error;
    const struct {
        NetworkId id;
        cv::Rect part;
        float tolerance;
    } cases[] = {
        // The mask runs our transposed convolution here, the accelerator's own there.
        {NetworkId::kPersonMask, {0, 0, 512, 512}, 1e-3f},
        // Pixels of 192.
        {NetworkId::kFaceMeshAttention, {140, 50, 160, 160}, 0.05f},
    };
    for (const auto& c : cases) {
        const cv::Mat part = astronaut(c.part);
        const auto plain = Outputs(*runtime, c.id, false, part);
        const auto fast = Outputs(*runtime, c.id, true, part);
        ASSERT_EQ(plain.size(), fast.size());
        for (size_t i = 0; i < plain.size(); ++i)
            for (size_t k = 0; k < plain[i].size(); ++k)
                ASSERT_NEAR(plain[i][k], fast[i][k], c.tolerance) << "output " << i << " " << k;
    }
}

TEST(Networks, CloserLooksAtTheEyesAgreeWithTheWholeFace) {
    KELMO_NEED_MODELS();
    KELMO_NEED_PHOTO(astronaut, "astronaut.png");
    std::string error;
    const auto runtime = TensorRuntime::Load(ModelFolder() + "/libtensorflowlite_c.so", error);
    ASSERT_NE(runtime, nullptr) << error;
    const auto outputs =
        Outputs(*runtime, NetworkId::kFaceMeshAttention, true, astronaut({140, 50, 160, 160}));
    // Corners of the left eye: 33 and 133, first and ninth of the closer look. A wrong way back
    // from the eye's region would put them somewhere else altogether.
    const std::vector<float>&surface = outputs[0], &eye = outputs[3];
    const float eyeWidth =
        std::hypot(surface[3 * 133] - surface[3 * 33], surface[3 * 133 + 1] - surface[3 * 33 + 1]);
    ASSERT_GT(eyeWidth, 10);
    for (const auto& [whole, close] : {std::pair(33, 0), std::pair(133, 8)})
        for (int axis : {0, 1})
            EXPECT_NEAR(surface[size_t(3 * whole + axis)], eye[size_t(2 * close + axis)],
                        0.15 * eyeWidth);
}

TEST(ModelStore, LendsOneNetworkToUsersInTurnAndTwoAtOnce) {
    KELMO_NEED_MODELS();
    std::string error;
    const auto store = ModelStore::Open(Resources(), error);
    ASSERT_NE(store, nullptr) << error;
    ASSERT_TRUE(store->Prepare({NetworkId::kPersonMask}, error)) << error;
    float* first = nullptr;
    {
        NetworkLease lease = store->Lease(NetworkId::kPersonMask);
        ASSERT_TRUE(lease);
        first = lease->Input().data();
        NetworkLease other = store->Lease(NetworkId::kPersonMask);
        ASSERT_TRUE(other);
        EXPECT_NE(other->Input().data(), first);
    }
    const NetworkLease again = store->Lease(NetworkId::kPersonMask);
    EXPECT_TRUE(again);
}

}  // namespace
}  // namespace kelmo::test
