// SPDX-License-Identifier: GPL-3.0-or-later
#include "host/media/common/codecs.h"

#include "host/media/common/libav.h"

namespace kelmo::host {

namespace {

struct Wanted {
    const char* name;
    const char* purpose;
};

constexpr Wanted kEncoders[] = {
    {"libx264", "mp4, mov, mkv, avi: video"},
    {"libvpx-vp9", "webm: video, with and without alpha"},
    {"prores_ks", "mov: video with alpha"},
    {"ffv1", "mkv, avi: video with alpha, lossless"},
    {"gif", "gif: animation"},
    {"png", "png: pictures with alpha"},
    {"mjpeg", "jpg: pictures"},
    {"libwebp", "webp: pictures with alpha"},
    {"bmp", "bmp: pictures"},
    {"tiff", "tiff: pictures with alpha"},
    {"aac", "mp4, mov, mkv: sound"},
    {"libopus", "webm: sound"},
    {"libvorbis", "webm: sound where Opus is missing"},
    {"libmp3lame", "avi: sound"},
};

constexpr Wanted kDecoders[] = {
    {"h264", "H.264 video"},        {"hevc", "H.265 video"},
    {"mpeg4", "MPEG-4 video"},      {"mpeg2video", "MPEG-2 video"},
    {"vp8", "VP8 video"},           {"vp9", "VP9 video"},
    {"libvpx", "VP8 with alpha"},   {"libvpx-vp9", "VP9 with alpha"},
    {"libdav1d", "AV1 video"},      {"prores", "ProRes video"},
    {"qtrle", "QuickTime RLE"},     {"ffv1", "FFV1 video"},
    {"mjpeg", "JPEG pictures"},     {"png", "PNG pictures"},
    {"webp", "WebP pictures"},      {"gif", "GIF animation"},
    {"bmp", "BMP pictures"},        {"tiff", "TIFF pictures"},
    {"aac", "AAC sound"},           {"mp3float", "MP3 sound"},
    {"ac3", "AC-3 sound"},          {"flac", "FLAC sound"},
    {"opus", "Opus sound"},         {"vorbis", "Vorbis sound"},
    {"pcm_s16le", "plain samples"},
};

std::string Version(const char* name, unsigned version) {
    return std::string(name) + " " + std::to_string(version >> 16) + "." +
           std::to_string(version >> 8 & 255) + "." + std::to_string(version & 255);
}

}  // namespace

std::vector<CodecEntry> Codecs() {
    std::vector<CodecEntry> entries;
    for (const Wanted& wanted : kEncoders) {
        const bool found = avcodec_find_encoder_by_name(wanted.name) != nullptr;
        entries.push_back({wanted.name, wanted.purpose, true, found});
    }
    for (const Wanted& wanted : kDecoders) {
        const bool found = avcodec_find_decoder_by_name(wanted.name) != nullptr;
        entries.push_back({wanted.name, wanted.purpose, false, found});
    }
    return entries;
}

std::string MediaLibraries() {
    return Version("libavformat", avformat_version()) + ", " +
           Version("libavcodec", avcodec_version()) + ", " +
           Version("libavutil", avutil_version()) + ", " +
           Version("libswscale", swscale_version()) + ", " +
           Version("libswresample", swresample_version());
}

}  // namespace kelmo::host
