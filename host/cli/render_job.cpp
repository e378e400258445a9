// SPDX-License-Identifier: GPL-3.0-or-later
#include "host/cli/render_job.h"

#include <algorithm>
#include <filesystem>
#include <memory>

#include <fmt/format.h>

#include "host/cli/clip_reader.h"
#include "host/cli/effect_json.h"
#include "host/cli/interrupt.h"
#include "host/cli/mask_reader.h"
#include "host/cli/plugin_runtime.h"
#include "host/cli/progress.h"
#include "host/cli/timeline_sound.h"
#include "host/media/frame_drain.h"
#include "host/media/media_writer.h"
#include "host/people/clip_people.h"
#include "host/session/effect_chain.h"
#include "host/session/host_error.h"

namespace kelmo::host {

namespace {

void RefuseOverwriting(const RenderRequest& request) {
    std::error_code ignored;
    if (request.output == "-") return;
    for (const std::string& input : request.inputs) {
        if (std::filesystem::equivalent(input, request.output, ignored)) {
            throw UsageError(fmt::format("{} is input and output; choose another -o", input));
        }
    }
    if (request.overwrite || !std::filesystem::exists(request.output, ignored)) return;
    throw HostError(fmt::format("{} exists; overwrite it with -y", request.output));
}

/// The effects that were asked for, looked up, with their parameters read.
std::vector<ChainLink> LookUp(const Catalogue& catalogue, const std::vector<EffectWish>& wishes) {
    std::vector<ChainLink> links;
    for (const EffectWish& wish : wishes) {
        ChainLink link;
        link.effect = &catalogue.Find(wish.effect);
        for (const std::string& assignment : wish.assignments) {
            link.tracks.push_back(ParseAssignment(*link.effect, assignment));
        }
        links.push_back(std::move(link));
    }
    return links;
}

void PlaceLinks(const RenderPlan& plan, std::vector<ChainLink>& links) {
    for (ChainLink& link : links) {
        const bool transition = link.effect->Type() == EffectType::kTransition;
        link.firstFrame = transition ? plan.transitionFirst : 0;
        link.frames = transition ? plan.transitionFrames : plan.frames;
    }
}

WriterOptions OptionsOf(const RenderRequest& request, const RenderPlan& plan, bool inputAlpha,
                        bool sound) {
    WriterOptions options;
    options.width = plan.width;
    options.height = plan.height;
    options.frameRate = plan.rate;
    options.videoCodec = request.codec;
    options.container = request.container;
    options.preset = request.preset;
    options.crf = request.crf;
    options.reproducible = request.reproducible;
    options.keepAlpha =
        request.alpha == AlphaWish::kKeep || (request.alpha == AlphaWish::kAutomatic && inputAlpha);
    if (!sound) return options;
    if (plan.clips.size() == 1) {
        options.audio = AudioMode::kCopy;
        options.audioSource = request.inputs[0];
        options.audioStart = plan.clips[0].start;
    } else {
        options.audio = AudioMode::kEncode;
        options.audioRate = kSoundRate;
    }
    return options;
}

/// What a text without any clip is drawn on: transparent, and as long as a picture.
const ClipFacts kTextAlone = {"the text", 1280, 720, {25, 1}, 0, true};

/// The run itself, with everything that lives as long as it does.
class Rendering {
public:
    Rendering(CommandLine& commandLine, RenderRequest renderRequest)
        : line(commandLine),
          request(std::move(renderRequest)),
          runtime(line.Where(), line.console, request.onGpu) {}

