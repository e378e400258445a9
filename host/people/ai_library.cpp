// SPDX-License-Identifier: GPL-3.0-or-later
#include "host/people/ai_library.h"

#include <algorithm>
#include <cstdarg>
#include <cstdio>
#include <mutex>
#include <utility>

#include <fmt/format.h>

#include "host/session/host_error.h"

namespace kelmo::host {

namespace {

constexpr const char* kFileName = "/qorAiFilterPlugin.qor";

template <typename Function>
Function Required(const DynamicLibrary& library, const std::string& file, const char* name) {
    const auto function = library.FindFunction<Function>(name);
    if (function == nullptr) throw HostError(fmt::format("{} has no export {}", file, name));
    return function;
}

/// Where lines of the library go, which takes a plain function. Networks load in the background:
/// their threads may have something to say when nobody listens any more, even while the process
/// ends, so that this is never destroyed.
struct Receiver {
    std::mutex mutex;
    LogSink sink;

    static Receiver& Get() {
        static Receiver& receiver = *new Receiver;
        return receiver;
    }
};

void ListenTo(LogSink sink) {
    Receiver& receiver = Receiver::Get();
    const std::lock_guard<std::mutex> lock(receiver.mutex);
    receiver.sink = std::move(sink);
}

void PassLineOn(int32_t level, const char* format, va_list arguments) {
    char text[2048];
    std::vsnprintf(text, sizeof text, format, arguments);
    Receiver& receiver = Receiver::Get();
    const std::lock_guard<std::mutex> lock(receiver.mutex);
    if (receiver.sink) receiver.sink(level, text);
}

}  // namespace

AiLibrary::AiLibrary(const std::string& folder, std::string resourceFolder, LogSink log)
    : library(DynamicLibrary::Load(folder + kFileName)), resources(std::move(resourceFolder)) {
    const std::string file = folder + kFileName;
    create = Required<CreateNLEAIEffectFilterFromGUIDFn>(library, file,
                                                         "CreateNLEAIEffectFilterFromGUID");
    transform = Required<NLEEffectFilterTransformFn>(library, file, "NLEEffectFilterTransform");
    result = Required<NLEEffectFilterGetAIResDataFn>(library, file, "NLEEffectFilterGetAIResData");
    destroy = library.FindFunction<DeleteNLEAIEffectFilterFn>("DeleteNLEAIEffectFilter");
    library.KeepLoaded();
    if (!log) return;
    setLog =
        library.FindFunction<SetNLEAIEffectFilterLogCallbackFn>("SetNLEAIEffectFilterLogCallback");
    if (setLog == nullptr) return;
    ListenTo(std::move(log));
    setLog(PassLineOn);
}

AiLibrary::~AiLibrary() {
    if (setLog == nullptr) return;
    setLog(nullptr);
    ListenTo({});
}

std::unique_ptr<AiLibrary::Filter> AiLibrary::Make(const char* guid) const {
    void* const handle = create(guid, resources.c_str());
    if (handle == nullptr) {
        throw HostError(fmt::format(
            "the AI library does not make the filter {}; `kelmo doctor` says what it needs", guid));
    }
    return std::unique_ptr<Filter>(new Filter(*this, handle));
}

AiLibrary::Filter::~Filter() {
    if (owner.destroy != nullptr) owner.destroy(&handle);
}

bool AiLibrary::Filter::Mask(const Picture& picture, Picture& mask) {
    mask.Resize(picture.width, picture.height);
    std::fill(mask.pixels.begin(), mask.pixels.end(), uint8_t{0});
    // Input pictures are read and never written.
    auto* const pixels = const_cast<uint8_t*>(picture.pixels.data());
    return owner.transform(handle, mask.pixels.data(), mask.width, mask.height, mask.stride,
                           nullptr, 0, 0, 0, pixels, picture.width, picture.height,
                           picture.stride) == 0;
}

std::shared_ptr<AIDATA::BaseAIDATA> AiLibrary::Filter::Result(const Picture& picture) {
    auto* const pixels = const_cast<uint8_t*>(picture.pixels.data());
    std::shared_ptr<AIDATA::BaseAIDATA> found;
    if (owner.transform(handle, nullptr, picture.width, picture.height, picture.stride, nullptr, 0,
                        0, 0, pixels, picture.width, picture.height, picture.stride) != 0 ||
        owner.result(handle, &found) != 0) {
        return nullptr;
    }
    return found;
}

}  // namespace kelmo::host
