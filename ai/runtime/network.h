// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <memory>
#include <span>
#include <string>
#include <vector>

#include "ai/runtime/tensor_runtime.h"

namespace kelmo {

/// Our networks.
enum class NetworkId {
    kPersonMask,
    kFaceDetector,
    kFaceDetectorNear,
    kFaceMesh,
    kFaceMeshAttention,
    kPoseDetector,
    kPoseLandmarks,
    kCount,
};

/// What a network must look like to be used: 32-bit floats, one picture of three channels (red,
/// green, blue) as input, outputs by name with their number of values. A constant: it is still
/// there when a process ends while a network is being loaded.
struct NetworkSpec {
    struct Output {
        const char* name;
        size_t count;
    };
    const char* file;
    int inputWidth;
    int inputHeight;
    std::span<const Output> outputs;
};
const NetworkSpec& SpecOf(NetworkId id);

/// A network's file, mapped. Shared by the interpreters that run it; read-only, any thread.
class NetworkModel {
public:
    /// Null when the file is missing or is no model.
    static std::shared_ptr<NetworkModel> Open(const TensorRuntime& runtime,
                                              const std::string& path);
    ~NetworkModel();
    NetworkModel(const NetworkModel&) = delete;
    NetworkModel& operator=(const NetworkModel&) = delete;

private:
    friend class Network;
    NetworkModel(const TensorRuntime& runtime, TfLiteModel* model);
    const TensorRuntime& runtime;
    TfLiteModel* model;
};

/// One interpreter of a network, on one thread of the processor (several multi-threaded
/// interpreters in a process slow each other down). Keeps nothing from run to run. One thread at a
/// time.
class Network {
public:
    /// Null, with the reason in `error`, when the file does not hold what `spec` says. The first
    /// run, which is slow, has been made.
    static std::unique_ptr<Network> Create(const TensorRuntime& runtime,
                                           std::shared_ptr<NetworkModel> model,
                                           const NetworkSpec& spec, bool withXnnpack,
                                           std::string& error);
    ~Network();
    Network(const Network&) = delete;
    Network& operator=(const Network&) = delete;

    /// Rows from the top, three values a pixel.
    std::span<float> Input() const { return input; }
    bool Run();
    /// Output `index` of those asked for, valid until the next run.
    std::span<const float> Output(size_t index) const { return outputs[index]; }

private:
    Network(const TensorRuntime& runtime, std::shared_ptr<NetworkModel> model)
        : runtime(runtime), model(std::move(model)) {}
    bool Build(bool withXnnpack, std::string& error);
    bool BindInput(const NetworkSpec& spec, std::string& error);
    bool BindOutputs(const NetworkSpec& spec, std::string& error);

    const TensorRuntime& runtime;
    std::shared_ptr<NetworkModel> model;
    TfLiteDelegate* delegate = nullptr;
    TfLiteInterpreter* interpreter = nullptr;
    std::span<float> input;
    std::vector<std::span<const float>> outputs;
};

}  // namespace kelmo
