// SPDX-License-Identifier: GPL-3.0-or-later
#include <CLI/CLI.hpp>

#include <algorithm>
#include <cstdio>
#include <iostream>
#include <iterator>

#include <fmt/format.h>

#include "host/cli/command_line.h"
#include "host/cli/option_parsing.h"
#include "host/cli/plugin_runtime.h"
#include "host/cli/render/render_job.h"
#include "host/session/host_error.h"
#include "host/session/text_values.h"

namespace kelmo::host {

namespace {

/// Looks are the entries with this ending that have this parameter.
constexpr const char* kEnding = " title";
constexpr const char* kEntryMotion = "AnimationType";
constexpr const char* kExitMotion = "AnimationExitType";

struct Motion {
    const char* name;
    const char* words;
};

/// In the order of the values of the two parameters.
constexpr Motion kMotions[] = {
    {"none", "stands there from the start"},
    {"fade", "letter by letter out of nothing"},
    {"fly", "flies in from the left"},
    {"drop", "falls from above and bounces"},
    {"rise", "comes up from below"},
    {"turn", "turns to the front"},
    {"spin", "spins as it grows"},
    {"unfold", "folds up from its foot"},
    {"scatter", "gathers from all over the frame"},
    {"zoom", "comes from far away"},
    {"wave", "runs in on a wave"},
    {"typewriter", "letter after letter at once"},
    {"pop", "grows a little too far and back"},
};

struct TitleTexts {
    std::string text;
    std::string look = "gold";
    std::string entry = "rise";
    std::string exit = "fade";
    std::string size;
    std::string rate;
    std::string duration = "4s";
    std::string at;
    std::string place;
    std::string align = "center";
    std::vector<std::string> parameters;
    bool light = false;
    bool list = false;
};

/// "Brushed Steel Title" is "brushed-steel".
std::string LookName(const EffectDescription& effect) {
    std::string name = LowerCase(effect.name);
    const bool isLook =
        name.ends_with(kEnding) &&
        std::ranges::any_of(effect.parameters, [](const ParameterDescription& parameter) {
            return parameter.name == kEntryMotion;
        });
    if (!isLook) return {};
    name.erase(name.size() - std::char_traits<char>::length(kEnding));
    std::ranges::replace(name, ' ', '-');
    return name;
}

int List(CommandLine& line) {
    PluginRuntime runtime(line.Where(), line.console, false);
    fmt::print("looks (--look)\n");
    for (const EffectDescription& effect : runtime.Effects().Effects()) {
        const std::string look = LookName(effect);
        if (!look.empty()) fmt::print("  {:<16}{}\n", look, effect.name);
    }
    fmt::print("motions (--in, --out)\n");
    for (const Motion& motion : kMotions) fmt::print("  {:<16}{}\n", motion.name, motion.words);
    return kExitOk;
}

std::string MotionValue(const char* option, const char* parameter, const std::string& name) {
    const auto* const found = std::ranges::find_if(
        kMotions, [&](const Motion& motion) { return motion.name == LowerCase(name); });
    if (found == std::end(kMotions)) {
        throw UsageError(fmt::format(
            "{}: there is no motion \"{}\"; `kelmo title --list` shows all", option, name));
    }
    return fmt::format("{}={}", parameter, found - std::begin(kMotions));
}

/// "-" is what comes on standard input, "@FILE" what stands in a file.
std::string TextOf(const std::string& given) {
    std::string text = given;
    if (given == "-") {
        text.assign(std::istreambuf_iterator<char>(std::cin), {});
    } else if (given.size() > 1 && given.front() == '@') {
        std::FILE* const file = std::fopen(given.c_str() + 1, "rb");
        if (!file) throw HostError(fmt::format("cannot read the text in {}", given.substr(1)));
        text.clear();
        for (int c = std::fgetc(file); c != EOF; c = std::fgetc(file)) {
            text.push_back(static_cast<char>(c));
        }
        std::fclose(file);
    }
    while (!text.empty() && (text.back() == '\n' || text.back() == '\r')) text.pop_back();
    if (text.empty()) throw UsageError("the title has no text");
    return text;
}

void SetPlace(const std::string& place, TextWish& wish) {
    if (place.empty()) return;
    const auto parts = SplitAt(place, ',');
    const auto x = parts.size() == 2 ? ParseNumber(Trimmed(parts[0])) : std::nullopt;
    const auto y = parts.size() == 2 ? ParseNumber(Trimmed(parts[1])) : std::nullopt;
    if (!x || !y) {
        throw UsageError(
            fmt::format("--place: \"{}\" is not X,Y in parts of the frame, like 0.5,0.8", place));
    }
    wish.positionX = static_cast<float>(*x);
    wish.positionY = static_cast<float>(*y);
}

RenderRequest Understood(const TitleTexts& texts, RenderRequest request) {
    TimingWishes& timing = request.timing;
    timing.size = SizeOption("--size", texts.size);
    timing.rate = RateOption("--fps", texts.rate);
    timing.duration = MomentOption("--duration", texts.duration);
    timing.at = MomentOption("--at", texts.at);
    request.text.text = TextOf(texts.text);
    request.text.bold = !texts.light;
    request.text.share = 0.25;
    request.text.alignment = texts.align == "left"    ? TextAlignment::kLeft
                             : texts.align == "right" ? TextAlignment::kRight
                                                      : TextAlignment::kCenter;
    SetPlace(texts.place, request.text);
    EffectWish wish;
    wish.effect = texts.look + kEnding;
    std::ranges::replace(wish.effect, '-', ' ');
    wish.assignments = {MotionValue("--in", kEntryMotion, texts.entry),
                        MotionValue("--out", kExitMotion, texts.exit)};
    wish.assignments.insert(wish.assignments.end(), texts.parameters.begin(),
                            texts.parameters.end());
    request.effects = {wish};
    return request;
}

void AddTextOptions(CLI::App* command, TitleTexts& texts, RenderRequest& request) {
    TextWish& wish = request.text;
    command->add_option("--font", wish.font, "Font file, or name of a family")->type_name("FONT");
    command->add_option("--text-size", wish.size, "Pixels; a quarter of the height")
        ->check(Silent(CLI::PositiveNumber))
        ->type_name("N");
    command->add_flag("--light", texts.light, "The font's regular weight instead of bold");
    command->add_option("--place", texts.place, "Middle of the text; 0.5,0.5")->type_name("X,Y");
    command->add_option("--angle", wish.angle, "Degrees, counter-clockwise")->type_name("N");
    command->add_option("--align", texts.align, "Lines of different length")
        ->check(Silent(CLI::IsMember({"left", "center", "right"})))
        ->type_name("left|center|right");
    command->add_option("--letter-spacing", wish.letterSpacing, "Pixels")->type_name("N");
    command->add_option("--line-spacing", wish.lineSpacing, "Times the font's own")
        ->check(Silent(CLI::NonNegativeNumber))
        ->type_name("N");
}

void AddFileOptions(CLI::App* command, TitleTexts& texts, RenderRequest& request) {
    command->add_option("-i,--input", request.inputs, "What the title lies over; nothing")
        ->expected(1)
        ->type_name("FILE");
    command->add_option("-o,--output", request.output, "Video or picture to write")
        ->type_name("FILE");
    command->add_option("--size", texts.size, "Size of the result; the input's, or 1280x720")
        ->type_name("WxH");
    command->add_option("--fps", texts.rate, "Frames a second")->type_name("N");
    command->add_option("--duration", texts.duration, "Length; 4 s")->type_name("TIME");
    command->add_option("--at", texts.at, "Moment of a picture output; the middle")
        ->type_name("TIME");
    command->add_option("--codec", request.codec, "Video encoder; by the ending of the output")
        ->type_name("NAME");
    command->add_flag("-y,--overwrite", request.overwrite, "Overwrite the output");
}

}  // namespace

void AddTitleCommand(CLI::App& app, CommandLine& line) {
    CLI::App* command = app.add_subcommand("title", "Make a 3D title, alone or over a clip");
    auto request = std::make_shared<RenderRequest>();
    auto texts = std::make_shared<TitleTexts>();
    command
        ->add_option("text", texts->text,
                     "The text; - reads it from standard input, @FILE from a file")
        ->type_name("TEXT");
    command->add_option("--look", texts->look, "What the letters are made of; gold")
        ->type_name("NAME");
    command->add_option("--in", texts->entry, "How they come; rise")->type_name("MOTION");
    command->add_option("--out", texts->exit, "How they go; fade")->type_name("MOTION");
    command->add_option("-p,--param", texts->parameters, "name=value of the look, as in render")
        ->allow_extra_args(false)
        ->type_name("NAME=VALUE");
    command->add_flag("--list", texts->list, "Show the looks and the motions");
    AddTextOptions(command, *texts, *request);
    AddFileOptions(command, *texts, *request);
    command->callback([&line, request, texts] {
        if (texts->list) {
            line.run = [&line] { return List(line); };
            return;
        }
        if (request->output.empty()) throw UsageError("there is no output; give -o FILE");
        *request = Understood(*texts, *request);
        line.run = [&line, request] { return Render(line, *request); };
    });
}

}  // namespace kelmo::host
