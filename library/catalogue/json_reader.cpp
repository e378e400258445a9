// SPDX-License-Identifier: GPL-3.0-or-later
#include "catalogue/json_reader.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <nlohmann/json.hpp>

#include "catalogue/json_fields.h"
#include "catalogue/pass_reader.h"
#include "platform/file_system.h"
#include "platform/host_access.h"

namespace kelmo {
namespace {

using nlohmann::json;

constexpr int kMaxNesting = 64;

std::string resourceRoot;

// Brackets outside of texts, counted before parsing: one cheap pass over the bytes, where a check
// inside the parser would slow down every value.
bool IsNestedTooDeep(std::string_view text) {
    int depth = 0;
    bool inText = false;
    for (std::size_t i = 0; i < text.size(); ++i) {
        const char c = text[i];
        if (inText) {
            i += c == '\\';
            inText = c != '"';
        } else if (c == '"') {
            inText = true;
        } else if (c == '[' || c == '{') {
            if (++depth > kMaxNesting) {
                return true;
            }
        } else if (c == ']' || c == '}') {
            --depth;
        }
    }
    return false;
}

std::string Describe(const EntrySource& source, const std::string& guid) {
    std::string text(source.file.empty() ? std::string_view("filter description") : source.file);
    text += ": entry";
    if (source.index >= 0) {
        text += " " + std::to_string(source.index);
    }
    return text + " \"" + guid + "\"";
}

// The GUID of an entry for a message, whatever the entry looks like.
std::string GuidForMessage(const json& entry) {
    const json* const guid = FieldOf(entry, "GUID");
    return guid != nullptr && guid->is_string() ? guid->get<std::string>() : std::string();
}

void LogSkipped(const EntrySource& source, const json& entry, const char* reason) {
    LogError("kelmo: %s skipped: %s", Describe(source, GuidForMessage(entry)).c_str(), reason);
}

std::string PathOf(const std::string& dataPath, const std::string& file, const char* key) {
    std::string path = dataPath + file;
    RequireLength(path, kMaxPathLength, key);
    return path;
}

std::string_view Trimmed(std::string_view text) {
    constexpr std::string_view kSpace = " \t\r\n";
    const std::size_t first = text.find_first_not_of(kSpace);
    return first == std::string_view::npos
               ? std::string_view()
               : text.substr(first, text.find_last_not_of(kSpace) - first + 1);
}

const json* ArrayField(const json& object, const char* key) {
    const json* const value = FieldOf(object, key);
    if (value != nullptr && !value->is_array()) {
        throw DescriptionError(std::string("\"") + key + "\" must be an array, not " +
                               value->type_name());
    }
    return value;
}

void RequireObject(const json& element, const char* key) {
    if (!element.is_object()) {
        throw DescriptionError(std::string("\"") + key + "\" must be an object, not " +
                               element.type_name());
    }
}

// Runs a reader for each element of an array that is not empty ({}, [] or null), and names the
// element when it fails.
template <typename ReadElement>
void ForEachElement(const json& object, const char* key, ReadElement read) {
    const json* const elements = ArrayField(object, key);
    if (elements == nullptr) {
        return;
    }
    for (std::size_t i = 0; i < elements->size(); ++i) {
        const json& element = (*elements)[i];
        if (element.empty()) {
            continue;
        }
        const std::string name = std::string(key) + "[" + std::to_string(i) + "]";
        RequireObject(element, name.c_str());
        try {
            read(element);
        } catch (const DescriptionError& error) {
            throw DescriptionError(name + ": " + error.what());
        }
    }
}

// Reads one description; its members are the steps.
class EntryReader {
public:
    EntryReader(const json& object, const EntrySource& source, NLEFilterInfo& info)
        : object(object), source(source), info(info) {}

    // False when the object is no filter.
    bool Read() {
        const json* const guid = FieldOf(object, "GUID");
        if (guid == nullptr) {
            return false;
        }
        info.guid = TextOf(*guid, "GUID");
        RequireLength(info.guid, kMaxGuidLength, "GUID");
        ReadPath("OPENCL", info.openclPath, info.hasOpencl);
        const json* const opengl = FieldOf(object, "OPENGL");
        if (opengl == nullptr) {
            return false;
        }
        ReadPath("OPENGL", info.openglPath, info.hasOpengl);
        ReadPath("OPENGL_VERTEX", info.vertexPath, info.hasVertex);
        info.hasAudio = FieldOf(object, "AUDIO") != nullptr;
        info.encrypt = DecimalField("ENCRYPT");
        ReadName(TextOf(*opengl, "OPENGL"));
        info.dynamic = DecimalField("DYNAMIC");
        ReadGroups("OPENGL_EXTERN", info.fragmentExterns);
        ReadGroups("OPENGL_VERTEX_EXTERN", info.vertexExterns);
        info.blankFrameRender = DecimalField("BLANKFRAMERENDER");
        info.typeName = TextField(object, "OPENGL_TYPE");
        info.subGuid = TextField(object, "SUB_GUID");
        info.transition = FieldOf(object, "TRANSITION") != nullptr;
        info.function = IntField(object, "FUNCTION");
        info.innerRoi = IntField(object, "INNERROI");
        info.ignoreDefault = IntField(object, "IGNOREDEF");
        info.passes = ReadPasses(object, info.dataPath, info.transition != 0, info.ownReads);
        ForEachElement(object, "TEXTURES", [this](const json& element) { ReadTexture(element); });
        ForEachElement(object, "PARAMS", [this](const json& element) { ReadParam(element); });
        return true;
    }

private:
    void ReadPath(const char* key, std::string& path, int32_t& present) {
        if (const json* const value = FieldOf(object, key)) {
            path = PathOf(info.dataPath, TextOf(*value, key), key);
            present = 1;
        }
    }

