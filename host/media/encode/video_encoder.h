// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "host/media/common/libav.h"
#include "host/media/encode/frame_exporter.h"
#include "host/media/encode/media_writer.h"

namespace kelmo::host {

// Private to this folder: what a file of a certain kind is encoded with.
struct VideoFormat {
    const AVCodec* codec = nullptr;
    AVPixelFormat pixelFormat = AV_PIX_FMT_NONE;
    bool alpha = false;  // the frames keep their alpha
};

// Chooses the encoder for a container ("mp4", "matroska", "image2"...) by the options, or
// `picture`, the encoder of a picture file. Throws MediaError; adds a warning where a wish is not
// met.
VideoFormat ChooseVideoFormat(const std::string& path, const std::string& container,
                              AVCodecID containerDefault, AVCodecID picture,
                              const WriterOptions& options, std::vector<std::string>& warnings);

// Encodes pictures. Time stamps count frames.
class VideoEncoder {
public:
    using Sink = std::function<void(AVPacket& packet)>;

    // Throws MediaError.
    VideoEncoder(const std::string& path, const VideoFormat& format, const WriterOptions& options,
                 bool globalHeader);

    const AVCodecContext& Context() const { return *context; }

    // Hands on the packets that become ready. Throws MediaError.
    void Encode(const Picture& picture, const Sink& sink);
    void Flush(const Sink& sink);

private:
    void SetUp(const VideoFormat& format, const WriterOptions& options, bool globalHeader);
    void SetQuality(const WriterOptions& options);
    void Drain(const Sink& sink);
    [[noreturn]] void Fail(const std::string& step, int error) const;

    std::string path;
    LibavPtr<AVCodecContext> context;
    std::unique_ptr<FrameExporter> exporter;
    LibavPtr<AVPacket> packet = NewPacket();
    int width;
    int height;
    int64_t frames = 0;
};

}  // namespace kelmo::host
