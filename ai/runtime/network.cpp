// SPDX-License-Identifier: GPL-3.0-or-later
#include "ai/runtime/network.h"

#include <algorithm>
#include <iterator>
#include <string_view>

#include "ai/runtime/custom_ops.h"

namespace kelmo {

namespace {

using Output = NetworkSpec::Output;

constexpr Output kMaskOutputs[] = {{"activation_10", 256 * 256}};
constexpr Output kFaceOutputs[] = {{"reshaped_regressor_face_4", 2304 * 16},
                                   {"reshaped_classifier_face_4", 2304}};
constexpr Output kNearFaceOutputs[] = {{"regressors", 896 * 16}, {"classificators", 896}};
constexpr Output kMeshOutputs[] = {{"conv2d_21", 468 * 3}, {"conv2d_31", 1}};
constexpr Output kAttentionOutputs[] = {
    {"output_mesh_identity", 468 * 3}, {"conv_faceflag", 1},         {"output_lips", 80 * 2},
    {"output_left_eye", 71 * 2},       {"output_right_eye", 71 * 2}, {"output_left_iris", 5 * 2},
    {"output_right_iris", 5 * 2}};
constexpr Output kPoseOutputs[] = {{"Identity", 2254 * 12}, {"Identity_1", 2254}};
constexpr Output kLandmarkOutputs[] = {
    {"Identity", 39 * 5}, {"Identity_1", 1}, {"Identity_3", 64 * 64 * 39}};

constexpr NetworkSpec kSpecs[] = {
    {"person_mask.tflite", 256, 256, kMaskOutputs},
    {"face_detector.tflite", 192, 192, kFaceOutputs},
    {"face_detector_near.tflite", 128, 128, kNearFaceOutputs},
    {"face_mesh.tflite", 192, 192, kMeshOutputs},
    {"face_mesh_attention.tflite", 192, 192, kAttentionOutputs},
    {"pose_detector.tflite", 224, 224, kPoseOutputs},
    {"pose_landmarks.tflite", 256, 256, kLandmarkOutputs},
};
static_assert(std::size(kSpecs) == size_t(NetworkId::kCount));

}  // namespace

const NetworkSpec& SpecOf(NetworkId id) {
    return kSpecs[size_t(id)];
}

NetworkModel::NetworkModel(const TensorRuntime& runtime, TfLiteModel* model)
    : runtime(runtime), model(model) {}

NetworkModel::~NetworkModel() {
    runtime.modelDelete(model);
}

std::shared_ptr<NetworkModel> NetworkModel::Open(const TensorRuntime& runtime,
                                                 const std::string& path) {
    TfLiteModel* model = runtime.modelCreateFromFile(path.c_str());
    if (!model) return nullptr;
    return std::shared_ptr<NetworkModel>(new NetworkModel(runtime, model));
}

std::unique_ptr<Network> Network::Create(const TensorRuntime& runtime,
                                         std::shared_ptr<NetworkModel> model,
                                         const NetworkSpec& spec, bool withXnnpack,
                                         std::string& error) {
    std::unique_ptr<Network> network(new Network(runtime, std::move(model)));
    if (!network->Build(withXnnpack, error) || !network->BindInput(spec, error) ||
        !network->BindOutputs(spec, error))
        return nullptr;
    std::fill(network->input.begin(), network->input.end(), 0.0f);
    if (!network->Run()) {
        error = "the network does not run";
        return nullptr;
    }
    return network;
}

Network::~Network() {
    // The interpreter uses the delegate, both the model.
    if (interpreter) runtime.interpreterDelete(interpreter);
    if (delegate) runtime.xnnpackDelete(delegate);
}

bool Network::Build(bool withXnnpack, std::string& error) {
    TfLiteInterpreterOptions* options = runtime.optionsCreate();
    if (!options) {
        error = "the runtime has no memory";
        return false;
    }
    runtime.optionsSetNumThreads(options, 1);
    AddCustomOps(runtime, options);
    if (withXnnpack) {
        const XnnpackOptions xnnpack;
        delegate = runtime.xnnpackCreate(&xnnpack);
        if (delegate) runtime.optionsAddDelegate(options, delegate);
    }
    interpreter = runtime.interpreterCreate(model->model, options);
    runtime.optionsDelete(options);
    if (!interpreter || runtime.interpreterAllocateTensors(interpreter) != kTensorOk) {
        error = "the runtime cannot run this network";
        return false;
    }
    return true;
}

bool Network::BindInput(const NetworkSpec& spec, std::string& error) {
    const size_t values = size_t(spec.inputWidth) * size_t(spec.inputHeight) * 3;
    TfLiteTensor* tensor =
        runtime.inputTensorCount(interpreter) == 1 ? runtime.inputTensor(interpreter, 0) : nullptr;
    if (!tensor || runtime.tensorType(tensor) != kTensorFloat32 ||
        runtime.tensorNumDims(tensor) != 4 || runtime.tensorDim(tensor, 1) != spec.inputHeight ||
        runtime.tensorDim(tensor, 2) != spec.inputWidth ||
        runtime.tensorByteSize(tensor) != values * sizeof(float)) {
        error = "its input has another size than expected";
        return false;
    }
    input = {static_cast<float*>(runtime.tensorData(tensor)), values};
    return input.data() != nullptr;
}

bool Network::BindOutputs(const NetworkSpec& spec, std::string& error) {
    for (const NetworkSpec::Output& wanted : spec.outputs) {
        std::span<const float> found;
        for (int32_t i = 0; i < runtime.outputTensorCount(interpreter); ++i) {
            const TfLiteTensor* tensor = runtime.outputTensor(interpreter, i);
            const char* name = tensor ? runtime.tensorName(tensor) : nullptr;
            if (name && std::string_view(name) == wanted.name &&
                runtime.tensorType(tensor) == kTensorFloat32 &&
                runtime.tensorByteSize(tensor) == wanted.count * sizeof(float))
                found = {static_cast<const float*>(runtime.tensorData(tensor)), wanted.count};
        }
        if (!found.data()) {
            error = std::string("it has no output ") + wanted.name + " of the expected size";
            return false;
        }
        outputs.push_back(found);
    }
    return true;
}

bool Network::Run() {
    return runtime.interpreterInvoke(interpreter) == kTensorOk;
}

}  // namespace kelmo