    int32_t DecimalField(const char* key) {
        const json* const value = FieldOf(object, key);
        return value == nullptr ? 0 : DecimalTextOf(*value, key);
    }

    void ReadName(const std::string& openglFile) {
        const json* const given = FieldOf(object, "NAME");
        const std::string name =
            given != nullptr ? TextOf(*given, "NAME") : openglFile.substr(0, openglFile.rfind('.'));
        info.name = CutUtf8(name, kMaxNameLength);
        if (info.name.size() < name.size()) {
            LogWarning("kelmo: %s: \"NAME\" is cut to %zu bytes",
                       Describe(source, info.guid).c_str(), info.name.size());
        }
    }

    void ReadGroups(const char* key, std::vector<std::vector<std::string>>& groups) {
        const json* const value = FieldOf(object, key);
        if (value == nullptr) {
            return;
        }
        groups = ReadGroupList(TextOf(*value, key), info.dataPath);
        for (const std::vector<std::string>& group : groups) {
            for (const std::string& path : group) {
                RequireLength(path, kMaxPathLength, key);
            }
        }
    }

    void ReadTexture(const json& element) {
        const json* const type = FieldOf(element, "TYPE");
        const json* const file = FieldOf(element, "FILE");
        if (type == nullptr || file == nullptr) {
            throw DescriptionError(type == nullptr ? "no \"TYPE\"" : "no \"FILE\"");
        }
        const std::string& typeText = TextOf(*type, "TYPE");
        const std::string prefix = typeText == "image" ? std::string() : typeText + "|";
        info.AddTexture(info.textureCount++,
                        PathOf(prefix + info.dataPath, TextOf(*file, "FILE"), "FILE"));
    }

    void ReadParam(const json& element) {
        const int32_t type = ParamTypeOf(TextField(element, "TYPE"));
        if (type == kParamNone) {
            return;
        }
        auto param = std::make_shared<NLEFilterParams>();
        param->type = type;
        param->name = TextField(element, "NAME");
        if (param->name.size() > kMaxParamNameLength) {
            LogWarning("kelmo: %s: parameter dropped, its \"NAME\" is longer than %zu bytes: %s",
                       Describe(source, info.guid).c_str(), kMaxParamNameLength,
                       param->name.c_str());
            return;
        }
        param->alias =
            FieldOf(element, "ALIAS") != nullptr ? TextField(element, "ALIAS") : param->name;
        param->uiType = UiTypeOf(TextField(element, "UIType"));
        ReadValue(element, type, type == kParamText ? "DEFAULT" : "MIN", param->minValue);
        ReadValue(element, type, type == kParamText ? "DEFAULT" : "MAX", param->maxValue);
        ReadValue(element, type, "DEFAULT", param->defaultValue);
        param->SetValue(param->defaultValue);
        info.AddParam(info.paramCount++, std::move(param));
    }

    // Fills an empty value in place: half a kilobyte each, they are what loading copies most. A
    // value carries its type also when the key is missing and the rest of it is zero.
    static void ReadValue(const json& element, int32_t type, const char* key,
                          NLEParamValue& value) {
        value.type = type;
        switch (type) {
            case kParamFloat:
                return value.Put(FloatField(element, key));
            case kParamDouble:
                return value.Put(DoubleField(element, key));
            case kParamInt:
                return value.Put(IntField(element, key));
            case kParamText:
                value.text = TextField(element, key);
                return value.SetDataText(value.text);
            default:
                return;
        }
    }

