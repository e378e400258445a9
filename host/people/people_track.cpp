// SPDX-License-Identifier: GPL-3.0-or-later
#include "host/people/people_track.h"

#include <algorithm>
#include <cmath>
#include <fstream>
#include <sstream>

#include <fmt/format.h>
#include <nlohmann/json.hpp>

#include "host/people/body_points.h"
#include "host/session/host_error.h"

namespace kelmo::host {

namespace {

using Json = nlohmann::ordered_json;

constexpr int kSchema = 1;
constexpr float kMissing = -1.0F;

/// A fraction in as many digits as a pixel of a large frame needs.
double Short(double value) {
    return std::round(value * 1e5) / 1e5;
}

Json PlaceOf(const std::pair<float, float>& point) {
    return {Short(point.first), Short(point.second)};
}

Json Describe(const AIDATA::HumanPose& body) {
    Json points = Json::object();
    for (size_t i = 0; i < std::min(body.points.size(), kBodyPoints.size()); ++i) {
        const auto& point = body.points[i];
        if (point.first >= 0 && point.second >= 0) points[kBodyPoints[i].name] = PlaceOf(point);
    }
    return {{"tag", body.tag}, {"points", points}};
}

Json Describe(const AIDATA::HumanFaceInfo& face) {
    Json landmarks = Json::array();
    for (const auto& point : face.landmarks) landmarks.push_back(PlaceOf(point));
    Json scores = Json::array();
    for (const float score : face.landmarkScores) scores.push_back(Short(score));
    Json box = Json::array();
    for (const float side : face.rect) box.push_back(Short(side));
    return {{"box", box},
            {"pitch", Short(face.pitch)},
            {"yaw", Short(face.yaw)},
            {"roll", Short(face.roll)},
            {"landmarks", landmarks},
            {"scores", scores}};
}

template <typename Person>
std::string Document(const PeopleTrack<Person>& track, const char* key) {
    std::string text =
        fmt::format("{{\"schema\": {}, \"clip\": {}, \"frameRate\": [{}, {}], \"frames\": [",
                    kSchema, Json(track.clip).dump(-1, ' ', false, Json::error_handler_t::replace),
                    track.rate.numerator, track.rate.denominator);
    const char* separator = "\n";
    for (const auto& frame : track.frames) {
        Json people = Json::array();
        for (const Person& person : frame.people) people.push_back(Describe(person));
        const Json line = {{"frame", frame.frame}, {"time", Short(frame.time)}, {key, people}};
        text += separator + line.dump();
        separator = ",\n";
    }
    return text + "\n]}\n";
}

/// Reads one document; every error names the file and the frame at hand.
class BodyReader {
public:
    explicit BodyReader(const std::string& fileName) : file(fileName) {}

    BodyTrack Read(const std::string& text) {
        Json document;
        try {
            document = Json::parse(text);
        } catch (const Json::exception& error) {
            Fail(error.what());
        }
        if (!document.is_object() || !document.contains("frames") ||
            !document["frames"].is_array()) {
            Fail("no list \"frames\"; `kelmo analyse --poses` writes such files");
        }
        BodyTrack track;
        track.rate = ReadRate(document);
        frameIndex = 0;
        for (const Json& frame : document["frames"]) {
            track.frames.push_back(ReadFrame(frame));
            ++frameIndex;
        }
        std::stable_sort(track.frames.begin(), track.frames.end(),
                         [](const auto& a, const auto& b) { return a.time < b.time; });
        return track;
    }

private:
    [[noreturn]] void Fail(const std::string& what) const {
        const std::string place =
            frameIndex < 0 ? std::string() : fmt::format(", \"frames\"[{}]", frameIndex);
        throw HostError(fmt::format("{}{}: {}", file, place, what));
    }

    double Number(const Json& value, const char* what) const {
        if (!value.is_number() || !std::isfinite(value.get<double>())) {
            Fail(fmt::format("{} is no number", what));
        }
        return value.get<double>();
    }

