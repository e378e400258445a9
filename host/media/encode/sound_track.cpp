// SPDX-License-Identifier: GPL-3.0-or-later
#include "host/media/encode/sound_track.h"

#include <algorithm>
#include <cmath>
#include <initializer_list>
#include <string_view>

#include "host/media/encode/part_file.h"

namespace kelmo::host {

namespace {

bool IsOneOf(std::string_view name, std::initializer_list<std::string_view> names) {
    return std::find(names.begin(), names.end(), name) != names.end();
}

// Containers that tell players to leave out the beginning of the first packet.
bool HasEditList(const AVOutputFormat& container) {
    return IsOneOf(container.name, {"mov", "mp4", "ipod"});
}

bool TakesCodec(const AVOutputFormat& container, AVCodecID codec) {
    // Known to the format, but its writer holds them for an experiment and refuses them.
    if (HasEditList(container) && (codec == AV_CODEC_ID_FLAC || codec == AV_CODEC_ID_TRUEHD)) {
        return false;
    }
    if (std::string_view(container.name) == "avi") {
        // It is able to hold others, but hardly a player keeps them in time.
        return codec == AV_CODEC_ID_MP3 || codec == AV_CODEC_ID_MP2 || codec == AV_CODEC_ID_AC3 ||
               codec == AV_CODEC_ID_PCM_S16LE;
    }
    return avformat_query_codec(&container, codec, FF_COMPLIANCE_NORMAL) == 1;
}

// Packets of another file, as they are.
class CopiedSound : public SoundTrack {
public:
    CopiedSound(MediaInput given, const WriterOptions& options, bool editList)
        : input(std::move(given)),
          start(options.audioStart),
          duration(options.audioDuration),
          editList(editList) {
        input.KeepOnly(input.audioStream);
        const AVCodecParameters& parameters = *input.Audio()->codecpar;
        if (parameters.sample_rate > 0) {
            hidden = static_cast<double>(parameters.initial_padding) / parameters.sample_rate;
        }
        // A second early: the index may point anywhere inside of a stretch.
        if (start > 1 && input.seekable) input.SeekBefore(input.audioStream, start - 1);
    }

    void Describe(AVStream& stream) const override {
        if (avcodec_parameters_copy(stream.codecpar, input.Audio()->codecpar) < 0) {
            throw std::bad_alloc();
        }
        stream.codecpar->codec_tag = 0;
    }

    AVRational TimeBase() const override { return input.Audio()->time_base; }

    std::string Description() const override {
        return std::string("copy (") + avcodec_get_name(input.Audio()->codecpar->codec_id) + ")";
    }

    void WriteUntil(double seconds, const Sink& sink) override {
        const double limit = duration < 0 ? seconds : std::min(seconds, duration);
        while (Fetch() && TimeOf(*held) < limit) {
            Pass(sink);
            heldValid = false;
        }
    }

    void Finish(double seconds, const Sink& sink) override {
        WriteUntil(duration < 0 ? seconds : duration, sink);
    }

private:
    // Seconds after the first picture of the result.
    double TimeOf(const AVPacket& packet) const {
        return Seconds(packet.pts, TimeBase()) - input.origin - start;
    }

    bool Fetch() {
        while (!heldValid && !ended) {
            av_packet_unref(held.get());
            if (av_read_frame(input.format.get(), held.get()) < 0) {
                ended = true;
            } else {
                heldValid = held->stream_index == input.audioStream && held->pts != AV_NOPTS_VALUE;
            }
        }
        return heldValid;
    }

    void Pass(const Sink& sink) {
        const double tick = av_q2d(TimeBase());
        const double time = TimeOf(*held);
        const double end = time + static_cast<double>(held->duration) * tick;
        // Elsewhere only what the decoder leaves out anyway may lie before the start.
        if (!begun && (editList ? end <= tick / 2 : time < -hidden - tick / 2)) {
            // The packet before the first one warms the decoder up; an edit list hides it.
            if (editList) std::swap(held, before);
            beforeValid = editList;
            return;
        }
        if (!begun && beforeValid) Emit(*before, sink);
        begun = true;
        Emit(*held, sink);
    }

    void Emit(AVPacket& packet, const Sink& sink) {
        const auto offset =
            static_cast<int64_t>(std::llround((input.origin + start) / av_q2d(TimeBase())));
        packet.pts -= offset;
        packet.dts = packet.pts;  // sound is never reordered
        packet.pos = -1;
        sink(packet);
    }

    MediaInput input;
    double start;
    double duration;
    bool editList;
    double hidden = 0;  // seconds that the decoder leaves out at its beginning
    LibavPtr<AVPacket> held = NewPacket();
    LibavPtr<AVPacket> before = NewPacket();
    bool heldValid = false;
    bool beforeValid = false;
    bool begun = false;
    bool ended = false;
};

// Samples that the caller gives.
class GivenSound : public SoundTrack {
public:
    GivenSound(const std::string& path, const AVCodec& codec, int rate, bool globalHeader,
               bool reproducible)
        : encoder(path, codec, rate, globalHeader, reproducible) {}

