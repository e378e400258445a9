// SPDX-License-Identifier: GPL-3.0-or-later
#include "host/media/decode/media_reader.h"

extern "C" {
#include <libavutil/display.h>
}

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <cstring>
#include <string_view>

#include "host/media/decode/frame_importer.h"
#include "host/media/decode/video_decoder.h"

namespace kelmo::host {

namespace {

constexpr int kLargestSide = 32768;                    // pixels
constexpr int64_t kLargestPicture = int64_t{1} << 27;  // pixels; 512 MB
// A leap forwards over more than this many seconds is tried as a seek.
constexpr double kForwardSeek = 10;
// How far before the wanted time a second try seeks.
constexpr double kSecondTry = 5;

std::string SecondsText(double seconds) {
    char text[32];
    std::snprintf(text, sizeof text, "%.2f s", seconds);
    return text;
}

// From the display matrix of libav: x' = a x + c y, y' = b x + d y with y downwards.
Orientation OrientationOf(const int32_t* matrix) {
    const int32_t a = matrix[0], b = matrix[1], c = matrix[3], d = matrix[4];
    const bool transposed = std::abs(static_cast<double>(b)) > std::abs(static_cast<double>(a));
    return transposed ? Orientation{true, c < 0, b < 0} : Orientation{false, a < 0, d < 0};
}

Orientation OrientationOf(const AVFrame& frame, const AVStream& stream) {
    const AVFrameSideData* side = av_frame_get_side_data(&frame, AV_FRAME_DATA_DISPLAYMATRIX);
    if (side && side->size >= 9 * sizeof(int32_t)) {
        return OrientationOf(reinterpret_cast<const int32_t*>(side->data));
    }
    size_t size = 0;
    const uint8_t* data = av_stream_get_side_data(&stream, AV_PKT_DATA_DISPLAYMATRIX, &size);
    if (data && size >= 9 * sizeof(int32_t)) {
        return OrientationOf(reinterpret_cast<const int32_t*>(data));
    }
    return {};
}

int DegreesOf(Orientation orientation) {
    if (orientation.transposed) return orientation.flipX ? 90 : 270;
    return orientation.flipX && orientation.flipY ? 180 : 0;
}

bool IsPictureFormat(const AVFormatContext& format, AVCodecID codec) {
    const std::string_view name = format.iformat->name;
    return name == "image2" || name.ends_with("_pipe") || codec == AV_CODEC_ID_GIF ||
           codec == AV_CODEC_ID_APNG || codec == AV_CODEC_ID_WEBP;
}

// The size with square pixels: wide pixels widen the picture, its rows stay.
int SquareWidth(const AVFrame& frame, AVFormatContext* format, AVStream* stream) {
    const AVRational ratio =
        av_guess_sample_aspect_ratio(format, stream, const_cast<AVFrame*>(&frame));
    const double value = ratio.num > 0 && ratio.den > 0 ? av_q2d(ratio) : 1;
    if (value < 0.05 || value > 20) return frame.width;
    return std::max(1, static_cast<int>(std::lround(frame.width * value)));
}

}  // namespace

class MediaReader::Impl {
public:
    Impl(const std::string& path, const ReaderOptions& options)
        : path(path),
          decoder(path, options.sequenceRate.Valid() ? options.sequenceRate : FrameRate{25, 1},
                  options.threads, options.deinterlace),
          deinterlace(options.deinterlace),
          importer(options.threads) {
        decoder.Next(current);
        if (!current.present) {
            throw MediaError(MediaError::Side::kInput,
                             "cannot read '" + path + "': not one picture of it can be decoded" +
                                 (decoder.Damage() ? " (" + decoder.DamageReason() + ")" : ""));
        }
        firstTime = current.time;
        Describe();
        SetOutput(options.width, options.height, options.fit);
        FetchNext();
        info.still = !next.present && !decoder.Input().numbered &&
                     IsPictureFormat(*decoder.Input().format, decoder.Codec().codec_id);
        if (info.still) {
            info.frameRate = {25, 1};
            info.duration = 0;
            info.frameCount = 1;
        }
    }

