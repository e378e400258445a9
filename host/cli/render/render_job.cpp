// SPDX-License-Identifier: GPL-3.0-or-later
#include "host/cli/render/render_job.h"

#include <algorithm>
#include <memory>

#include <fmt/format.h>

#include "host/cli/effect_json.h"
#include "host/cli/interrupt.h"
#include "host/cli/plugin_runtime.h"
#include "host/cli/progress.h"
#include "host/cli/render/clip_reader.h"
#include "host/cli/render/mask_reader.h"
#include "host/cli/render/output_check.h"
#include "host/cli/render/timeline_sound.h"
#include "host/media/common/file_names.h"
#include "host/media/encode/frame_drain.h"
#include "host/media/encode/media_writer.h"
#include "host/people/clip_people.h"
#include "host/session/effect_chain.h"
#include "host/session/host_error.h"

namespace kelmo::host {

namespace {

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
    options.pixelFormat = request.pixelFormat;
    options.reproducible = request.reproducible;
    options.flatten = request.alpha == AlphaWish::kDrop;
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
        std::vector<std::string> read = request.inputs;
        read.insert(read.end(), {request.mask, request.pose});
        CheckOutputs({request.output}, read, request.overwrite);
        PlaceLinks(plan, links);
        EffectChain chain(runtime.Plugin(), runtime.Services(), std::move(links), plan.width,
                          plan.height, plan.rate, request.onGpu);
        if (request.text.Given()) {
            text = std::make_unique<TextLayer>(request.text, plan.width, plan.height, line.console);
        }
        CatchInterrupts();
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
            ReaderOptions options = SequenceAt(request.timing.rate);
            options.deinterlace = request.deinterlace;
            clips.push_back(std::make_unique<ClipReader>(input, options));
            for (const std::string& note : clips.back()->Info().notes) {
                line.console.Note(note);
                notes.push_back(note);
            }
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
        if (!request.mask.empty()) {
            mask = std::make_unique<MaskReader>(request.mask, clips[0]->Info().frameRate);
        }
        std::unique_ptr<BodySource> bodies;
        if (!request.pose.empty()) {
            const MediaInfo& clip = clips[0]->Info();
            BodyTrack recorded = ReadBodyTrackFile(request.pose);
            PlaceInFrame(recorded, FittedInto(plan.width, plan.height, clip.width, clip.height),
                         plan.width, plan.height);
            bodies = std::make_unique<RecordedBodies>(std::move(recorded));
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
        TellUnheard();
        const bool wanted = request.withAudio && !HasPictureEnding(request.output);
        const bool sound = wanted && effectSound->Present();
        WriterOptions options = OptionsOf(request, plan, inputAlpha, sound);
        // Pictures are written for every player; clips keep their chroma.
        if (!clips.empty() && !clips[0]->Info().still) {
            options.sourceFormat = clips[0]->Info().pixelFormat;
        }
        writer = MediaWriter::Open(request.output, options);
        if (sound && plan.clips.size() > 1) {
            // The writer's thread reads the sound once more, for itself.
            writtenSound = std::make_unique<TimelineSound>(plan, request.inputs);
        }
    }

    void TellUnheard() {
        for (size_t i = 0; i < clips.size(); ++i) {
            if (!clips[i]->Info().hasAudio || CanBeReadAgain(request.inputs[i])) continue;
            line.console.Warning(
                fmt::format("the sound of {} is left out, since only its pictures can be read; "
                            "give a file to keep it",
                            request.inputs[i]));
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
        nextWritten = plan.writeFrom;
        FrameDrain drain([this](const Picture& picture) { Write(picture); });
        Progress progress(line.console, "frames", plan.end - plan.drawFrom);
        for (size_t i = 0; i < clips.size(); ++i) {
            clips[i]->Begin(plan, plan.clips[i], plan.drawFrom);
        }
        if (mask) mask->Begin(plan, plan.clips[0], plan.drawFrom);
        Picture output;
        for (int64_t frame = plan.drawFrom; frame < plan.end; ++frame) {
            cut = Interrupted();
            if (cut) break;
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
            // What is known of a picture holds as long as it is shown.
            const bool still = clips[0]->Info().still;
            const double seconds = still ? 0 : plan.clips[0].start + plan.rate.TimeOf(frame);
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
        for (const std::string& warning : effectSound->Warnings()) line.console.Warning(warning);
        if (written == 0) {
            writer->Abort();
            if (cut) return kExitInterrupted;
            throw UsageError("there is no frame to write; look at --frames and --duration");
        }
        writer->Finish();
        for (const std::string& warning : writer->Warnings()) line.console.Warning(warning);
        Report(written);
        return cut ? kExitInterrupted : kExitOk;
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
                       {"notes", notes},
                       {"seconds", seconds},
                       {"framesPerSecond", speed},
                       {"interrupted", cut}});
            return;
        }
        line.console.Note(fmt::format(
            "{}{}: {} frame{}, {}x{}, {:g} a second, {}{}{}; {:.1f} frames "
            "drawn a second",
            cut ? "interrupted; " : "", request.output, written, written == 1 ? "" : "s",
            plan.width, plan.height, plan.rate.PerSecond(), writer->VideoCodec(),
            writer->AudioCodec().empty() ? "" : " with sound ", writer->AudioCodec(), speed));
    }

    CommandLine& line;
    RenderRequest request;
    PluginRuntime runtime;
    std::vector<std::unique_ptr<ClipReader>> clips;
    std::vector<std::string> notes;  ///< how the clips are read
    RenderPlan plan;
    std::unique_ptr<TextLayer> text;
    std::unique_ptr<MaskReader> mask;
    std::unique_ptr<ClipPeople> people;
    std::unique_ptr<TimelineSound> effectSound;
    std::unique_ptr<TimelineSound> writtenSound;
    std::unique_ptr<MediaWriter> writer;
    int64_t nextWritten = 0;
    double seconds = 0;
    bool cut = false;  ///< an interrupt came before the last frame
};

}  // namespace

int Render(CommandLine& line, RenderRequest request) {
    return Rendering(line, std::move(request)).Run();
}

}  // namespace kelmo::host