    void Describe(AVStream& stream) const override {
        if (avcodec_parameters_from_context(stream.codecpar, &encoder.Context()) < 0) {
            throw std::bad_alloc();
        }
    }
    AVRational TimeBase() const override { return encoder.Context().time_base; }
    std::string Description() const override { return encoder.Context().codec->name; }
    void WriteUntil(double, const Sink&) override {}
    void WriteSamples(const int16_t* samples, int count, const Sink& sink) override {
        encoder.Encode(samples, count, sink);
    }
    void Finish(double, const Sink& sink) override { encoder.Flush(sink); }

protected:
    AudioEncoder encoder;
};

// The sound of a file whose packets do not fit, decoded and encoded again.
class EncodedSound : public GivenSound {
public:
    EncodedSound(const std::string& path, const AVCodec& codec, int rate, bool globalHeader,
                 const WriterOptions& options)
        : GivenSound(path, codec, rate, globalHeader, options.reproducible),
          reader(AudioReader::Open(options.audioSource, rate)),
          duration(options.audioDuration) {
        first = std::llround(options.audioStart * rate);
    }

    void WriteUntil(double seconds, const Sink& sink) override {
        const double limit = duration < 0 ? seconds : std::min(seconds, duration);
        const auto end = static_cast<int64_t>(std::llround(limit * reader->SamplesPerSecond()));
        while (done < end) {
            const int count = static_cast<int>(std::min<int64_t>(end - done, kChunk));
            samples.resize(2 * static_cast<size_t>(kChunk));
            reader->Read(first + done, count, samples.data());
            encoder.Encode(samples.data(), count, sink);
            done += count;
        }
    }

    void Finish(double seconds, const Sink& sink) override {
        WriteUntil(duration < 0 ? seconds : duration, sink);
        encoder.Flush(sink);
    }

private:
    static constexpr int kChunk = 4096;  // samples

    std::unique_ptr<AudioReader> reader;
    double duration;
    int64_t first = 0;
    int64_t done = 0;
    std::vector<int16_t> samples;
};

const AVCodec* SoundEncoderFor(const std::string& path, const AVOutputFormat& container,
                               const WriterOptions& options) {
    if (!options.audioCodec.empty()) {
        const AVCodec* codec = avcodec_find_encoder_by_name(options.audioCodec.c_str());
        if (!codec || codec->type != AVMEDIA_TYPE_AUDIO) {
            FailToWrite(path, "there is no sound encoder '" + options.audioCodec +
                                  "' here; \"ffmpeg -encoders\" lists their names");
        }
        if (avformat_query_codec(&container, codec->id, FF_COMPLIANCE_NORMAL) == 0) {
            FailToWrite(path, "'" + std::string(container.name) + "' cannot hold the sound of '" +
                                  options.audioCodec + "'");
        }
        return codec;
    }
    const std::string_view name = container.name;
    const AVCodec* codec = nullptr;
    if (name == "webm") {
        codec = avcodec_find_encoder_by_name("libopus");
        if (!codec) codec = avcodec_find_encoder_by_name("libvorbis");
    } else if (name == "avi") {
        codec = avcodec_find_encoder_by_name("libmp3lame");
    } else if (avformat_query_codec(&container, AV_CODEC_ID_AAC, FF_COMPLIANCE_NORMAL) == 1) {
        codec = avcodec_find_encoder(AV_CODEC_ID_AAC);
    }
    return codec ? codec : avcodec_find_encoder(container.audio_codec);
}

}  // namespace

std::unique_ptr<SoundTrack> MakeSoundTrack(const std::string& path, const AVOutputFormat& container,
                                           const WriterOptions& options,
                                           std::vector<std::string>& warnings) {
    if (options.audio == AudioMode::kNone) return nullptr;
    if (container.audio_codec == AV_CODEC_ID_NONE) {
        AddOnce(warnings, "'" + path + "' cannot hold sound; it is left out");
        return nullptr;
    }
    const bool globalHeader = container.flags & AVFMT_GLOBALHEADER;
    const AVCodec* codec = nullptr;
    if (options.audio == AudioMode::kCopy) {
        MediaInput input = MediaInput::Open(options.audioSource);
        if (!input.Audio()) return nullptr;
        const AVCodecID id = input.Audio()->codecpar->codec_id;
        if (options.audioCodec.empty() && TakesCodec(container, id)) {
            return std::make_unique<CopiedSound>(std::move(input), options, HasEditList(container));
        }
        codec = SoundEncoderFor(path, container, options);
        if (codec) {
            if (options.audioCodec.empty()) {
                AddOnce(warnings, std::string("'") + container.name +
                                      "' does not take the sound of '" + options.audioSource +
                                      "' (" + avcodec_get_name(id) +
                                      ") as it is; it is encoded anew");
            }
            const int rate = std::clamp(input.Audio()->codecpar->sample_rate, 8000, 96000);
            return std::make_unique<EncodedSound>(path, *codec, rate, globalHeader, options);
        }
    } else {
        codec = SoundEncoderFor(path, container, options);
        if (codec) {
            return std::make_unique<GivenSound>(path, *codec, options.audioRate, globalHeader,
                                                options.reproducible);
        }
    }
    AddOnce(warnings, "no sound encoder for '" + path + "' is installed; the sound is left out");
    return nullptr;
}

}  // namespace kelmo::host