    FrameRate ReadRate(const Json& document) const {
        const auto rate = document.find("frameRate");
        if (rate == document.end()) return {25, 1};
        if (!rate->is_array() || rate->size() != 2) Fail("\"frameRate\" is not [number, number]");
        const double numerator = Number((*rate)[0], "\"frameRate\"");
        const double denominator = Number((*rate)[1], "\"frameRate\"");
        if (numerator < 1 || denominator < 1 || numerator > 1e9 || denominator > 1e9) {
            Fail("\"frameRate\" is not above 0");
        }
        return {static_cast<int>(numerator), static_cast<int>(denominator)};
    }

    PeopleOfFrame<AIDATA::HumanPose> ReadFrame(const Json& frame) {
        if (!frame.is_object() || !frame.contains("time")) Fail("no \"time\"");
        PeopleOfFrame<AIDATA::HumanPose> read;
        read.time = Number(frame["time"], "\"time\"");
        if (!frame.contains("bodies")) return read;
        if (!frame["bodies"].is_array()) Fail("\"bodies\" is no list");
        for (const Json& body : frame["bodies"]) read.people.push_back(ReadBody(body));
        return read;
    }

    AIDATA::HumanPose ReadBody(const Json& body) const {
        if (!body.is_object() || !body.contains("points") || !body["points"].is_object()) {
            Fail("a body without \"points\"");
        }
        AIDATA::HumanPose read;
        if (body.contains("tag")) {
            const double tag = Number(body["tag"], "\"tag\"");
            if (std::abs(tag) > INT32_MAX) Fail("\"tag\" is too large");
            read.tag = static_cast<int32_t>(tag);
        }
        read.points.assign(kBodyPoints.size(), {kMissing, kMissing});
        for (const auto& [name, place] : body["points"].items()) {
            if (!place.is_null()) PutPoint(name, place, read);
        }
        return read;
    }

    void PutPoint(const std::string& name, const Json& place, AIDATA::HumanPose& body) const {
        if (!place.is_array() || place.size() != 2) {
            Fail(fmt::format("point \"{}\" is not [x, y]", name));
        }
        bool known = false;
        for (size_t i = 0; i < kBodyPoints.size(); ++i) {
            if (name != kBodyPoints[i].name) continue;
            known = true;
            body.points[i] = {static_cast<float>(Number(place[0], name.c_str())),
                              static_cast<float>(Number(place[1], name.c_str()))};
        }
        if (!known) Fail(fmt::format("no body point has the name \"{}\"", name));
    }

    const std::string& file;
    int64_t frameIndex = -1;
};

}  // namespace

void PlaceInFrame(BodyTrack& track, const Rectangle& part, int frameWidth, int frameHeight) {
    const auto placed = [](float fraction, int from, int length, int whole) {
        return (static_cast<float>(from) + fraction * static_cast<float>(length)) /
               static_cast<float>(whole);
    };
    for (auto& frame : track.frames) {
        for (AIDATA::HumanPose& body : frame.people) {
            for (auto& [x, y] : body.points) {
                if (x < 0 || y < 0) continue;
                x = placed(x, part.left, part.width, frameWidth);
                y = placed(y, part.top, part.height, frameHeight);
            }
        }
    }
}

std::string ToJson(const BodyTrack& track) {
    return Document(track, "bodies");
}

std::string ToJson(const FaceTrack& track) {
    return Document(track, "faces");
}

BodyTrack ReadBodyTrack(const std::string& text, const std::string& file) {
    return BodyReader(file).Read(text);
}

BodyTrack ReadBodyTrackFile(const std::string& file) {
    std::ifstream stream(file, std::ios::binary);
    std::ostringstream text;
    if (stream) text << stream.rdbuf();
    if (!stream) throw HostError(fmt::format("cannot read {}", file));
    return ReadBodyTrack(text.str(), file);
}

}  // namespace kelmo::host
