// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <memory>
#include <optional>
#include <vector>

#include "host/media/encode/media_writer.h"
#include "host/media/encode/output_file.h"
#include "host/media/encode/part_file.h"
#include "host/media/encode/sound_track.h"

namespace kelmo::host {

// Private to this folder: a video file of any container that libav writes, with its sound.
class ContainerFile : public OutputFile {
public:
    // `video` is the opened encoder. Throws MediaError.
    ContainerFile(const std::string& path, const AVOutputFormat& container,
                  const AVCodecContext& video, const WriterOptions& options,
                  std::vector<std::string>& warnings);
    ~ContainerFile() override;

    void WriteVideo(AVPacket& packet) override;
    void WriteAudio(const int16_t* samples, int count) override;
    void AdvanceSound(double seconds) override;
    void Finish(double seconds) override;
    void Abort() noexcept override;
    std::string SoundDescription() const override;

private:
    void AddStreams(const AVCodecContext& video, const WriterOptions& options);
    void OpenFile();
    void WriteHeader(bool reproducible);
    void Write(AVPacket& packet, AVStream& stream, AVRational timeBase);
    void CheckDisk();
    void CloseFile() noexcept;
    SoundTrack::Sink SoundSink();

    std::string path;
    std::optional<PartFile> part;  // none for standard output
    LibavPtr<AVFormatContext> format;
    AVStream* videoStream = nullptr;
    AVStream* soundStream = nullptr;
    AVRational videoTimeBase{};
    std::unique_ptr<SoundTrack> sound;
    int64_t soundShift = 0;  // in the time base of the sound
    bool closed = false;
};

}  // namespace kelmo::host
