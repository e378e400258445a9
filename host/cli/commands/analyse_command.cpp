// SPDX-License-Identifier: GPL-3.0-or-later
#include <CLI/CLI.hpp>

#include <filesystem>

#include <fmt/format.h>

#include "host/cli/command_line.h"
#include "host/cli/effect_json.h"
#include "host/cli/interrupt.h"
#include "host/cli/option_parsing.h"
#include "host/cli/progress.h"
#include "host/cli/render/clip_reader.h"
#include "host/cli/render/output_check.h"
#include "host/cli/render/render_plan.h"
#include "host/media/encode/frame_drain.h"
#include "host/media/encode/media_writer.h"
#include "host/media/encode/part_file.h"
#include "host/people/ai_library.h"
#include "host/people/people_track.h"
#include "host/session/host_error.h"

namespace kelmo::host {

namespace {

struct AnalyseRequest {
    std::string input;
    std::string mask;
    std::string faces;
    std::string poses;
    std::string rate;
    std::string duration;
    bool overwrite = false;
    bool json = false;
};

/// Coverage as a white shape on black, which every file can hold.
void MakeOpaque(Picture& mask) {
    for (size_t i = 3; i < mask.pixels.size(); i += 4) mask.pixels[i] = 255;
}

/// A filter's results of one kind, gathered for a file.
template <typename Record, typename Person>
class Gatherer {
public:
    Gatherer(const AiLibrary& library, const char* guid) : filter(library.Make(guid)) {}

    void Add(int64_t frame, double seconds, const Picture& picture,
             std::vector<Person> Record::*people) {
        const auto found = filter->Analyse<Record>(picture);
        if (!found) throw HostError(fmt::format("the AI library failed at frame {}", frame));
        PeopleOfFrame<Person> entry{frame, seconds, (*found).*people};
        most = std::max(most, entry.people.size());
        track.frames.push_back(std::move(entry));
    }

    PeopleTrack<Person> track;
    size_t most = 0;  ///< people at once

private:
    std::unique_ptr<AiLibrary::Filter> filter;
};

using BodyGatherer = Gatherer<AIDATA::HumanPoseDatas, AIDATA::HumanPose>;
using FaceGatherer = Gatherer<AIDATA::HumanFaceInfoMultiDatas, AIDATA::HumanFaceInfo>;

class Analysis {
public:
    Analysis(CommandLine& commandLine, const AnalyseRequest& analyseRequest)
        : line(commandLine),
          request(analyseRequest),
          rate(RateOption("--fps", request.rate)),
          clip(request.input, SequenceAt(rate)) {}

    int Run() {
        CheckOutputs(Outputs(), {request.input}, request.overwrite);
        MakePlan();
        library = LoadLibrary();
        if (!request.mask.empty()) maskFilter = library->Make(kAiMaskFilter);
        if (!request.faces.empty()) {
            faces = std::make_unique<FaceGatherer>(*library, kAiFaceFilter);
        }
        if (!request.poses.empty()) {
            bodies = std::make_unique<BodyGatherer>(*library, kAiBodyFilter);
        }
        CatchInterrupts();
        if (maskFilter) OpenMask();
        Look();
        return Finish();
    }

private:
    std::vector<std::string> Outputs() const {
        std::vector<std::string> outputs;
        for (const std::string* output : {&request.mask, &request.faces, &request.poses}) {
            if (!output->empty()) outputs.push_back(*output);
        }
        if (outputs.empty()) {
            throw UsageError("say what to write: --mask FILE, --faces FILE or --poses FILE");
        }
        return outputs;
    }

    void MakePlan() {
        TimingWishes timing;
        timing.rate = rate;
        timing.duration = MomentOption("--duration", request.duration);
        if (clip.Info().still) timing.maxFrames = 1;
        plan = PlanRender(timing, {clip.Facts()});
        for (const std::string& warning : plan.warnings) line.console.Warning(warning);
    }

    std::unique_ptr<AiLibrary> LoadLibrary() const {
        const Installation where = line.Where();
        try {
            return std::make_unique<AiLibrary>(
                where.plugins.string(), where.resources.string(),
                [&console = line.console](int32_t level, std::string_view text) {
                    console.PluginLine(level, text);
                });
        } catch (const HostError& error) {
            throw HostError(fmt::format(
                "{}; nothing can be analysed without the AI library: `kelmo doctor` says more",
                error.what()));
        }
    }

