// SPDX-License-Identifier: GPL-3.0-or-later
#include "host/media/common/libav.h"

#include <cctype>
#include <mutex>
#include <new>

namespace kelmo::host {

void LibavDeleter::operator()(AVFormatContext* context) const {
    // Output contexts are closed by the writer, which knows what they write to.
    if (context->iformat) {
        avformat_close_input(&context);
    } else {
        avformat_free_context(context);
    }
}

LibavPtr<AVFrame> NewFrame() {
    LibavPtr<AVFrame> frame(av_frame_alloc());
    if (!frame) throw std::bad_alloc();
    return frame;
}

LibavPtr<AVPacket> NewPacket() {
    LibavPtr<AVPacket> packet(av_packet_alloc());
    if (!packet) throw std::bad_alloc();
    return packet;
}

std::string LibavErrorText(int error) {
    char text[AV_ERROR_MAX_STRING_SIZE] = {};
    av_strerror(error, text, sizeof text);
    if (std::isupper(static_cast<unsigned char>(text[0])) &&
        std::islower(static_cast<unsigned char>(text[1]))) {
        text[0] = static_cast<char>(std::tolower(static_cast<unsigned char>(text[0])));
    }
    return text;
}

void PrepareLibav() {
    static std::once_flag once;
    std::call_once(once, [] {
        if (av_log_get_level() == AV_LOG_INFO) av_log_set_level(AV_LOG_FATAL);
    });
}

std::string FileUrl(const std::string& path) {
    return "file:" + path;
}

void AddOnce(std::vector<std::string>& sentences, const std::string& sentence) {
    for (const std::string& known : sentences) {
        if (known == sentence) return;
    }
    sentences.push_back(sentence);
}

}  // namespace kelmo::host
