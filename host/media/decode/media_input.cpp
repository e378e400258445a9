// SPDX-License-Identifier: GPL-3.0-or-later
#include "host/media/decode/media_input.h"

#include <cmath>
#include <cstdio>
#include <cstring>
#include <filesystem>
#include <string_view>

#include "host/media/common/file_names.h"
#include "host/media/common/media_error.h"

namespace kelmo::host {

namespace {

namespace fs = std::filesystem;

// Files larger than this are pictures of nothing: 2^28 pixels are 1 GB as BGRA.
constexpr int64_t kMostPixels = int64_t{1} << 28;

[[noreturn]] void Fail(const std::string& path, const std::string& reason) {
    throw MediaError(MediaError::Side::kInput, "cannot read '" + path + "': " + reason);
}

void RefuseHopelessPath(const std::string& path) {
    std::error_code error;
    const fs::file_status status = fs::status(NativePath(path), error);
    if (status.type() == fs::file_type::not_found) Fail(path, "there is no such file");
    if (fs::is_directory(status)) {
        Fail(path, "it is a folder; numbered pictures are given as \"folder/name%04d.png\"");
    }
    if (fs::is_regular_file(status) && fs::file_size(NativePath(path), error) == 0 && !error) {
        Fail(path, "the file is empty");
    }
}

std::string OpeningHint(const std::string& path, int error) {
    if (error != AVERROR_INVALIDDATA) return {};
    const std::string ending = NativePath(path).extension().string();
    if (ending == ".mp4" || ending == ".mov" || ending == ".m4v") {
        return "; it is no video, or its recording was cut off before its index was written";
    }
    return "; it is no video, picture or sound that is known here";
}

struct Dictionary {
    AVDictionary* entries = nullptr;
    ~Dictionary() { av_dict_free(&entries); }
    void Set(const char* name, const std::string& value) {
        av_dict_set(&entries, name, value.c_str(), 0);
    }
};

LibavPtr<AVFormatContext> OpenFormat(const std::string& path, bool numbered, FrameRate rate) {
    Dictionary options;
    const AVInputFormat* forced = nullptr;
    const std::string url = path == "-" ? "pipe:0" : FileUrl(path);
    if (numbered) {
        forced = av_find_input_format("image2");
        options.Set("framerate",
                    std::to_string(rate.numerator) + "/" + std::to_string(rate.denominator));
    } else if (path.find('%') != std::string::npos) {
        // A file whose name merely looks like a pattern: choose by content, not by name.
        AVIOContext* io = nullptr;
        if (avio_open(&io, url.c_str(), AVIO_FLAG_READ) >= 0) {
            av_probe_input_buffer2(io, &forced, "", nullptr, 0, 0);
            avio_closep(&io);
        }
    }
    // Play lists must not lead outside of this machine.
    options.Set("protocol_whitelist", "file,pipe,crypto,data");
    AVFormatContext* format = nullptr;
    const int error = avformat_open_input(&format, url.c_str(), forced, &options.entries);
    if (error < 0) {
        if (numbered) Fail(path, "no picture with a first number from 0 to 4 matches the pattern");
        Fail(path, LibavErrorText(error) + OpeningHint(path, error));
    }
    return LibavPtr<AVFormatContext>(format);
}

int FindStream(AVFormatContext* format, AVMediaType type) {
    const int index = av_find_best_stream(format, type, -1, -1, nullptr, 0);
    if (index < 0) return -1;
    const bool cover = format->streams[index]->disposition & AV_DISPOSITION_ATTACHED_PIC;
    return cover ? -1 : index;
}

// Matroska writes the length of each stream as a text, "00:00:02.040000000".
double TaggedDuration(const AVStream& stream) {
    const AVDictionaryEntry* entry = av_dict_get(stream.metadata, "DURATION", nullptr, 0);
    int hours = 0, minutes = 0;
    double seconds = 0;
    if (!entry || std::sscanf(entry->value, "%d:%d:%lf", &hours, &minutes, &seconds) != 3) {
        return 0;
    }
    return hours * 3600.0 + minutes * 60.0 + seconds;
}

// The transparency of VP8 and VP9 lies beside the stream, where only libvpx looks.
const AVCodec* FindDecoder(const AVStream& stream) {
    const AVDictionaryEntry* alpha = av_dict_get(stream.metadata, "alpha_mode", nullptr, 0);
    if (alpha && std::strcmp(alpha->value, "1") == 0) {
        const AVCodecID id = stream.codecpar->codec_id;
        const char* name = id == AV_CODEC_ID_VP9   ? "libvpx-vp9"
                           : id == AV_CODEC_ID_VP8 ? "libvpx"
                                                   : nullptr;
        if (const AVCodec* codec = name ? avcodec_find_decoder_by_name(name) : nullptr) {
            return codec;
        }
    }
    return avcodec_find_decoder(stream.codecpar->codec_id);
}

}  // namespace

MediaInput MediaInput::Open(const std::string& path, FrameRate sequenceRate) {
    PrepareLibav();
    MediaInput input;
    input.path = path;
    std::error_code ignored;
    input.numbered = IsNumberPattern(path) && !fs::exists(NativePath(path), ignored);
    if (!input.numbered && path != "-") RefuseHopelessPath(path);
    input.format = OpenFormat(path, input.numbered, sequenceRate);
    if (std::string_view(input.format->iformat->name) == "tty") {
        Fail(path, "it is a text" + OpeningHint(path, AVERROR_INVALIDDATA));
    }
    const int error = avformat_find_stream_info(input.format.get(), nullptr);
    if (error < 0) Fail(path, LibavErrorText(error) + OpeningHint(path, error));
    input.videoStream = FindStream(input.format.get(), AVMEDIA_TYPE_VIDEO);
    input.audioStream = FindStream(input.format.get(), AVMEDIA_TYPE_AUDIO);
    const AVStream* first = input.videoStream >= 0 ? input.Video() : input.Audio();
    if (first && first->start_time != AV_NOPTS_VALUE) {
        input.origin = Seconds(first->start_time, first->time_base);
    }
    const AVIOContext* io = input.format->pb;
    input.seekable = input.numbered || (io && (io->seekable & AVIO_SEEKABLE_NORMAL));
    return input;
}

void MediaInput::KeepOnly(int stream) {
    for (unsigned i = 0; i < format->nb_streams; ++i) {
        if (static_cast<int>(i) != stream) format->streams[i]->discard = AVDISCARD_ALL;
    }
}

double MediaInput::DurationOf(const AVStream& stream, bool* exact) const {
    if (exact) *exact = true;
    if (stream.duration > 0 && stream.duration != AV_NOPTS_VALUE) {
        return Seconds(stream.duration, stream.time_base);
    }
    const double tagged = TaggedDuration(stream);
    if (tagged > 0) return std::max(tagged - origin, 0.0);
    if (exact) *exact = false;
    if (format->duration <= 0) return 0;
    const double start = format->start_time == AV_NOPTS_VALUE
                             ? origin
                             : static_cast<double>(format->start_time) / AV_TIME_BASE;
    const double end = start + static_cast<double>(format->duration) / AV_TIME_BASE;
    return std::max(end - origin, 0.0);
}

bool MediaInput::SeekBefore(int stream, double seconds) {
    const AVRational timeBase = format->streams[stream]->time_base;
    const double ticks = (seconds + origin) * timeBase.den / timeBase.num;
    if (!(std::abs(ticks) < 9e18)) return false;
    const auto stamp = static_cast<int64_t>(std::floor(ticks));
    return avformat_seek_file(format.get(), stream, INT64_MIN, stamp, stamp, 0) >= 0;
}

LibavPtr<AVCodecContext> OpenDecoder(const MediaInput& input, const AVStream& stream, int threads) {
    const std::string name = avcodec_get_name(stream.codecpar->codec_id);
    const AVCodec* codec = FindDecoder(stream);
    if (!codec) Fail(input.path, "no decoder for '" + name + "' is installed");
    LibavPtr<AVCodecContext> context(avcodec_alloc_context3(codec));
    if (!context) throw std::bad_alloc();
    int error = avcodec_parameters_to_context(context.get(), stream.codecpar);
    context->pkt_timebase = stream.time_base;
    context->thread_count = threads;
    context->max_pixels = kMostPixels;
    if (error >= 0) error = avcodec_open2(context.get(), codec, nullptr);
    if (error < 0) {
        Fail(input.path, "the decoder for '" + name + "' refuses it: " + LibavErrorText(error));
    }
    return context;
}

}  // namespace kelmo::host