    void OpenMask() {
        WriterOptions options;
        options.width = plan.width;
        options.height = plan.height;
        options.frameRate = plan.rate;
        writer = MediaWriter::Open(request.mask, options);
    }

    void Look() {
        Progress progress(line.console, "frames", plan.end);
        clip.Begin(plan, plan.clips[0], 0);
        FrameDrain drain([this](const Picture& picture) { writer->WriteFrame(picture); });
        Picture mask;
        for (; seen < plan.end; ++seen) {
            cut = Interrupted();
            if (cut) break;
            const Picture& picture = clip.Next();
            const double seconds = plan.rate.TimeOf(seen);
            if (faces) {
                faces->Add(seen, seconds, picture, &AIDATA::HumanFaceInfoMultiDatas::faces);
            }
            if (bodies) bodies->Add(seen, seconds, picture, &AIDATA::HumanPoseDatas::persons);
            if (maskFilter) {
                if (!maskFilter->Mask(picture, mask)) {
                    throw HostError(fmt::format("the AI library failed at frame {}", seen));
                }
                MakeOpaque(mask);
                drain.Put(mask);
            }
            progress.Update(seen + 1);
        }
        drain.Finish();
    }

    template <typename Some>
    void WriteTrack(Some& some, const std::string& path) {
        some.track.clip = std::filesystem::path(request.input).filename().string();
        some.track.rate = plan.rate;
        WriteText(path, ToJson(some.track));
    }

    static void WriteText(const std::string& path, const std::string& text) {
        PartFile file(path);
        file.Write(text.data(), text.size());
        file.Commit();
    }

    int Finish() {
        clip.ReportWarnings(line.console);
        if (seen == 0) {
            if (writer) writer->Abort();
            return cut ? kExitInterrupted : kExitFailed;
        }
        if (writer) {
            writer->Finish();
            for (const std::string& warning : writer->Warnings()) line.console.Warning(warning);
        }
        if (faces) WriteTrack(*faces, request.faces);
        if (bodies) WriteTrack(*bodies, request.poses);
        Report();
        return cut ? kExitInterrupted : kExitOk;
    }

    void Report() {
        if (request.json) {
            nlohmann::ordered_json report = {
                {"frames", seen},
                {"frameRate", {plan.rate.numerator, plan.rate.denominator}},
                {"width", plan.width},
                {"height", plan.height}};
            if (faces) report["mostFaces"] = faces->most;
            if (bodies) report["mostBodies"] = bodies->most;
            report["interrupted"] = cut;
            PrintJson(report);
            return;
        }
        std::string found;
        if (faces) found += fmt::format("; {} face(s) at once at most", faces->most);
        if (bodies) found += fmt::format("; {} bodies at once at most", bodies->most);
        line.console.Note(
            fmt::format("{}{} frame(s) analysed{}", cut ? "interrupted; " : "", seen, found));
    }

    CommandLine& line;
    const AnalyseRequest& request;
    std::optional<FrameRate> rate;
    ClipReader clip;
    RenderPlan plan;
    std::unique_ptr<AiLibrary> library;
    std::unique_ptr<AiLibrary::Filter> maskFilter;
    std::unique_ptr<FaceGatherer> faces;
    std::unique_ptr<BodyGatherer> bodies;
    std::unique_ptr<MediaWriter> writer;
    int64_t seen = 0;
    bool cut = false;  ///< an interrupt came before the last frame
};

}  // namespace

void AddAnalyseCommand(CLI::App& app, CommandLine& line) {
    CLI::App* command =
        app.add_subcommand("analyse", "Write what the AI library sees of the people in a clip");
    auto request = std::make_shared<AnalyseRequest>();
    command->add_option("-i,--input", request->input, "Video or picture")
        ->required()
        ->type_name("FILE");
    command->add_option("--mask", request->mask, "Write the mask: clip, picture, numbered pictures")
        ->type_name("FILE");
    command->add_option("--faces", request->faces, "Write the faces as JSON")->type_name("FILE");
    command->add_option("--poses", request->poses, "Write the body points as JSON")
        ->type_name("FILE");
    command->add_option("--fps", request->rate, "Frames a second; those of the input")
        ->type_name("N");
    command->add_option("--duration", request->duration, "How much of the clip; all of it")
        ->type_name("TIME");
    command->add_flag("-y,--overwrite", request->overwrite, "Overwrite the outputs");
    command->add_flag("--json", request->json, "Print JSON");
    command->callback([&line, request] {
        line.run = [&line, request] { return Analysis(line, *request).Run(); };
    });
}

}  // namespace kelmo::host
