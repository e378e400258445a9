// SPDX-License-Identifier: GPL-3.0-or-later
#include "ai/ai_filter.h"

#include <algorithm>
#include <cctype>

#include "ai/ai_log.h"
#include "ai/face/face_filter.h"
#include "ai/mask/mask_filter.h"
#include "ai/pose/pose_filter.h"

namespace kelmo {

namespace {

using Store = std::shared_ptr<ModelStore>;

struct Family {
    const char* guid;
    std::unique_ptr<AiFilter> (*create)(Store store, std::string& error);
};

const Family kFamilies[] = {
    {"2193B116-1AD4-49F4-84A1-FFA3CB983A94",
     [](Store store, std::string& error) { return CreateMaskFilter(store, false, error); }},
    {"974A1C95-921E-4D28-89D5-23B7B249589A",
     [](Store store, std::string& error) { return CreateMaskFilter(store, true, error); }},
    {"0C670CEA-AF42-4309-B86B-7A3169EAC541", CreateFaceFilter},
    {"AD36FDCA-6B5E-4399-8625-DE97EBF12E41", CreateFaceFilter},
    {"02E5BBF3-8C49-4392-9B0F-5B72E56FC762", CreatePoseFilter},
};

const Family* FindFamily(std::string guid) {
    std::transform(guid.begin(), guid.end(), guid.begin(),
                   [](unsigned char c) { return static_cast<char>(std::toupper(c)); });
    for (const Family& family : kFamilies)
        if (guid == family.guid) return &family;
    return nullptr;
}

}  // namespace

std::unique_ptr<AiFilter> CreateAiFilter(const std::string& guid, const std::string& resources) {
    const Family* family = FindFamily(guid);
    if (!family) {
        AiLog(kAiLogError, "AI: there is no filter %s", guid.c_str());
        return nullptr;
    }
    std::string error;
    const Store store = ModelStore::Open(resources, error);
    std::unique_ptr<AiFilter> filter = store ? family->create(store, error) : nullptr;
    if (!filter)
        AiLog(kAiLogError,
              "AI: masks, faces and bodies are not available: %s. Run scripts/fetch-models, which "
              "puts the runtime and the networks into %s",
              error.c_str(), ModelStore::FolderOf(resources).c_str());
    return filter;
}

}  // namespace kelmo
