// SPDX-License-Identifier: GPL-3.0-or-later
#include <CLI/CLI.hpp>

#include <algorithm>
#include <filesystem>

#include <fmt/format.h>

#include "host/cli/command_line.h"
#include "host/cli/commands/contact_sheet.h"
#include "host/cli/effect_json.h"
#include "host/cli/interrupt.h"
#include "host/cli/option_parsing.h"
#include "host/cli/plugin_runtime.h"
#include "host/cli/progress.h"
#include "host/cli/render/output_check.h"
#include "host/cli/render/render_plan.h"
#include "host/cli/render/sample_sound.h"
#include "host/cli/render/text_layer.h"
#include "host/media/decode/media_reader.h"
#include "host/media/encode/media_writer.h"
#include "host/people/clip_people.h"
#include "host/session/effect_chain.h"
#include "host/session/host_error.h"

namespace kelmo::host {

namespace {

constexpr FrameRate kGalleryRate{25, 1};
constexpr int64_t kFilterFrames = 50;
constexpr int64_t kTransitionFrames = 25;
constexpr double kGoodMoment = 0.4;  // of the effect: in the middle some show nothing but a colour
/// Mean difference of a channel, in levels, below which a picture does not show the effect.
constexpr double kHardlyChanged = 1.5;
constexpr const char* kSampleText = "Text";

struct GalleryOptions {
    std::string output;
    std::vector<std::string> inputs;
    std::string tile = "240x135";
    std::string type;
    std::string search;
    int columns = 0;
    bool each = false;
    bool overwrite = false;
    bool onGpu = false;
    bool json = false;
};

/// Pictures that lie with the material, for a gallery without inputs.
std::vector<std::string> SamplePictures(const Installation& where) {
    std::vector<std::string> found;
    std::error_code error;
    const std::filesystem::path folder = where.resources / "qor_effect" / "samples";
    for (const auto& entry : std::filesystem::directory_iterator(folder, error)) {
        if (IsPicturePath(entry.path().string())) found.push_back(entry.path().string());
    }
    std::sort(found.begin(), found.end());
    if (found.size() > 2) found.resize(2);
    return found;
}

Picture ReadPicture(const std::string& path, PixelSize size) {
    ReaderOptions options;
    options.width = size.width;
    options.height = size.height;
    const auto reader = MediaReader::Open(path, options);
    Picture picture;
    // The middle of a clip says more than its often black beginning.
    reader->ReadFrameAt(reader->Info().still ? 0 : reader->Info().duration / 2, picture);
    return picture;
}

Picture Mirrored(const Picture& picture) {
    Picture mirrored = picture;
    for (int y = 0; y < picture.height; ++y) {
        const auto* from = reinterpret_cast<const uint32_t*>(picture.Row(y));
        std::reverse_copy(from, from + picture.width, reinterpret_cast<uint32_t*>(mirrored.Row(y)));
    }
    return mirrored;
}

/// Mean difference of the channels of two pictures of one size, 0..255.
double Difference(const Picture& a, const Picture& b) {
    int64_t sum = 0;
    for (size_t i = 0; i < a.pixels.size(); ++i) sum += std::abs(a.pixels[i] - b.pixels[i]);
    return static_cast<double>(sum) / static_cast<double>(std::max<size_t>(a.pixels.size(), 1));
}

/// A name that is a file name everywhere, and no other effect's.
std::string FileName(const EffectDescription& effect) {
    std::string name;
    for (const char c : effect.name) {
        const bool plain = (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') ||
                           (c >= '0' && c <= '9') || c == '-' || c == '_';
        name += plain ? c : '_';
    }
    return name + "_" + effect.guid + ".png";
}

void WritePicture(const std::string& path, const Picture& picture) {
    WriterOptions options;
    options.width = picture.width;
    options.height = picture.height;
    options.keepAlpha = true;
    const auto writer = MediaWriter::Open(path, options);
    writer->WriteFrame(picture);
    writer->Finish();
}

class Gallery {
public:
    Gallery(CommandLine& commandLine, const GalleryOptions& galleryOptions)
        : line(commandLine),
          options(galleryOptions),
          runtime(line.Where(), line.console, options.onGpu),
          people(std::make_unique<SeenBodies>(
              line.Where().plugins.string(), line.Where().resources.string(),
              [this](const std::string& reason) { line.console.Warning(reason); })) {}

    int Run() {
        ReadInputs();
        Choose();
        const int columns = options.columns > 0
                                ? options.columns
                                : ContactSheet::GoodColumns(static_cast<int>(chosen.size()),
                                                            size.width, size.height);
        ContactSheet sheet(static_cast<int>(chosen.size()), columns, size.width, size.height);
        NameFiles();
        MakeFolder();
        CatchInterrupts();
        {
            Progress progress(line.console, "effects", static_cast<int64_t>(chosen.size()));
            for (const EffectDescription* effect : chosen) {
                if (Interrupted()) return kExitInterrupted;
                AddTile(*effect, sheet);
                progress.Update(progress.Done() + 1);
            }
        }
        WritePicture(sheetPath, sheet.Sheet());
        return Report();
    }

private:
    void ReadInputs() {
        size = RequiredSize("--tile", options.tile);
        inputs = options.inputs;
        if (inputs.empty()) inputs = SamplePictures(line.Where());
        if (inputs.empty()) {
            throw UsageError("say which picture the effects are shown on: -i PICTURE");
        }
        if (inputs.size() > 2) throw UsageError("a gallery takes two inputs at most");
        first = ReadPicture(inputs[0], size);
        second = inputs.size() > 1 ? ReadPicture(inputs[1], size) : Mirrored(first);
        secondIsOwn = inputs.size() > 1;
    }

    void Choose() {
        const std::string word = LowerCase(options.search);
        for (const EffectDescription& effect : runtime.Effects().Effects()) {
            if (!options.type.empty() && options.type != TypeName(effect.Type())) continue;
            if (word.empty() && effect.IsPart()) continue;
            if (LowerCase(effect.name).find(word) == std::string::npos) continue;
            chosen.push_back(&effect);
        }
        const bool texts = std::any_of(chosen.begin(), chosen.end(), [](const auto* effect) {
            return effect->Type() == EffectType::kText;
        });
        if (texts) {
            TextWish wish;
            wish.text = kSampleText;
            wish.size = size.height / 2.5;
            sampleText = std::make_unique<TextLayer>(wish, size.width, size.height, line.console);
        }
        if (chosen.empty()) throw HostError("no effect matches; `kelmo list` shows all");
    }

    void NameFiles() {
        const bool single = IsPicturePath(options.output);
        folder = single ? std::filesystem::path(options.output).parent_path()
                        : std::filesystem::path(options.output);
        sheetPath = single ? options.output : (folder / "sheet.png").string();
        std::vector<std::string> outputs = {sheetPath};
        if (options.each) {
            for (const EffectDescription* effect : chosen) outputs.push_back(PictureOf(*effect));
        }
        CheckOutputs(outputs, inputs, options.overwrite);
    }

    std::string PictureOf(const EffectDescription& effect) const {
        return (folder / FileName(effect)).string();
    }

    void MakeFolder() {
        std::error_code error;
        if (!folder.empty()) std::filesystem::create_directories(folder, error);
        if (error) {
            throw HostError(
                fmt::format("cannot make the folder {}: {}", folder.string(), error.message()));
        }
    }

    /// A good moment of the effect. One that hardly changes the first input (no lights there, say)
    /// is shown on the second, if that has more for it.
    Picture Draw(const EffectDescription& effect) {
        Picture picture = DrawOn(effect, first);
        if (effect.Type() != EffectType::kFilter || !secondIsOwn) return picture;
        const double change = Difference(picture, first);
        if (change >= kHardlyChanged) return picture;
        Picture other = DrawOn(effect, second);
        return Difference(other, second) > change ? other : picture;
    }

    /// Drawn after all frames before it.
    Picture DrawOn(const EffectDescription& effect, Picture& clip) {
        const bool transition = effect.Type() == EffectType::kTransition;
        ChainLink link;
        link.effect = &effect;
        link.frames = transition ? kTransitionFrames : kFilterFrames;
        std::vector<ChainLink> links = {std::move(link)};
        EffectChain chain(runtime.Plugin(), runtime.Services(), std::move(links), size.width,
                          size.height, kGalleryRate, options.onGpu);
        const bool text = effect.Type() == EffectType::kText;
        SampleSound sound(kGalleryRate);
        const auto last = static_cast<int64_t>(
            kGoodMoment * static_cast<double>(transition ? kTransitionFrames : kFilterFrames));
        Picture& shown = text ? sampleText->Drawn() : clip;
        Picture output;
        for (int64_t frame = 0; frame <= last; ++frame) {
            FrameExtras extras;
            extras.samples = sound.Frame(frame);
            extras.ai = &people;
            people.BeginFrame(kGalleryRate.TimeOf(frame), clip, nullptr);
            if (text) extras.text = sampleText->Text(frame == 0);
            chain.Render(frame, shown, transition ? &second : nullptr, extras, output);
        }
        if (text) PutOver(output, first);
        return output;
    }

    void AddTile(const EffectDescription& effect, ContactSheet& sheet) {
        nlohmann::ordered_json entry = EffectSummary(effect);
        try {
            const Picture picture = Draw(effect);
            sheet.Add(picture, effect.name);
            if (options.each) {
                const std::string path = PictureOf(effect);
                WritePicture(path, picture);
                entry["picture"] = path;
            }
        } catch (const std::exception& error) {
            ++failed;
            line.console.Warning(error.what());
            entry["error"] = error.what();
            Picture empty = first;
            for (uint8_t& value : empty.pixels) value = static_cast<uint8_t>(value / 5);
            sheet.Add(empty, "FAILED: " + effect.name);
        }
        entries.push_back(std::move(entry));
    }

    int Report() {
        if (options.json) {
            PrintJson({{"sheet", sheetPath}, {"failed", failed}, {"effects", entries}});
        } else {
            fmt::print("{}: {} effects, {} failed\n", sheetPath, chosen.size(), failed);
        }
        return failed == 0 ? kExitOk : kExitFailed;
    }

    CommandLine& line;
    const GalleryOptions& options;
    PluginRuntime runtime;
    ClipPeople people;
    PixelSize size;
    std::vector<std::string> inputs;
    Picture first;
    Picture second;
    bool secondIsOwn = false;  // and no copy of the first
    std::unique_ptr<TextLayer> sampleText;
    std::vector<const EffectDescription*> chosen;
    std::filesystem::path folder;
    std::string sheetPath;
    nlohmann::ordered_json entries = nlohmann::ordered_json::array();
    int failed = 0;
};

}  // namespace

void AddGalleryCommand(CLI::App& app, CommandLine& line) {
    CLI::App* command =
        app.add_subcommand("gallery", "Draw every effect into one sheet with the names below");
    auto options = std::make_shared<GalleryOptions>();
    command->add_option("-o,--output", options->output, "Picture of the sheet, or a folder for it")
        ->required()
        ->type_name("FILE|DIR");
    command
        ->add_option("-i,--input", options->inputs,
                     "Picture or video; the second is for transitions, and for effects that "
                     "find nothing to do on the first")
        ->allow_extra_args(false)
        ->type_name("FILE");
    command->add_option("--tile", options->tile, "Size of each picture")
        ->type_name("WxH")
        ->capture_default_str();
    command->add_option("--columns", options->columns, "Pictures in a row; about a square sheet")
        ->check(Silent(CLI::PositiveNumber))
        ->type_name("N");
    command->add_option("--type", options->type, "Only effects of this type")
        ->check(Silent(CLI::IsMember({"filter", "transition", "text"})))
        ->type_name("filter|transition|text");
    command->add_option("--search", options->search, "Only effects whose name has this word")
        ->type_name("WORD");
    command->add_flag("--each", options->each, "Write a picture of each effect too");
    command->add_flag("-y,--overwrite", options->overwrite, "Overwrite the pictures");
    command->add_flag("--gpu", options->onGpu, "Keep the pictures on the graphics card");
    command->add_flag("--json", options->json, "Print JSON");
    command->callback([&line, options] {
        line.run = [&line, options] { return Gallery(line, *options).Run(); };
    });
}

}  // namespace kelmo::host
