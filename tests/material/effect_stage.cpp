// SPDX-License-Identifier: GPL-3.0-or-later
#include "tests/material/effect_stage.h"

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <map>
#include <mutex>
#include <nlohmann/json.hpp>

#include "host/session/host_error.h"
#include "host/session/host_services.h"
#include "host/session/plugin_library.h"
#include "host/text/host_text_path.h"
#include "tests/material/ai_double/staged_person.h"
#include "tests/material/test_pictures.h"
#include "tests/support/pose_transfer.h"

namespace kelmo::test {
namespace {

constexpr host::FrameRate kRate{25, 1};

/// Made on first use, ended after main: effects are gone by then.
class Stage {
public:
    static Stage& Instance() {
        static Stage stage;
        return stage;
    }

    host::PluginLibrary& Plugin() { return *plugin; }
    host::HostServices& Services() { return services; }
    const host::Catalogue& Effects() const { return catalogue; }

    std::vector<std::string> TakeComplaints() {
        const std::lock_guard lock(mutex);
        return std::exchange(complaints, {});
    }

    const std::string& Folder(const std::string& guid) const { return folders.at(guid); }

private:
    Stage()
        : services(
              // The plug-in finds the engine beside itself.
              {KELMO_DATA_DIR, KELMO_AI_DOUBLE_DIR},
              [this](int32_t level, std::string_view line) { Keep(level, line); }, false),
          plugin(host::PluginLibrary::Load(std::string(KELMO_PLUGIN_DIR) + "/" +
                                           host::kPluginFileName)) {
        plugin->Startup(services);
        catalogue = host::Catalogue::Of(*plugin);
        ReadFolders();
    }

    void Keep(int32_t level, std::string_view line) {
        if (level < kLogWarning) return;
        const std::lock_guard lock(mutex);
        complaints.emplace_back(line);
    }

    void ReadFolders() {
        std::ifstream file(KELMO_DATA_DIR "/qor_effect/material/OpenGLFilter.conf");
        for (const auto& entry : nlohmann::json::parse(file)) {
            const std::filesystem::path folder(entry.at("DATAPATH").get<std::string>());
            const std::filesystem::path own = folder.parent_path();  // without the last slash
            folders[entry.at("GUID")] =
                (own.parent_path().filename() / own.filename()).generic_string();
        }
    }

