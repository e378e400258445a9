// SPDX-License-Identifier: GPL-3.0-or-later
#include "catalogue/xml_reader.h"

#include <tinyxml2.h>

#include "catalogue/json_fields.h"
#include "platform/file_system.h"
#include "platform/host_access.h"

namespace kelmo {
namespace {

std::string ChildText(const tinyxml2::XMLElement& parent, const char* name) {
    const tinyxml2::XMLElement* const child = parent.FirstChildElement(name);
    const char* const text = child == nullptr ? nullptr : child->GetText();
    return text == nullptr ? std::string() : std::string(text);
}

void ReadIdentity(const tinyxml2::XMLElement& filter, NLEFilterInfo& info) {
    info.guid = ChildText(filter, "GUID");
    RequireLength(info.guid, kMaxGuidLength, "GUID");
    info.name = CutUtf8(ChildText(filter, "Name"), kMaxNameLength);
}

void ReadAstral(const tinyxml2::XMLElement& filter, const std::string& folder,
                NLEFilterInfo& info) {
    const tinyxml2::XMLElement* const astral = filter.FirstChildElement("Astral");
    if (astral == nullptr) {
        return;
    }
    info.subGuid = "Astral";
    const std::string file = ChildText(*astral, "AstralFile");
    if (!file.empty()) {
        RequireLength(folder + file, kMaxPathLength, "AstralFile");
        // The count stays 0: this picture is not drawn by the description itself but handed to the
        // filter that all Astral pictures share.
        info.AddTexture(0, folder + file);
    }
}

void ReadSticker(const tinyxml2::XMLElement& filter, const std::string& folder,
                 NLEFilterInfo& info) {
    const tinyxml2::XMLElement* const sticker = filter.FirstChildElement("SensetimeSticker");
    const std::string file =
        sticker == nullptr ? std::string() : ChildText(*sticker, "SensetimeStickerFile");
    if (file.empty()) {
        return;
    }
    RequireLength(folder + file, NLEParamValue::kDataSize - 1, "SensetimeStickerFile");
    info.transition = 1;
    auto param = std::make_shared<NLEFilterParams>();
    param->alias = "stickerPath";
    param->type = kParamText;
    param->SetValue(NLEParamValue::Text(folder + file));
    info.AddParam(0, std::move(param));
    info.paramCount = 1;
}

}  // namespace

std::shared_ptr<NLEFilterInfo> ReadFilterXml(std::string_view text, const std::string& folder,
                                             const std::string& source) {
    tinyxml2::XMLDocument document;
    if (document.Parse(text.data(), text.size()) != tinyxml2::XML_SUCCESS) {
        return nullptr;
    }
    auto info = std::make_shared<NLEFilterInfo>();
    const tinyxml2::XMLElement* const filter = document.FirstChildElement("Filter");
    if (filter == nullptr) {
        return info;
    }
    try {
        ReadIdentity(*filter, *info);
        ReadAstral(*filter, folder, *info);
        ReadSticker(*filter, folder, *info);
    } catch (const DescriptionError& error) {
        LogError("kelmo: %s: entry \"%s\" skipped: %s", source.c_str(), info->guid.c_str(),
                 error.what());
        return nullptr;
    }
    return info;
}

std::shared_ptr<NLEFilterInfo> GetFilterInfoFromXml(const std::string& path) {
    std::string text;
    if (!ReadWholeFile(path, text)) {
        return nullptr;
    }
    return ReadFilterXml(text, FolderOf(path), path);
}

}  // namespace kelmo