    void SetOutput(int width, int height, FitMode fit) {
        const double shape = static_cast<double>(info.width) / info.height;
        if (width <= 0 && height <= 0) {
            width = info.width;
            height = info.height;
        } else if (width <= 0) {
            width = std::max(1, static_cast<int>(std::lround(std::min(height * shape, 1e9))));
        } else if (height <= 0) {
            height = std::max(1, static_cast<int>(std::lround(std::min(width / shape, 1e9))));
        }
        if (width > kLargestSide || height > kLargestSide ||
            int64_t{width} * height > kLargestPicture) {
            throw MediaError(MediaError::Side::kInput,
                             "cannot read '" + path + "' at " + std::to_string(width) + "x" +
                                 std::to_string(height) +
                                 ": that is too large; choose a smaller size");
        }
        outputWidth = width;
        outputHeight = height;
        importer.Configure(width, height, fit, orientation, info.width, info.height);
        cacheValid = false;
    }

    bool ReadFrameAt(double seconds, Picture& out) {
        if (!std::isfinite(seconds)) seconds = 0;
        if (!info.still) MoveTo(seconds);
        repeated = readOnce && current.time == readTime;
        readOnce = true;
        readTime = current.time;
        ended =
            !info.still && !next.present && seconds + tolerance >= current.time + current.duration;
        return Deliver(out);
    }

    const std::string path;
    MediaInfo info;
    std::vector<std::string> warnings;
    int outputWidth = 0;
    int outputHeight = 0;
    bool repeated = false;
    bool ended = false;

private:
    void Describe() {
        const AVFrame& frame = *current.data;
        const MediaInput& input = decoder.Input();
        AVStream& stream = decoder.Stream();
        orientation = OrientationOf(frame, stream);
        const int width = SquareWidth(frame, input.format.get(), &stream);
        info.width = orientation.transposed ? frame.height : width;
        info.height = orientation.transposed ? width : frame.height;
        info.rotation = DegreesOf(orientation);
        info.frameRate = decoder.Rate();
        info.duration = input.DurationOf(stream, &durationIsExact);
        info.frameCount =
            info.duration > 0 ? std::max<int64_t>(1, info.frameRate.FramesIn(info.duration)) : 0;
        const auto format = static_cast<AVPixelFormat>(frame.format);
        info.hasAlpha = FormatHasAlpha(format);
        info.pixelFormat = av_get_pix_fmt_name(format) ? av_get_pix_fmt_name(format) : "";
        const ColorDescription color = DescribeColor(frame, decoder.Codec().codec_id);
        info.fullRange = color.fullRange;
        info.colorMatrix = color.name;
        info.interlaced = decoder.Interlaced();
        if (const AVPixFmtDescriptor* description = av_pix_fmt_desc_get(format)) {
            info.depth = std::max(8, description->comp[0].depth);
        }
        DescribeReading(LightOf(frame));
        info.container = input.format->iformat->name;
        info.container = info.container.substr(0, info.container.find(','));
        info.videoCodec = avcodec_get_name(decoder.Codec().codec_id);
        if (const AVStream* audio = input.Audio()) {
            info.hasAudio = true;
            info.audioCodec = avcodec_get_name(audio->codecpar->codec_id);
            info.audioRate = audio->codecpar->sample_rate;
            info.audioChannels = audio->codecpar->ch_layout.nb_channels;
        }
        // Containers round time stamps to their tick: a frame may come that much early.
        const double tick = av_q2d(stream.time_base);
        tolerance = std::clamp(0.75 * tick, 1e-6, 0.25 / info.frameRate.PerSecond());
    }

    void DescribeReading(Light light) {
        const std::string name = "'" + path + "'";
        if (light != Light::kBt709 && !info.hasAlpha) {
            info.notes.push_back(name + " is " + LightName(light) + "; it is brought to BT.709");
        }
        if (info.depth > 8) {
            info.notes.push_back(name + " has " + std::to_string(info.depth) +
                                 " bits a sample; effects work in 8");
        }
        if (info.interlaced && deinterlace) {
            info.notes.push_back(name + " is interlaced; it is deinterlaced");
        }
    }

    void FetchNext() {
        decoder.Next(next);
        if (seeking) return;
        if (decoder.Damage() > forgivenDamage) {
            AddOnce(warnings, "'" + path + "' is damaged at about " +
                                  SecondsText(decoder.DamageTime()) + " (" +
                                  decoder.DamageReason() +
                                  "); the last good picture is shown instead");
        }
        if (next.present) return;
        const double end = current.time + current.duration;
        const double missing = info.duration - end;
        if (durationIsExact && missing > std::max(0.5, 2 / info.frameRate.PerSecond())) {
            AddOnce(warnings, "'" + path + "' ends after " + SecondsText(end) + " of the " +
                                  SecondsText(info.duration) +
                                  " that it announces; its last picture is repeated");
        }
    }

