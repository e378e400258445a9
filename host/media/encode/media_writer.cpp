// SPDX-License-Identifier: GPL-3.0-or-later
#include "host/media/encode/media_writer.h"

#include <algorithm>
#include <cctype>
#include <filesystem>
#include <iterator>
#include <string_view>

#include "host/media/encode/container_file.h"
#include "host/media/encode/part_file.h"
#include "host/media/encode/picture_files.h"
#include "host/media/encode/video_encoder.h"

namespace kelmo::host {

namespace {

constexpr int kLargestSide = 32768;                    // pixels
constexpr int64_t kLargestPicture = int64_t{1} << 27;  // pixels; 512 MB as BGRA

std::string EndingOf(const std::string& path) {
    std::string ending = std::filesystem::path(path).extension().string();
    std::transform(ending.begin(), ending.end(), ending.begin(),
                   [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
    return ending;
}

AVCodecID PictureCodecOf(const std::string& ending) {
    static constexpr struct {
        const char* ending;
        AVCodecID codec;
    } kPictures[] = {
        {".png", AV_CODEC_ID_PNG},   {".jpg", AV_CODEC_ID_MJPEG}, {".jpeg", AV_CODEC_ID_MJPEG},
        {".webp", AV_CODEC_ID_WEBP}, {".bmp", AV_CODEC_ID_BMP},   {".tif", AV_CODEC_ID_TIFF},
        {".tiff", AV_CODEC_ID_TIFF},
    };
    for (const auto& picture : kPictures) {
        if (ending == picture.ending) return picture.codec;
    }
    return AV_CODEC_ID_NONE;
}

void CheckOptions(const std::string& path, const WriterOptions& options) {
    if (options.width <= 0 || options.height <= 0 || options.width > kLargestSide ||
        options.height > kLargestSide ||
        int64_t{options.width} * options.height > kLargestPicture) {
        FailToWrite(path, "a size of " + std::to_string(options.width) + "x" +
                              std::to_string(options.height) + " is not possible");
    }
    if (!options.frameRate.Valid() || options.frameRate.PerSecond() > 1000) {
        FailToWrite(path, "a rate of " + std::to_string(options.frameRate.numerator) + "/" +
                              std::to_string(options.frameRate.denominator) +
                              " frames a second is not possible");
    }
}

const AVOutputFormat& ContainerOf(const std::string& path, const std::string& name) {
    const AVOutputFormat* format = name.empty() ? av_guess_format(nullptr, path.c_str(), nullptr)
                                                : av_guess_format(name.c_str(), nullptr, nullptr);
    if (!format && !name.empty()) {
        FailToWrite(path, "there is no container '" + name +
                              "' here; \"ffmpeg -muxers\" lists their names");
    }
    if (!format) {
        const std::string ending = EndingOf(path);
        FailToWrite(path, (ending.empty() ? std::string("its name has no ending")
                                          : "the ending '" + ending + "' is not known") +
                              "; use .mp4, .mov, .mkv, .webm, .avi, .gif, .png, .jpg or .webp");
    }
    // Files of sound may hold a cover picture, which libav calls their video.
    static constexpr std::string_view kSoundOnly[] = {"mp3", "flac", "aiff", "tta"};
    const bool soundOnly = std::find(std::begin(kSoundOnly), std::end(kSoundOnly),
                                     std::string_view(format->name)) != std::end(kSoundOnly);
    if (soundOnly || format->video_codec == AV_CODEC_ID_NONE) {
        FailToWrite(path, std::string("'") + format->name + "' holds no pictures; use .mp4, say");
    }
    return *format;
}

}  // namespace

class MediaWriter::Impl {
public:
    Impl(const std::string& path, const WriterOptions& options)
        : path(path), frameRate(options.frameRate) {
        PrepareLibav();
        CheckOptions(path, options);
        const AVCodecID picture =
            options.container.empty() ? PictureCodecOf(EndingOf(path)) : AV_CODEC_ID_NONE;
        if (picture != AV_CODEC_ID_NONE) {
            OpenPictures(picture, options);
        } else {
            OpenContainer(ContainerOf(path, options.container), options);
        }
        videoCodec = encoder->Context().codec->name;
        audioCodec = file->SoundDescription();
    }

    void WriteFrame(const Picture& picture) {
        RequireOpen();
        encoder->Encode(picture, VideoSink());
        ++frames;
        file->AdvanceSound(frameRate.TimeOf(frames));
    }

    void WriteAudio(const int16_t* samples, int count) {
        RequireOpen();
        if (samples && count > 0) file->WriteAudio(samples, count);
    }

    void Finish() {
        RequireOpen();
        if (frames == 0) {
            Abort();
            FailToWrite(path, "no frame was given");
        }
        try {
            encoder->Flush(VideoSink());
            file->Finish(frameRate.TimeOf(frames));
        } catch (...) {
            Abort();
            throw;
        }
        Close();
    }

    void Abort() noexcept {
        if (file) file->Abort();
        Close();
    }

    std::vector<std::string> warnings;
    std::string videoCodec;
    std::string audioCodec;
    int64_t frames = 0;

private:
    void OpenPictures(AVCodecID picture, const WriterOptions& options) {
        const VideoFormat format =
            ChooseVideoFormat(path, "image2", picture, picture, options, warnings);
        encoder = std::make_unique<VideoEncoder>(path, format, options, false);
        file = std::make_unique<PictureFiles>(path, warnings);
        if (options.audio != AudioMode::kNone) {
            AddOnce(warnings, "'" + path + "' is a picture and cannot hold sound; it is left out");
        }
    }

    void OpenContainer(const AVOutputFormat& container, const WriterOptions& options) {
        const VideoFormat format = ChooseVideoFormat(path, container.name, container.video_codec,
                                                     AV_CODEC_ID_NONE, options, warnings);
        encoder = std::make_unique<VideoEncoder>(path, format, options,
                                                 container.flags & AVFMT_GLOBALHEADER);
        file =
            std::make_unique<ContainerFile>(path, container, encoder->Context(), options, warnings);
    }

    VideoEncoder::Sink VideoSink() {
        return [this](AVPacket& packet) { file->WriteVideo(packet); };
    }

    void RequireOpen() const {
        if (!file) FailToWrite(path, "the file is closed already");
    }

    void Close() noexcept {
        encoder.reset();
        file.reset();
    }

    const std::string path;
    const FrameRate frameRate;
    std::unique_ptr<VideoEncoder> encoder;
    std::unique_ptr<OutputFile> file;
};

std::unique_ptr<MediaWriter> MediaWriter::Open(const std::string& path,
                                               const WriterOptions& options) {
    return std::unique_ptr<MediaWriter>(new MediaWriter(std::make_unique<Impl>(path, options)));
}

MediaWriter::MediaWriter(std::unique_ptr<Impl> parts) : impl(std::move(parts)) {}

MediaWriter::~MediaWriter() {
    impl->Abort();
}

void MediaWriter::WriteFrame(const Picture& picture) {
    impl->WriteFrame(picture);
}

void MediaWriter::WriteAudio(const int16_t* samples, int count) {
    impl->WriteAudio(samples, count);
}

void MediaWriter::Finish() {
    impl->Finish();
}

void MediaWriter::Abort() noexcept {
    impl->Abort();
}

int64_t MediaWriter::FramesWritten() const {
    return impl->frames;
}

const std::string& MediaWriter::VideoCodec() const {
    return impl->videoCodec;
}

const std::string& MediaWriter::AudioCodec() const {
    return impl->audioCodec;
}

const std::vector<std::string>& MediaWriter::Warnings() const {
    return impl->warnings;
}

}  // namespace kelmo::host