    int Run() {
        std::vector<ChainLink> links = LookUp(runtime.Effects(), request.effects);
        OpenInputs(links);
        MakePlan(links);
        OpenPeople();
        RefuseOverwriting(request);
        PlaceLinks(plan, links);
        EffectChain chain(runtime.Plugin(), runtime.Services(), std::move(links), plan.width,
                          plan.height, plan.rate, request.onGpu);
        if (request.text.Given()) {
            text = std::make_unique<TextLayer>(request.text, plan.width, plan.height, line.console);
        }
        OpenOutput();
        Draw(chain);
        return Finish();
    }

private:
    void OpenInputs(const std::vector<ChainLink>& links) {
        for (const ChainLink& link : links) {
            if (link.effect->Type() == EffectType::kTransition) request.timing.transition = true;
        }
        if (request.timing.transition && request.text.Given()) {
            throw UsageError("a transition has no --text; draw the text in a run of its own");
        }
        if ((!request.mask.empty() || !request.pose.empty()) && request.inputs.size() != 1) {
            throw UsageError("--mask and --pose tell about the people of one input, -i FILE");
        }
        if (request.inputs.empty() && !request.text.Given()) {
            throw UsageError("there is no input; give -i FILE, or --text for a text alone");
        }
        for (const std::string& input : request.inputs) {
            clips.push_back(std::make_unique<ClipReader>(input));
        }
    }

    void MakePlan(const std::vector<ChainLink>& links) {
        std::vector<ClipFacts> facts;
        for (const auto& clip : clips) facts.push_back(clip->Facts());
        if (clips.empty()) facts.push_back(kTextAlone);
        request.timing.singlePicture = IsPicturePath(request.output);
        plan = PlanRender(request.timing, facts);
        for (const std::string& warning : plan.warnings) line.console.Warning(warning);
        if (runtime.Device() != nullptr &&
            std::max(plan.width, plan.height) > runtime.Device()->LargestSide()) {
            throw HostError(fmt::format("{} draws no picture larger than {}; use a smaller --size",
                                        runtime.Device()->Info().renderer,
                                        runtime.Device()->LargestSide()));
        }
        if (links.size() > 1 && plan.frames > INT32_MAX) throw UsageError("too many frames");
    }

    /// Effects that need body points get them; masks they ask the AI library for by themselves.
    void OpenPeople() {
        if (!request.mask.empty()) mask = std::make_unique<MaskReader>(request.mask, plan.rate);
        std::unique_ptr<BodySource> bodies;
        if (!request.pose.empty()) {
            bodies = std::make_unique<RecordedBodies>(ReadBodyTrackFile(request.pose));
        } else {
            const Installation& where = line.Where();
            bodies = std::make_unique<SeenBodies>(
                where.plugins.string(), where.resources.string(),
                [this](const std::string& reason) { line.console.Warning(reason); });
        }
        people = std::make_unique<ClipPeople>(std::move(bodies));
    }

    void OpenOutput() {
        const bool inputAlpha =
            clips.empty() || std::any_of(clips.begin(), clips.end(),
                                         [](const auto& c) { return c->Info().hasAlpha; });
        effectSound = std::make_unique<TimelineSound>(plan, request.inputs);
        const bool wanted = request.withAudio && !request.timing.singlePicture &&
                            request.output.find('%') == std::string::npos;
        const bool sound = wanted && effectSound->Present();
        writer = MediaWriter::Open(request.output, OptionsOf(request, plan, inputAlpha, sound));
        if (sound && plan.clips.size() > 1) {
            // The writer's thread reads the sound once more, for itself.
            writtenSound = std::make_unique<TimelineSound>(plan, request.inputs);
        }
    }

    void Write(const Picture& picture) {
        writer->WriteFrame(picture);
        if (writtenSound) {
            const std::span<int16_t> samples = writtenSound->Frame(nextWritten);
            writer->WriteAudio(samples.data(), static_cast<int>(samples.size() / 2));
        }
        ++nextWritten;
    }