    std::mutex mutex;  // guards complaints
    std::vector<std::string> complaints;
    host::HostServices services;
    std::unique_ptr<host::PluginLibrary> plugin;
    host::Catalogue catalogue;
    std::map<std::string, std::string> folders;
};

/// A host that has found the staged person's body in every frame.
ObjectAiDataTransfer& StagedBody() {
    static PoseTransfer transfer = [] {
        PoseTransfer made;
        made.block = PoseBlock({StagedBodyPoints()});
        return made;
    }();
    return transfer;
}

/// Two letters in a frame of that size, for entries that show text.
std::shared_ptr<host::HostTextPath> StagedText(int width, int height) {
    host::TextSettings settings;
    settings.text = "Ab";
    settings.bold = true;
    settings.size = static_cast<float>(std::max(height / 2, 1));
    settings.canvasWidth = width;
    settings.canvasHeight = height;
    return host::HostTextPath::Create(settings, [](const std::string&) {});
}

/// What leaves the picture on the left comes in on the right.
Picture Rolled(const Picture& picture, int pixels) {
    Picture rolled = picture;
    for (int y = 0; y < picture.height; ++y) {
        const uint8_t* const row = picture.Row(y);
        std::rotate_copy(row, row + pixels % picture.width * 4, row + picture.stride,
                         rolled.Row(y));
    }
    return rolled;
}

std::vector<host::ParameterTrack> Tracks(const EffectDescription& effect,
                                         const std::vector<std::string>& assignments) {
    std::vector<host::ParameterTrack> tracks;
    for (const std::string& text : assignments) {
        tracks.push_back(host::ParseAssignment(effect, text));
    }
    return tracks;
}

}  // namespace

StagedEffect::StagedEffect(const EffectDescription& effect, int frameWidth, int frameHeight,
                           int64_t frames, const std::vector<std::string>& assignments)
    : description(effect), width(frameWidth), height(frameHeight) {
    Stage& stage = Stage::Instance();
    session = std::make_unique<host::EffectSession>(
        stage.Plugin(), stage.Services(), effect, Tracks(effect, assignments),
        host::SessionFormat{width, height, kRate, frames});
    if (IsTitle(effect)) text = StagedText(width, height);
}

Picture StagedEffect::Draw(int64_t frame, Picture& first, Picture& second,
                           std::vector<int16_t> samples) {
    Picture output;
    output.Resize(width, height);
    host::HostFrame frames[3];
    frames[0].Set(width, height, first.pixels.data(), nullptr);
    if (text) frames[0].SetText({text.get(), frame == 0, nullptr});
    frames[1].Set(width, height, second.pixels.data(), nullptr);
    frames[2].Set(width, height, output.pixels.data(), nullptr);
    host::HostAudio audio;
    audio.Set(samples.data(), static_cast<int32_t>(samples.size() / 2));
    host::FrameInputs inputs;
    inputs.first = &frames[0];
    inputs.second = IsTransition(description) ? &frames[1] : nullptr;
    inputs.output = &frames[2];
    inputs.ai = &StagedBody();
    inputs.audio = samples.empty() ? nullptr : &audio;
    return session->Render(frame, inputs) ? output : first;
}

const std::vector<EffectDescription>& AllEffects() {
    // KELMO_ONLY=scene/ while an effect is being written: those alone whose folder begins so.
    static const std::vector<EffectDescription> effects = [] {
        std::vector<EffectDescription> all = Stage::Instance().Effects().Effects();
        const char* const only = std::getenv("KELMO_ONLY");
        if (only) std::erase_if(all, [&](const auto& e) { return !FolderOf(e).starts_with(only); });
        return all;
    }();
    return effects;
}

const EffectDescription& EffectNamed(const std::string& name) {
    return Stage::Instance().Effects().Find(name);
}

int AtLeast(int wanted) {
    return std::getenv("KELMO_ONLY") ? 0 : wanted;
}

bool IsPart(const EffectDescription& effect) {
    return effect.name.find("(part of") != std::string::npos;
}

bool IsTitle(const EffectDescription& effect) {
    return effect.Type() == host::EffectType::kText;
}

bool IsOfTheMoment(const EffectDescription& effect) {
    return effect.name == "Body Lightning" || effect.name == "Hand Lightning Crown";
}

bool GoesOn(const EffectDescription& effect) {
    // Parts that keep people from frame to frame are told by their owners when to begin anew.
    return effect.name == "Hand Lightning to the Ground" || effect.name == "Lightning Arc" ||
           effect.name.starts_with("People Queue") || effect.name.starts_with("People Trail");
}

bool IsTransition(const EffectDescription& effect) {
    return effect.Type() == host::EffectType::kTransition;
}

std::vector<std::string> TakeComplaints() {
    return Stage::Instance().TakeComplaints();
}

std::string FolderOf(const EffectDescription& effect) {
    return Stage::Instance().Folder(effect.guid);
}

Picture DrawGoodMoment(const EffectDescription& effect, Picture& first, Picture& second,
                       const std::vector<std::string>& assignments) {
    const GoodMoment moment(effect);
    StagedEffect staged(effect, first.width, first.height, moment.frames, assignments);
    Picture drawn;
    for (int64_t frame = 0; frame <= moment.frame; ++frame) {
        Picture moved = Rolled(first, static_cast<int>(moment.frame - frame));
        drawn = staged.Draw(frame, moved, second, LoudSound(frame));
    }
    return drawn;
}

}  // namespace kelmo::test