    bool IsDue(const VideoDecoder::Frame& frame, double seconds) const {
        return frame.time <= seconds + tolerance;
    }

    void Advance(double seconds) {
        while (next.present && IsDue(next, seconds)) {
            std::swap(current, next);
            FetchNext();
        }
    }

    void MoveTo(double seconds) {
        if (current.time > firstTime && !IsDue(current, seconds)) {
            Rewind(seconds);
        } else if (next.present && seconds - next.time > kForwardSeek && !seekBroken &&
                   decoder.Seekable()) {
            if (!SeekTo(seconds, seconds)) Rewind(seconds);
        } else {
            Advance(seconds);
        }
    }

    // Decodes from the key frame before `place` up to `seconds`. False if that did not lead to a
    // faultless frame.
    bool SeekTo(double place, double seconds) {
        const int damageBefore = decoder.Damage();
        seeking = true;
        bool faultless = decoder.SeekBefore(std::max(place, firstTime)) && Begin() &&
                         (IsDue(current, seconds) || seconds < firstTime);
        if (faultless) Advance(seconds);
        seeking = false;
        faultless = faultless && decoder.Damage() == damageBefore;
        // What a seek breaks is mended by decoding from the start; it is no fault of the file yet.
        if (!faultless) forgivenDamage = decoder.Damage();
        return faultless;
    }

    bool Begin() {
        VideoDecoder::Frame frame;
        decoder.Next(frame);
        if (!frame.present) return false;
        std::swap(current, frame);
        cacheValid = false;
        FetchNext();
        return true;
    }

    void Rewind(double seconds) {
        if (!seekBroken && decoder.Seekable()) {
            if (SeekTo(seconds, seconds) || SeekTo(seconds - kSecondTry, seconds)) return;
            seekBroken = true;
        }
        if (!decoder.Restart() || !Begin()) {
            AddOnce(warnings, "'" + path + "' cannot be read from its start again; a later " +
                                  "picture is shown");
            return;
        }
        Advance(seconds);
    }

    // The first time a frame is converted into `out`; if it is asked for again it is kept.
    bool Deliver(Picture& out) {
        if (cacheValid && cacheTime == current.time) {
            out.Resize(cache.width, cache.height);
            std::memcpy(out.pixels.data(), cache.pixels.data(), cache.pixels.size());
            return true;
        }
        const int error = importer.Import(*current.data, decoder.Codec().codec_id, out);
        if (error < 0) {
            AddOnce(warnings, "'" + path + "': a picture cannot be converted to BGRA (" +
                                  LibavErrorText(error) + ")");
            out.Resize(outputWidth, outputHeight);
            std::fill(out.pixels.begin(), out.pixels.end(), uint8_t{0});
            return false;
        }
        if (repeated || info.still) {
            cache = out;
            cacheTime = current.time;
            cacheValid = true;
        }
        return true;
    }

    VideoDecoder decoder;
    bool deinterlace;
    FrameImporter importer;
    VideoDecoder::Frame current;
    VideoDecoder::Frame next;
    Orientation orientation;
    double firstTime = 0;
    double tolerance = 0;
    bool durationIsExact = false;
    bool seekBroken = false;
    bool seeking = false;
    int forgivenDamage = 0;
    bool readOnce = false;
    double readTime = 0;
    Picture cache;
    double cacheTime = 0;
    bool cacheValid = false;
};

std::unique_ptr<MediaReader> MediaReader::Open(const std::string& path,
                                               const ReaderOptions& options) {
    return std::unique_ptr<MediaReader>(new MediaReader(std::make_unique<Impl>(path, options)));
}

MediaReader::MediaReader(std::unique_ptr<Impl> parts) : impl(std::move(parts)) {}

MediaReader::~MediaReader() = default;

const MediaInfo& MediaReader::Info() const {
    return impl->info;
}

void MediaReader::SetOutput(int width, int height, FitMode fit) {
    impl->SetOutput(width, height, fit);
}

int MediaReader::OutputWidth() const {
    return impl->outputWidth;
}

int MediaReader::OutputHeight() const {
    return impl->outputHeight;
}

bool MediaReader::ReadFrameAt(double seconds, Picture& out) {
    return impl->ReadFrameAt(seconds, out);
}

bool MediaReader::LastFrameRepeated() const {
    return impl->repeated;
}

bool MediaReader::Ended() const {
    return impl->ended;
}

const std::vector<std::string>& MediaReader::Warnings() const {
    return impl->warnings;
}

}  // namespace kelmo::host
