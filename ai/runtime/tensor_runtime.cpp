// SPDX-License-Identifier: GPL-3.0-or-later
#include "ai/runtime/tensor_runtime.h"

#include <dlfcn.h>

namespace kelmo {

namespace {

/// Looks up functions and remembers the first that is missing.
struct Lookup {
    void* library;
    const char* missing = nullptr;

    template <typename Function>
    void Find(Function& function, const char* name) {
        function = reinterpret_cast<Function>(dlsym(library, name));
        if (!function && !missing) missing = name;
    }
};

void FindAll(Lookup& lookup, TensorRuntime& runtime) {
    lookup.Find(runtime.modelCreateFromFile, "TfLiteModelCreateFromFile");
    lookup.Find(runtime.modelDelete, "TfLiteModelDelete");
    lookup.Find(runtime.optionsCreate, "TfLiteInterpreterOptionsCreate");
    lookup.Find(runtime.optionsDelete, "TfLiteInterpreterOptionsDelete");
    lookup.Find(runtime.optionsSetNumThreads, "TfLiteInterpreterOptionsSetNumThreads");
    lookup.Find(runtime.optionsAddDelegate, "TfLiteInterpreterOptionsAddDelegate");
    lookup.Find(runtime.optionsAddCustomOp, "TfLiteInterpreterOptionsAddCustomOp");
    lookup.Find(runtime.interpreterCreate, "TfLiteInterpreterCreate");
    lookup.Find(runtime.interpreterDelete, "TfLiteInterpreterDelete");
    lookup.Find(runtime.interpreterAllocateTensors, "TfLiteInterpreterAllocateTensors");
    lookup.Find(runtime.interpreterInvoke, "TfLiteInterpreterInvoke");
    lookup.Find(runtime.inputTensorCount, "TfLiteInterpreterGetInputTensorCount");
    lookup.Find(runtime.inputTensor, "TfLiteInterpreterGetInputTensor");
    lookup.Find(runtime.outputTensorCount, "TfLiteInterpreterGetOutputTensorCount");
    lookup.Find(runtime.outputTensor, "TfLiteInterpreterGetOutputTensor");
    lookup.Find(runtime.tensorType, "TfLiteTensorType");
    lookup.Find(runtime.tensorNumDims, "TfLiteTensorNumDims");
    lookup.Find(runtime.tensorDim, "TfLiteTensorDim");
    lookup.Find(runtime.tensorByteSize, "TfLiteTensorByteSize");
    lookup.Find(runtime.tensorData, "TfLiteTensorData");
    lookup.Find(runtime.tensorName, "TfLiteTensorName");
    lookup.Find(runtime.xnnpackCreate, "TfLiteXNNPackDelegateCreate");
    lookup.Find(runtime.xnnpackDelete, "TfLiteXNNPackDelegateDelete");
}

}  // namespace

std::unique_ptr<TensorRuntime> TensorRuntime::Load(const std::string& path, std::string& error) {
    void* library = dlopen(path.c_str(), RTLD_NOW | RTLD_LOCAL | RTLD_NODELETE);
    if (!library) {
        error = dlerror();
        return nullptr;
    }
    auto runtime = std::make_unique<TensorRuntime>();
    Lookup lookup{library};
    FindAll(lookup, *runtime);
    dlclose(library);  // RTLD_NODELETE keeps it
    if (lookup.missing) {
        error = path + " has no function " + lookup.missing;
        return nullptr;
    }
    return runtime;
}

}  // namespace kelmo
