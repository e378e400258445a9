// SPDX-License-Identifier: GPL-3.0-or-later
#include <CLI/CLI.hpp>

#include <fmt/format.h>

#include "host/cli/command_line.h"
#include "host/cli/option_parsing.h"
#include "host/cli/render/render_job.h"
#include "host/session/host_error.h"

namespace kelmo::host {

namespace {

/// Texts as they come from the parser, before they are understood.
struct RenderTexts {
    std::vector<std::string> effects;
    std::vector<std::string> parameters;
    std::string size;
    std::string rate;
    std::string start;
    std::string duration;
    std::string at;
    std::string leadIn;
    std::string audio = "copy";
    std::string alpha = "auto";
    std::string textColor;
    std::string deinterlace = "auto";
};

/// Parameters belong to the --effect before them; those before the first belong to the first.
std::vector<EffectWish> InOrder(const RenderTexts& texts, const CLI::App& command,
                                const CLI::Option* effect, const CLI::Option* parameter) {
    std::vector<EffectWish> wishes(1);
    size_t nextEffect = 0;
    size_t nextParameter = 0;
    for (const CLI::Option* option : command.parse_order()) {
        if (option == effect) {
            if (nextEffect > 0) wishes.emplace_back();
            wishes.back().effect = texts.effects[nextEffect++];
        } else if (option == parameter) {
            wishes.back().assignments.push_back(texts.parameters[nextParameter++]);
        }
    }
    return wishes;
}

RenderRequest Understood(const RenderTexts& texts, RenderRequest request) {
    TimingWishes& timing = request.timing;
    timing.size = SizeOption("--size", texts.size);
    timing.rate = RateOption("--fps", texts.rate);
    timing.start = MomentOption("--start", texts.start);
    timing.duration = MomentOption("--duration", texts.duration);
    timing.at = MomentOption("--at", texts.at);
    timing.leadIn = MomentOption("--lead-in", texts.leadIn);
    request.withAudio = texts.audio == "copy";
    request.deinterlace = texts.deinterlace == "auto";
    request.alpha = texts.alpha == "keep"   ? AlphaWish::kKeep
                    : texts.alpha == "drop" ? AlphaWish::kDrop
                                            : AlphaWish::kAutomatic;
    request.text.color = ColorOption("--text-color", texts.textColor).value_or(0xFFFFFF);
    if (timing.at && !IsPicturePath(request.output)) {
        throw UsageError("--at chooses the moment of a picture, and the output is none");
    }
    return request;
}

void AddTimingOptions(CLI::App* command, RenderTexts& texts, RenderRequest& request) {
    command->add_option("--size", texts.size, "Size of the result; that of the first input")
        ->type_name("WxH");
    command->add_option("--fps", texts.rate, "Frames a second; those of the first input")
        ->type_name("N");
    command->add_option("--start", texts.start, "Where to begin in the first input")
        ->type_name("TIME");
    command
        ->add_option("--duration", texts.duration,
                     "Length; of a filter: the clip's, or 3 s for a picture; of a transition: 1 s")
        ->type_name("TIME");
    command->add_option("--frames", request.timing.maxFrames, "Write so many frames at most")
        ->check(Silent(CLI::PositiveNumber))
        ->type_name("N");
    command->add_option("--at", texts.at, "Moment of a picture output; the middle")
        ->type_name("TIME");
    command->add_option("--lead-in", texts.leadIn, "What is drawn before a picture output; 1 s")
        ->type_name("TIME");
    command->add_flag("--transition-only", request.timing.transitionOnly,
                      "Write the transition without the rest of the clips");
}

void AddFileOptions(CLI::App* command, RenderTexts& texts, RenderRequest& request) {
    command->add_option("--codec", request.codec, "Video encoder; by the ending of the output")
        ->type_name("NAME");
    command
        ->add_option("--pixel-format", request.pixelFormat,
                     "Samples that the encoder gets, like yuv444p; the chroma of the clip")
        ->type_name("NAME");
    command
        ->add_option("--deinterlace", texts.deinterlace, "Make whole pictures of interlaced ones")
        ->check(Silent(CLI::IsMember({"auto", "off"})))
        ->type_name("auto|off");
    command->add_option("--crf", request.crf, "Quality of the encoder; less is better for video")
        ->check(Silent(CLI::NonNegativeNumber))
        ->type_name("N");
    command->add_option("--preset", request.preset, "Speed of the encoder, like fast or slow")
        ->type_name("NAME");
    command->add_option("--format", request.container, "Container; needed for the output -")
        ->type_name("NAME");
    command->add_option("--audio", texts.audio, "Keep the sound, or write none")
        ->check(Silent(CLI::IsMember({"copy", "none"})))
        ->type_name("copy|none");
    command->add_option("--alpha", texts.alpha, "Keep transparency; auto: if an input has any")
        ->check(Silent(CLI::IsMember({"auto", "keep", "drop"})))
        ->type_name("auto|keep|drop");
    command->add_flag("--reproducible", request.reproducible, "Same input, same bytes");
    command->add_flag("-y,--overwrite", request.overwrite, "Overwrite the output");
}

void AddTextOptions(CLI::App* command, RenderTexts& texts, RenderRequest& request) {
    command
        ->add_option("--text", request.text.text,
                     "The effects work on this text, which lies over the input then")
        ->type_name("TEXT");
    command->add_option("--font", request.text.font, "Font file, or name of a family")
        ->type_name("FONT");
    command->add_option("--text-size", request.text.size, "Pixels; a sixth of the height")
        ->check(Silent(CLI::PositiveNumber))
        ->type_name("N");
    command->add_option("--text-color", texts.textColor, "Colour of the text; white")
        ->type_name("COLOR");
    command->add_flag("--bold", request.text.bold, "Bold text");
}

void AddPeopleOptions(CLI::App* command, RenderRequest& request) {
    command
        ->add_option("--mask", request.mask,
                     "Where the people are: picture, numbered pictures or clip; the AI library")
        ->type_name("FILE");
    command
        ->add_option("--pose", request.pose,
                     "Body points as `kelmo analyse --poses` writes them; the AI library")
        ->type_name("FILE");
}

}  // namespace

void AddRenderCommand(CLI::App& app, CommandLine& line) {
    CLI::App* command = app.add_subcommand("render", "Apply effects to a file, or join two clips");
    auto request = std::make_shared<RenderRequest>();
    auto texts = std::make_shared<RenderTexts>();
    CLI::Option* effect =
        command
            ->add_option("-e,--effect", texts->effects, "Name or GUID; several run in this order")
            ->required()
            ->allow_extra_args(false)
            ->type_name("EFFECT");
    command->add_option("-i,--input", request->inputs, "Video or picture; two for a transition")
        ->allow_extra_args(false)
        ->type_name("FILE");
    command->add_option("-o,--output", request->output, "File to write; the ending says which kind")
        ->required()
        ->type_name("FILE");
    CLI::Option* parameter =
        command
            ->add_option("-p,--param", texts->parameters,
                         "name=value, or name=value@time,value@time, of the effect before it")
            ->allow_extra_args(false)
            ->type_name("NAME=VALUE");
    AddTimingOptions(command, *texts, *request);
    AddTextOptions(command, *texts, *request);
    AddPeopleOptions(command, *request);
    AddFileOptions(command, *texts, *request);
    command->add_flag("--gpu", request->onGpu, "Keep the pictures on the graphics card");
    command->add_flag("--json", request->json, "Print JSON");
    command->callback([&line, command, request, texts, effect, parameter] {
        request->effects = InOrder(*texts, *command, effect, parameter);
        *request = Understood(*texts, *request);
        line.run = [&line, request] { return Render(line, *request); };
    });
}

}  // namespace kelmo::host