    void Draw(EffectChain& chain) {
        CatchInterrupts();
        nextWritten = plan.writeFrom;
        FrameDrain drain([this](const Picture& picture) { Write(picture); });
        Progress progress(line.console, "frames", plan.end - plan.drawFrom);
        for (size_t i = 0; i < clips.size(); ++i) {
            clips[i]->Begin(plan, plan.clips[i], plan.drawFrom);
        }
        if (mask) mask->Begin(plan, plan.clips[0], plan.drawFrom);
        Picture output;
        for (int64_t frame = plan.drawFrom; frame < plan.end && !Interrupted(); ++frame) {
            DrawFrame(chain, frame, output);
            if (frame >= plan.writeFrom) drain.Put(output);
            progress.Update(frame + 1 - plan.drawFrom);
        }
        drain.Finish();
        seconds = progress.Seconds();
    }

    void DrawFrame(EffectChain& chain, int64_t frame, Picture& output) {
        Picture* shown[2] = {};
        size_t count = 0;
        FrameExtras extras;
        extras.samples = effectSound->Frame(frame);
        for (size_t i = 0; i < clips.size(); ++i) {
            if (plan.clips[i].Covers(frame)) shown[count++] = &clips[i]->Next();
        }
        if (shown[0] != nullptr) {
            const double seconds = plan.clips[0].start + plan.rate.TimeOf(frame);
            people->BeginFrame(seconds, *shown[0], mask ? &mask->Next() : nullptr);
            extras.ai = people.get();
        }
        if (!text) {
            chain.Render(frame, *shown[0], shown[1], extras, output);
            return;
        }
        extras.text = text->Text(frame == plan.drawFrom);
        chain.Render(frame, text->Drawn(), nullptr, extras, output);
        if (shown[0] != nullptr) PutOver(output, *shown[0]);
    }

    int Finish() {
        const int64_t written = writer->FramesWritten();
        for (const auto& clip : clips) clip->ReportWarnings(line.console);
        if (mask) mask->ReportWarnings(line.console);
        if (written == 0) {
            writer->Abort();
            if (Interrupted()) return kExitInterrupted;
            throw UsageError("there is no frame to write; look at --frames and --duration");
        }
        writer->Finish();
        for (const std::string& warning : writer->Warnings()) line.console.Warning(warning);
        Report(written);
        return Interrupted() ? kExitInterrupted : kExitOk;
    }

    void Report(int64_t written) {
        const double drawn = static_cast<double>(written + plan.writeFrom - plan.drawFrom);
        const double speed = drawn / std::max(seconds, 1e-6);
        if (request.json && request.output != "-") {
            PrintJson({{"output", request.output},
                       {"frames", written},
                       {"width", plan.width},
                       {"height", plan.height},
                       {"frameRate", {plan.rate.numerator, plan.rate.denominator}},
                       {"videoCodec", writer->VideoCodec()},
                       {"audioCodec", writer->AudioCodec()},
                       {"seconds", seconds},
                       {"framesPerSecond", speed},
                       {"interrupted", Interrupted()}});
            return;
        }
        line.console.Note(fmt::format(
            "{}{}: {} frame{}, {}x{}, {:g} a second, {}{}{}; {:.1f} frames "
            "drawn a second",
            Interrupted() ? "interrupted; " : "", request.output, written, written == 1 ? "" : "s",
            plan.width, plan.height, plan.rate.PerSecond(), writer->VideoCodec(),
            writer->AudioCodec().empty() ? "" : " with sound ", writer->AudioCodec(), speed));
    }

    CommandLine& line;
    RenderRequest request;
    PluginRuntime runtime;
    std::vector<std::unique_ptr<ClipReader>> clips;
    RenderPlan plan;
    std::unique_ptr<TextLayer> text;
    std::unique_ptr<MaskReader> mask;
    std::unique_ptr<ClipPeople> people;
    std::unique_ptr<TimelineSound> effectSound;
    std::unique_ptr<TimelineSound> writtenSound;
    std::unique_ptr<MediaWriter> writer;
    int64_t nextWritten = 0;
    double seconds = 0;
};

}  // namespace

int Render(CommandLine& line, RenderRequest request) {
    return Rendering(line, std::move(request)).Run();
}

}  // namespace kelmo::host