    const json& object;
    const EntrySource& source;
    NLEFilterInfo& info;
};

// Numbers that no double holds make the parser refuse the whole text. Each is named in the log and
// becomes an array, which no key takes: its entry alone is refused then. False if there is none.
bool ReplaceHugeNumbers(std::string& text, std::string_view file) {
    std::string mended;
    std::size_t copied = 0;
    std::size_t line = 1;
    std::size_t lineStart = 0;
    bool inText = false;
    for (std::size_t i = 0; i < text.size(); ++i) {
        const char c = text[i];
        if (c == '\n') {
            ++line;
            lineStart = i + 1;
        } else if (inText) {
            i += c == '\\';
            inText = c != '"';
        } else if (c == '"') {
            inText = true;
        } else if (c == '-' || (c >= '0' && c <= '9')) {
            const std::size_t end =
                std::min(text.find_first_not_of("+-.0123456789eE", i), text.size());
            const std::string number = text.substr(i, end - i);
            if (!std::isfinite(std::strtod(number.c_str(), nullptr))) {
                LogError("kelmo: %.*s, line %zu, column %zu: no number is as large as %.40s",
                         static_cast<int>(file.size()), file.data(), line, i - lineStart + 1,
                         number.c_str());
                mended.append(text, copied, i - copied).append("[0]");
                copied = end;
            }
            i = end - 1;
        }
    }
    if (copied == 0) {
        return false;
    }
    text = mended.append(text, copied, std::string::npos);
    return true;
}

// As ParseJson, and a number beyond all range costs its entry alone.
bool ParseFile(std::string& text, std::string_view file, json& value) {
    return ParseJson(text, value) || (ReplaceHugeNumbers(text, file) && ParseJson(text, value));
}

bool LogReadFailure(const std::string& file) {
    LogError("[LoadJsonFromPath]Read OpenGLFilterConf Failed: %s", file.c_str());
    return false;
}

}  // namespace

std::string CatalogueFile(const std::string& resourceFolder) {
    return resourceFolder + "/qor_effect/material/OpenGLFilter.conf";
}

const std::string& ResourceRoot() {
    return resourceRoot;
}

bool LoadJsonFromPath(const std::string& resourceFolder, json& entries) {
    resourceRoot = resourceFolder;
    const std::string file = CatalogueFile(resourceFolder);
    std::string text;
    if (!ReadWholeFile(file, text)) {
        LogError("[LoadJsonFromPath]Open OpenGLFilterConf Failed: %s", file.c_str());
        return false;
    }
    if (!ParseFile(text, file, entries) || !entries.is_array()) {
        return LogReadFailure(file);
    }
    LogInfo("[LoadJsonFromPath]Load OpenGLFilterConf Success: %s", file.c_str());
    return true;
}

bool ParseJson(std::string_view text, json& value) {
    value = nullptr;
    if (IsNestedTooDeep(text)) {
        return false;
    }
    json parsed = json::parse(text, nullptr, false);
    if (parsed.is_discarded()) {
        return false;
    }
    value = std::move(parsed);
    return true;
}

std::shared_ptr<NLEFilterInfo> ReadCatalogueEntry(const json& entry,
                                                  const std::string& resourceFolder,
                                                  const EntrySource& source) {
    const json* const dataPath = FieldOf(entry, "DATAPATH");
    if (dataPath == nullptr) {
        return nullptr;
    }
    try {
        return ReadFilterJson(entry, resourceFolder + TextOf(*dataPath, "DATAPATH"), source);
    } catch (const DescriptionError& error) {
        LogSkipped(source, entry, error.what());
        return nullptr;
    }
}

std::shared_ptr<NLEFilterInfo> ReadFilterJson(const json& object, const std::string& dataPath,
                                              const EntrySource& source) {
    try {
        auto info = std::make_shared<NLEFilterInfo>();
        info->dataPath = dataPath;
        RequireLength(dataPath, kMaxPathLength, "DATAPATH");
        return EntryReader(object, source, *info).Read() ? info : nullptr;
    } catch (const DescriptionError& error) {
        LogSkipped(source, object, error.what());
        return nullptr;
    }
}

std::shared_ptr<NLEFilterInfo> GetFilterInfoFromJson(const std::string& path) {
    std::string text;
    if (!ReadWholeFile(path, text)) {
        return nullptr;
    }
    json object;
    ParseFile(text, path, object);
    return ReadFilterJson(object, FolderOf(path), {path});
}

std::vector<std::vector<std::string>> ReadGroupList(std::string_view text,
                                                    std::string_view dataPath) {
    std::vector<std::vector<std::string>> groups;
    while (!text.empty()) {
        const std::size_t opening = text.find('{');
        std::string_view piece = text.substr(0, opening);
        text = opening == std::string_view::npos ? std::string_view() : text.substr(opening + 1);
        const std::size_t closing = piece.find('}');
        piece = piece.substr(0, closing);
        std::vector<std::string> group;
        while (!piece.empty()) {
            const std::size_t comma = piece.find(',');
            if (const std::string_view name = Trimmed(piece.substr(0, comma)); !name.empty()) {
                group.push_back(std::string(dataPath).append(name));
            }
            piece = comma == std::string_view::npos ? std::string_view() : piece.substr(comma + 1);
        }
        if (closing != std::string_view::npos || !group.empty()) {
            groups.push_back(std::move(group));
        }
    }
    return groups;
}

}  // namespace kelmo
