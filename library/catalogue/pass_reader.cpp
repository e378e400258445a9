// SPDX-License-Identifier: GPL-3.0-or-later
#include "catalogue/pass_reader.h"

#include <nlohmann/json.hpp>
#include <string_view>

#include "catalogue/json_fields.h"

namespace kelmo {
namespace {

using nlohmann::json;

constexpr std::string_view kBefore = "@before";
constexpr std::string_view kClipName = "clip";
constexpr std::string_view kSecondName = "second";
constexpr std::string_view kOwnName = "output";

// The texts of an array, or the one text that stands in its place.
std::vector<std::string> TextsOf(const json& value, const char* key) {
    std::vector<std::string> texts;
    if (value.is_string()) {
        texts.push_back(value.get<std::string>());
    } else if (value.is_array()) {
        for (const json& element : value) texts.push_back(TextOf(element, key));
    } else {
        throw DescriptionError(std::string("\"") + key + "\" must be an array of texts");
    }
    return texts;
}

// Reads the passes one after the other; a member for what each needs of the others.
class PassesReader {
public:
    PassesReader(const std::string& dataPath, bool transition)
        : dataPath(dataPath), transition(transition) {}

    std::vector<FilterPass> Read(const json& elements) {
        if (!elements.is_array() || elements.empty()) {
            throw DescriptionError("\"PASSES\" must be an array of passes");
        }
        if (elements.size() > kMaxPasses) {
            throw DescriptionError("\"PASSES\" holds more than " + std::to_string(kMaxPasses));
        }
        for (const json& element : elements) TakeName(element);
        std::vector<FilterPass> passes;
        for (const json& element : elements) {
            const std::size_t index = passes.size();
            try {
                passes.push_back(ReadPass(element, index));
            } catch (const DescriptionError& error) {
                throw DescriptionError("pass \"" + names[index] + "\": " + error.what());
            }
        }
        return passes;
    }

    // What the pass at `index` reads; `index` behind the last pass is the filter's own shader.
    std::vector<PassInput> ReadInputs(const json* reads, std::size_t index) const {
        std::vector<PassInput> inputs;
        if (reads == nullptr) {
            if (index == 0 || index == names.size()) inputs.push_back({});
            if (index > 0) inputs.push_back({PassInput::kPass, index - 1, false});
            return inputs;
        }
        for (const std::string& text : TextsOf(*reads, "READS")) {
            inputs.push_back(ReadInput(text, index));
        }
        if (inputs.empty() || inputs.size() > kMaxPassInputs) {
            throw DescriptionError("\"READS\" names 1 to " + std::to_string(kMaxPassInputs) +
                                   " pictures");
        }
        return inputs;
    }

private:
    void TakeName(const json& element) {
        std::string name = element.is_object() ? TextField(element, "NAME") : std::string();
        if (name.empty()) {
            throw DescriptionError("pass " + std::to_string(names.size()) + " has no \"NAME\"");
        }
        const bool reserved = name == kClipName || name == kSecondName || name == kOwnName;
        if (reserved || name.find('@') != std::string::npos || IndexOf(name) < names.size()) {
            throw DescriptionError("pass \"" + name + "\": the name is taken");
        }
        names.push_back(std::move(name));
    }

    std::size_t IndexOf(std::string_view name) const {
        std::size_t index = 0;
        while (index < names.size() && names[index] != name) ++index;
        return index;
    }

    FilterPass ReadPass(const json& element, std::size_t index) const {
        FilterPass pass;
        pass.name = names[index];
        const json* const shader = FieldOf(element, "OPENGL");
        if (shader == nullptr) throw DescriptionError("no \"OPENGL\"");
        pass.fragmentPath = dataPath + TextOf(*shader, "OPENGL");
        pass.reads = ReadInputs(FieldOf(element, "READS"), index);
        if (FieldOf(element, "SCALE") != nullptr) pass.scale = DoubleField(element, "SCALE");
        if (!(pass.scale > 0.0 && pass.scale <= 1.0)) {
            throw DescriptionError("\"SCALE\" must be above 0 and up to 1");
        }
        pass.height = IntField(element, "HEIGHT");
        if (pass.height < 0 || pass.height > kMaxPassHeight) {
            throw DescriptionError("\"HEIGHT\" must be 1 to " + std::to_string(kMaxPassHeight));
        }
        if (const json* const needs = FieldOf(element, "NEEDS")) {
            pass.needs = TextsOf(*needs, "NEEDS");
        }
        return pass;
    }

    PassInput ReadInput(std::string_view text, std::size_t index) const {
        PassInput input;
        std::string_view name = text;
        if (name.ends_with(kBefore)) {
            name.remove_suffix(kBefore.size());
            input.before = true;
        }
        if (name == kClipName || (name == kSecondName && transition)) {
            if (input.before) throw DescriptionError("only pictures of passes are kept");
            input.kind = name == kClipName ? PassInput::kClip : PassInput::kSecondClip;
            return input;
        }
        input.kind = PassInput::kPass;
        input.pass = name == kOwnName ? names.size() : IndexOf(name);
        if (name != kOwnName && input.pass == names.size()) {
            throw DescriptionError("reads \"" + std::string(text) + "\", which is no pass");
        }
        if (!input.before && input.pass >= index) {
            throw DescriptionError("reads \"" + std::string(text) + "\", which is drawn later");
        }
        return input;
    }

    const std::string& dataPath;
    const bool transition;
    std::vector<std::string> names;
};

}  // namespace

std::vector<FilterPass> ReadPasses(const json& object, const std::string& dataPath, bool transition,
                                   std::vector<PassInput>& ownReads) {
    const json* const elements = FieldOf(object, "PASSES");
    if (elements == nullptr) return {};
    PassesReader reader(dataPath, transition);
    std::vector<FilterPass> passes = reader.Read(*elements);
    ownReads = reader.ReadInputs(FieldOf(object, "READS"), passes.size());
    return passes;
}

}  // namespace kelmo
