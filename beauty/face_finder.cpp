// SPDX-License-Identifier: GPL-3.0-or-later
#include "beauty/face_finder.h"

#include <dlfcn.h>
#include <unistd.h>

#include <cstdio>
#include <cstring>
#include <string>

namespace kelmo::beauty {
namespace {

constexpr const char* kFaceFilter = "0C670CEA-AF42-4309-B86B-7A3169EAC541";

/// The AI library's functions; it stays loaded, as handles may live until the end.
struct AILibrary {
    CreateNLEAIEffectFilterFromGUIDFn create = nullptr;
    DeleteNLEAIEffectFilterFn destroy = nullptr;
    NLEEffectFilterTransformFn transform = nullptr;
    NLEEffectFilterGetAIResDataFn getResult = nullptr;
    std::string resources;

    bool Usable() const { return create && transform && getResult; }
};

std::string OwnFolder() {
    Dl_info info = {};
    if (dladdr(reinterpret_cast<void*>(&OwnFolder), &info) == 0 || !info.dli_fname) return {};
    const std::string path = info.dli_fname;
    return path.substr(0, path.find_last_of('/') + 1);
}

AILibrary LoadAILibrary() {
    AILibrary library;
    const std::string folder = OwnFolder();
    void* const module = dlopen((folder + "qorAiFilterPlugin.qor").c_str(), RTLD_NOW | RTLD_LOCAL);
    if (!module) {
        std::fprintf(stderr, "st_mobile: no faces without qorAiFilterPlugin.qor in %s\n",
                     folder.c_str());
        return library;
    }
    const auto find = [module](const char* name) { return dlsym(module, name); };
    library.create = reinterpret_cast<CreateNLEAIEffectFilterFromGUIDFn>(
        find("CreateNLEAIEffectFilterFromGUID"));
    library.destroy = reinterpret_cast<DeleteNLEAIEffectFilterFn>(find("DeleteNLEAIEffectFilter"));
    library.transform =
        reinterpret_cast<NLEEffectFilterTransformFn>(find("NLEEffectFilterTransform"));
    library.getResult =
        reinterpret_cast<NLEEffectFilterGetAIResDataFn>(find("NLEEffectFilterGetAIResData"));
    // Where an installation has its data, seen from its libraries.
    library.resources = folder + KELMO_DATA_FROM_PLUGINS;
    return library;
}

const AILibrary& Library() {
    static const AILibrary& library = *new AILibrary(LoadAILibrary());
    return library;
}

/// FNV-1a over words: only has to tell one picture of a film from the next.
uint64_t Fingerprint(const void* pixels, int32_t width, int32_t height, int32_t stride) {
    uint64_t hash = 14695981039346656037ULL;
    const std::size_t words = static_cast<std::size_t>(width) * 4 / sizeof(uint64_t);
    for (int32_t y = 0; y < height; ++y) {
        const auto* row =
            static_cast<const uint8_t*>(pixels) + static_cast<std::ptrdiff_t>(y) * stride;
        for (std::size_t i = 0; i < words; ++i) {
            uint64_t word = 0;
            std::memcpy(&word, row + i * sizeof word, sizeof word);
            hash = (hash ^ word) * 1099511628211ULL;
        }
    }
    return hash;
}

}  // namespace

FaceFinder::FaceFinder() {
    if (!Library().Usable()) return;
    handle = Library().create(kFaceFilter, Library().resources.c_str());
    if (!handle) std::fprintf(stderr, "st_mobile: no faces: the networks are missing\n");
}

FaceFinder::~FaceFinder() {
    if (handle && Library().destroy) Library().destroy(&handle);
}

void FaceFinder::Search(const void* pixels, int32_t width, int32_t height, int32_t stride) {
    ++searches;
    faces.clear();
    Library().transform(handle, nullptr, width, height, stride, nullptr, 0, 0, 0,
                        const_cast<void*>(pixels), width, height, stride);
    std::shared_ptr<AIDATA::BaseAIDATA> data;
    if (Library().getResult(handle, &data) != 0) return;
    const auto found = std::dynamic_pointer_cast<AIDATA::HumanFaceInfoMultiDatas>(data);
    if (!found) return;
    for (const AIDATA::HumanFaceInfo& info : found->faces) {
        if (info.landmarks.size() < static_cast<std::size_t>(kFaceSdkLandmarks)) continue;
        FaceSdkFace& face = faces.emplace_back();
        face.id = info.reserved;
        face.pitch = static_cast<float>(info.pitch);
        face.yaw = static_cast<float>(info.yaw);
        face.roll = static_cast<float>(info.roll);
        for (int32_t i = 0; i < kFaceSdkLandmarks; ++i) {
            const auto& [x, y] = info.landmarks[static_cast<std::size_t>(i)];
            face.landmarks[i] = {x * static_cast<float>(width), y * static_cast<float>(height)};
        }
    }
}

FaceSdkResult FaceFinder::Find(const void* pixels, int32_t width, int32_t height, int32_t stride) {
    if (!handle || !pixels || width < 1 || height < 1 || stride < width * 4) {
        return {nullptr, 0, width, height};
    }
    const uint64_t picture = Fingerprint(pixels, width, height, stride);
    if (searches == 0 || picture != lastPicture || width != lastWidth || height != lastHeight) {
        Search(pixels, width, height, stride);
        lastPicture = picture;
        lastWidth = width;
        lastHeight = height;
    }
    return {faces.data(), static_cast<int32_t>(faces.size()), width, height};
}

}  // namespace kelmo::beauty
