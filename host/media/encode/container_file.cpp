// SPDX-License-Identifier: GPL-3.0-or-later
#include "host/media/encode/container_file.h"

#include <string_view>

namespace kelmo::host {

ContainerFile::ContainerFile(const std::string& path, const AVOutputFormat& container,
                             const AVCodecContext& video, const WriterOptions& options,
                             std::vector<std::string>& warnings)
    : path(path), videoTimeBase(video.time_base) {
    if (avformat_query_codec(&container, video.codec_id, FF_COMPLIANCE_NORMAL) == 0) {
        FailToWrite(path, "'" + std::string(container.name) + "' cannot hold the pictures of '" +
                              video.codec->name + "'");
    }
    if (path != "-") part.emplace(path);
    sound = MakeSoundTrack(path, container, options, warnings);
    AVFormatContext* context = nullptr;
    const std::string url = part ? "file:" + part->PartPath() : "pipe:1";
    if (avformat_alloc_output_context2(&context, &container, nullptr, url.c_str()) < 0) {
        throw std::bad_alloc();
    }
    format.reset(context);
    AddStreams(video, options);
    OpenFile();
    try {
        WriteHeader(options.reproducible);
    } catch (...) {
        Abort();
        throw;
    }
}

ContainerFile::~ContainerFile() {
    if (!closed) Abort();
}

void ContainerFile::AddStreams(const AVCodecContext& video, const WriterOptions& options) {
    videoStream = avformat_new_stream(format.get(), nullptr);
    if (!videoStream || avcodec_parameters_from_context(videoStream->codecpar, &video) < 0) {
        throw std::bad_alloc();
    }
    videoStream->time_base = video.time_base;
    videoStream->avg_frame_rate = video.framerate;
    videoStream->sample_aspect_ratio = video.sample_aspect_ratio;
    if (sound) {
        soundStream = avformat_new_stream(format.get(), nullptr);
        if (!soundStream) throw std::bad_alloc();
        sound->Describe(*soundStream);
        soundStream->time_base = sound->TimeBase();
    }
    if (options.reproducible) format->flags |= AVFMT_FLAG_BITEXACT;
    const std::string_view name = format->oformat->name;
    if (soundStream && soundStream->codecpar->codec_id == AV_CODEC_ID_OPUS &&
        (name == "matroska" || name == "webm")) {
        // Matroska stores the delay of Opus, and readers subtract it from the time stamps.
        const AVCodecParameters& parameters = *soundStream->codecpar;
        soundShift = av_rescale_q(parameters.initial_padding, {1, parameters.sample_rate},
                                  sound->TimeBase());
    }
}

void ContainerFile::OpenFile() {
    if (format->oformat->flags & AVFMT_NOFILE) return;
    const int error = avio_open(&format->pb, format->url, AVIO_FLAG_WRITE);
    if (error < 0) {
        closed = true;
        if (part) part->FailToOpen(AVUNERROR(error));
        FailToWrite(path, LibavErrorText(error));
    }
}

void ContainerFile::WriteHeader(bool reproducible) {
    AVDictionary* settings = nullptr;
    const std::string_view name = format->oformat->name;
    if (name == "mp4" || name == "mov" || name == "ipod") {
        // The index in front lets players begin before the file is there as a whole; a pipe cannot
        // go back for it and gets pieces with an index each.
        const bool whole = part && !part->Direct();
        av_dict_set(&settings, "movflags", whole ? "+faststart" : "+frag_keyframe+empty_moov", 0);
    }
    if (reproducible) av_dict_set(&settings, "fflags", "+bitexact", 0);
    const int error = avformat_write_header(format.get(), &settings);
    av_dict_free(&settings);
    if (error < 0)
        FailToWrite(path, "'" + std::string(name) +
                              "' refuses these pictures or this sound: " + LibavErrorText(error));
}

void ContainerFile::CheckDisk() {
    if (format->pb && format->pb->error < 0) FailToWrite(path, LibavErrorText(format->pb->error));
}

void ContainerFile::Write(AVPacket& packet, AVStream& stream, AVRational timeBase) {
    av_packet_rescale_ts(&packet, timeBase, stream.time_base);
    packet.stream_index = stream.index;
    const int error = av_interleaved_write_frame(format.get(), &packet);
    if (error < 0) FailToWrite(path, LibavErrorText(error));
    CheckDisk();
}

void ContainerFile::WriteVideo(AVPacket& packet) {
    Write(packet, *videoStream, videoTimeBase);
}

SoundTrack::Sink ContainerFile::SoundSink() {
    return [this](AVPacket& packet) {
        packet.pts += soundShift;
        packet.dts += soundShift;
        Write(packet, *soundStream, sound->TimeBase());
    };
}

void ContainerFile::WriteAudio(const int16_t* samples, int count) {
    if (sound) sound->WriteSamples(samples, count, SoundSink());
}

void ContainerFile::AdvanceSound(double seconds) {
    if (sound) sound->WriteUntil(seconds, SoundSink());
}

void ContainerFile::Finish(double seconds) {
    if (sound) sound->Finish(seconds, SoundSink());
    const int error = av_write_trailer(format.get());
    if (error < 0) FailToWrite(path, LibavErrorText(error));
    CheckDisk();
    if (!(format->oformat->flags & AVFMT_NOFILE)) {
        const int closing = avio_closep(&format->pb);
        if (closing < 0) FailToWrite(path, LibavErrorText(closing));
    }
    closed = true;
    if (part) part->Commit();
}

void ContainerFile::CloseFile() noexcept {
    if (!(format->oformat->flags & AVFMT_NOFILE)) avio_closep(&format->pb);
    closed = true;
}

void ContainerFile::Abort() noexcept {
    if (closed) return;
    CloseFile();
    if (part) part->Discard();
}

std::string ContainerFile::SoundDescription() const {
    return sound ? sound->Description() : "";
}

}  // namespace kelmo::host
