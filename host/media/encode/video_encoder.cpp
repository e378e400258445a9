// SPDX-License-Identifier: GPL-3.0-or-later
#include "host/media/encode/video_encoder.h"

#include <algorithm>
#include <initializer_list>
#include <string_view>

#include "host/media/encode/part_file.h"

namespace kelmo::host {

namespace {

std::string_view EncoderFor(const std::string& container, bool alpha) {
    const auto isOneOf = [&container](std::initializer_list<std::string_view> names) {
        return std::find(names.begin(), names.end(), container) != names.end();
    };
    if (container == "webm") return "libvpx-vp9";
    if (alpha && container == "mov") return "prores_ks";
    if (alpha && (container == "matroska" || container == "avi")) return "ffv1";
    if (isOneOf({"mp4", "mov", "matroska", "avi", "ipod", "flv", "mpegts"})) return "libx264";
    return {};
}

std::vector<AVPixelFormat> FormatsOf(const AVCodec& codec) {
    std::vector<AVPixelFormat> formats;
    for (const AVPixelFormat* format = codec.pix_fmts; format && *format != AV_PIX_FMT_NONE;
         ++format) {
        // Palettes are made for GIF alone.
        const bool palette = *format == AV_PIX_FMT_PAL8 && codec.id == AV_CODEC_ID_GIF;
        if (palette || sws_isSupportedOutput(*format)) formats.push_back(*format);
    }
    return formats;
}

AVPixelFormat FirstOf(const std::vector<AVPixelFormat>& offered,
                      std::initializer_list<AVPixelFormat> wanted) {
    for (AVPixelFormat format : wanted) {
        if (std::find(offered.begin(), offered.end(), format) != offered.end()) return format;
    }
    return AV_PIX_FMT_NONE;
}

AVPixelFormat AlphaFormatOf(const AVCodec& codec) {
    if (codec.id == AV_CODEC_ID_BMP) return AV_PIX_FMT_NONE;  // few programs look at it
    return FirstOf(FormatsOf(codec), {AV_PIX_FMT_BGRA, AV_PIX_FMT_RGBA, AV_PIX_FMT_ARGB,
                                      AV_PIX_FMT_PAL8, AV_PIX_FMT_YUVA444P10, AV_PIX_FMT_YUVA420P,
                                      AV_PIX_FMT_YUVA444P, AV_PIX_FMT_GBRAP});
}

AVPixelFormat OpaqueFormatOf(const AVCodec& codec) {
    if (codec.id == AV_CODEC_ID_MJPEG) {
        // Colour at full resolution costs little in a picture and keeps text and edges clean.
        return AV_PIX_FMT_YUVJ444P;
    }
    const std::vector<AVPixelFormat> offered = FormatsOf(codec);
    if (codec.id == AV_CODEC_ID_TIFF || codec.id == AV_CODEC_ID_WEBP) {
        // Readers expect RGB in the one; the encoder of the other converts as its readers do.
        const AVPixelFormat rgb = FirstOf(offered, {AV_PIX_FMT_RGB24, AV_PIX_FMT_BGRA});
        if (rgb != AV_PIX_FMT_NONE) return rgb;
    }
    if (offered.empty()) return codec.pix_fmts ? AV_PIX_FMT_NONE : AV_PIX_FMT_YUV420P;
    const AVPixelFormat usual = FirstOf(
        offered, {AV_PIX_FMT_PAL8, AV_PIX_FMT_YUV420P, AV_PIX_FMT_YUVJ420P, AV_PIX_FMT_YUV422P10,
                  AV_PIX_FMT_YUV422P, AV_PIX_FMT_YUV444P, AV_PIX_FMT_BGR0, AV_PIX_FMT_RGB24,
                  AV_PIX_FMT_BGR24, AV_PIX_FMT_BGRA, AV_PIX_FMT_RGBA});
    return usual == AV_PIX_FMT_NONE ? offered.front() : usual;
}

bool IsRgbFormat(AVPixelFormat format) {
    const AVPixFmtDescriptor* description = av_pix_fmt_desc_get(format);
    return description && (description->flags & (AV_PIX_FMT_FLAG_RGB | AV_PIX_FMT_FLAG_PAL));
}

// The samples that keep the chroma of a source finer than 4:2:0, or none.
AVPixelFormat FormatLike(const std::string& source, const AVCodec& codec) {
    const AVPixFmtDescriptor* from = av_pix_fmt_desc_get(av_get_pix_fmt(source.c_str()));
    if (!from || (from->flags & AV_PIX_FMT_FLAG_PAL) || from->nb_components < 3) {
        return AV_PIX_FMT_NONE;
    }
    const std::vector<AVPixelFormat> offered = FormatsOf(codec);
    if (from->flags & AV_PIX_FMT_FLAG_RGB) {
        return FirstOf(offered, {AV_PIX_FMT_BGR0, AV_PIX_FMT_GBRP, AV_PIX_FMT_BGR24,
                                 AV_PIX_FMT_RGB24, AV_PIX_FMT_BGRA, AV_PIX_FMT_RGBA});
    }
    if (from->log2_chroma_w == 0) {
        return FirstOf(offered, {AV_PIX_FMT_YUV444P, AV_PIX_FMT_YUVJ444P, AV_PIX_FMT_YUV444P10});
    }
    if (from->log2_chroma_w == 1 && from->log2_chroma_h == 0) {
        return FirstOf(offered, {AV_PIX_FMT_YUV422P, AV_PIX_FMT_YUVJ422P, AV_PIX_FMT_YUV422P10});
    }
    return AV_PIX_FMT_NONE;
}

// The samples that were asked for by name.
AVPixelFormat NamedFormat(const std::string& path, const std::string& name, const AVCodec& codec) {
    const AVPixelFormat format = av_get_pix_fmt(name.c_str());
    const std::vector<AVPixelFormat> offered = FormatsOf(codec);
    const bool taken = std::find(offered.begin(), offered.end(), format) != offered.end();
    if (taken || (!codec.pix_fmts && sws_isSupportedOutput(format))) return format;
    std::string names;
    for (AVPixelFormat one : offered) names += std::string(" ") + av_get_pix_fmt_name(one);
    FailToWrite(path, std::string("the encoder '") + codec.name + "' does not take '" + name +
                          "'; it takes" + names);
}

// Codecs that know odd sizes in spite of 4:2:0.
bool TakesOddSizes(AVCodecID codec) {
    switch (codec) {
        case AV_CODEC_ID_VP8:
        case AV_CODEC_ID_VP9:
        case AV_CODEC_ID_AV1:
        case AV_CODEC_ID_MJPEG:
        case AV_CODEC_ID_WEBP:
        case AV_CODEC_ID_FFV1:
            return true;
        default:
            return false;
    }
}

int Rounded(int size, int shift) {
    return (size + (1 << shift) - 1) >> shift << shift;
}

// What the format itself allows; the encoders say it less clearly.
int LargestSideOf(AVCodecID codec) {
    switch (codec) {
        case AV_CODEC_ID_H264:
            return 16384;
        case AV_CODEC_ID_VP8:
        case AV_CODEC_ID_WEBP:
            return 16383;
        default:
            return 65535;
    }
}

int DefaultQuality(const AVCodec& codec) {
    const std::string_view name = codec.name;
    if (name == "libx264" || name == "libx264rgb") return 20;
    if (name == "libx265") return 24;
    if (codec.id == AV_CODEC_ID_VP8) return 12;
    if (codec.id == AV_CODEC_ID_VP9) return 28;
    if (codec.id == AV_CODEC_ID_AV1) return 30;
    if (codec.id == AV_CODEC_ID_MJPEG) return 2;
    if (codec.id == AV_CODEC_ID_WEBP) return 92;
    return -1;
}

}  // namespace

VideoFormat ChooseVideoFormat(const std::string& path, const std::string& container,
                              AVCodecID containerDefault, AVCodecID picture,
                              const WriterOptions& options, std::vector<std::string>& warnings) {
    VideoFormat format;
    const bool isPicture = picture != AV_CODEC_ID_NONE;
    if (!options.videoCodec.empty()) {
        format.codec = avcodec_find_encoder_by_name(options.videoCodec.c_str());
        if (!format.codec || format.codec->type != AVMEDIA_TYPE_VIDEO) {
            FailToWrite(path, "there is no video encoder '" + options.videoCodec +
                                  "' here; \"ffmpeg -encoders\" lists their names");
        }
        if (isPicture && format.codec->id != picture) {
            FailToWrite(path, "the encoder '" + options.videoCodec +
                                  "' does not make pictures of this ending");
        }
    } else if (isPicture) {
        // The plain encoder: the animated one of WebP keeps every frame to itself until the end.
        format.codec = picture == AV_CODEC_ID_WEBP ? avcodec_find_encoder_by_name("libwebp")
                                                   : avcodec_find_encoder(picture);
    } else {
        const std::string_view name = EncoderFor(container, options.keepAlpha);
        if (!name.empty()) format.codec = avcodec_find_encoder_by_name(name.data());
        if (!format.codec) format.codec = avcodec_find_encoder(containerDefault);
    }
    if (!format.codec) {
        FailToWrite(path, std::string("no encoder for ") +
                              (isPicture ? "this kind of picture" : "'" + container + "'") +
                              " is installed");
    }
    const bool ownAlpha =
        picture == AV_CODEC_ID_PNG || picture == AV_CODEC_ID_WEBP || picture == AV_CODEC_ID_TIFF;
    const bool wantsAlpha = options.keepAlpha || (ownAlpha && !options.flatten);
    if (!options.pixelFormat.empty()) {
        format.pixelFormat = NamedFormat(path, options.pixelFormat, *format.codec);
        const AVPixFmtDescriptor* wanted = av_pix_fmt_desc_get(format.pixelFormat);
        format.alpha = wantsAlpha && (wanted->flags & AV_PIX_FMT_FLAG_ALPHA);
        return format;
    }
    if (wantsAlpha) {
        format.pixelFormat = AlphaFormatOf(*format.codec);
        format.alpha = format.pixelFormat != AV_PIX_FMT_NONE;
        if (!format.alpha) {
            AddOnce(warnings, "'" + path + "': " + format.codec->name +
                                  " holds no transparency; the picture stands on black");
        }
    }
    if (!format.alpha && !isPicture) {
        format.pixelFormat = FormatLike(options.sourceFormat, *format.codec);
    }
    if (!format.alpha && format.pixelFormat == AV_PIX_FMT_NONE) {
        format.pixelFormat = OpaqueFormatOf(*format.codec);
    }
    if (format.pixelFormat == AV_PIX_FMT_NONE) {
        FailToWrite(path, std::string("the encoder '") + format.codec->name +
                              "' takes no picture format that is known here");
    }
    return format;
}

VideoEncoder::VideoEncoder(const std::string& path, const VideoFormat& format,
                           const WriterOptions& options, bool globalHeader)
    : path(path), width(options.width), height(options.height) {
    const int largest = LargestSideOf(format.codec->id);
    if (width > largest || height > largest) {
        FailToWrite(path, std::string(format.codec->name) + " takes at most " +
                              std::to_string(largest) +
                              " pixels a side; choose a smaller size or another encoder");
    }
    SetUp(format, options, globalHeader);
    const int error = avcodec_open2(context.get(), format.codec, nullptr);
    if (error < 0) {
        Fail(std::string("the encoder '") + format.codec->name + "' does not take " +
                 std::to_string(context->width) + "x" + std::to_string(context->height) + " at " +
                 std::to_string(options.frameRate.PerSecond()) + " frames a second",
             error);
    }
    const bool fullRange = context->color_range == AVCOL_RANGE_JPEG;
    exporter =
        std::make_unique<FrameExporter>(width, height, context->width, context->height,
                                        format.pixelFormat, ColorOf(context->colorspace, fullRange),
                                        format.alpha, options.reproducible ? 1 : options.threads);
}

void VideoEncoder::SetUp(const VideoFormat& format, const WriterOptions& options,
                         bool globalHeader) {
    context.reset(avcodec_alloc_context3(format.codec));
    if (!context) throw std::bad_alloc();
    int shiftX = 0, shiftY = 0;
    if (!TakesOddSizes(format.codec->id)) {
        av_pix_fmt_get_chroma_sub_sample(format.pixelFormat, &shiftX, &shiftY);
    }
    context->width = Rounded(width, shiftX);
    context->height = Rounded(height, shiftY);
    context->pix_fmt = format.pixelFormat;
    context->time_base = {options.frameRate.denominator, options.frameRate.numerator};
    context->framerate = {options.frameRate.numerator, options.frameRate.denominator};
    context->sample_aspect_ratio = {1, 1};
    context->thread_count = options.reproducible ? 1 : options.threads;
    if (globalHeader) context->flags |= AV_CODEC_FLAG_GLOBAL_HEADER;
    if (options.reproducible) context->flags |= AV_CODEC_FLAG_BITEXACT;
    if (format.codec->id == AV_CODEC_ID_MJPEG) {
        context->colorspace = AVCOL_SPC_SMPTE170M;
        context->color_range = AVCOL_RANGE_JPEG;
    } else if (IsRgbFormat(format.pixelFormat)) {
        context->colorspace = AVCOL_SPC_RGB;
        context->color_range = AVCOL_RANGE_JPEG;
    } else {
        context->colorspace = AVCOL_SPC_BT709;
        context->color_primaries = AVCOL_PRI_BT709;
        context->color_trc = AVCOL_TRC_BT709;
        context->color_range = AVCOL_RANGE_MPEG;
    }
    SetQuality(options);
}

void VideoEncoder::SetQuality(const WriterOptions& options) {
    const AVCodec& codec = *context->codec;
    void* own = context->priv_data;
    const int quality = options.crf >= 0 ? options.crf : DefaultQuality(codec);
    if (codec.id == AV_CODEC_ID_MJPEG) {
        context->flags |= AV_CODEC_FLAG_QSCALE;
        context->global_quality = std::clamp(quality, 2, 31) * FF_QP2LAMBDA;
    } else if (codec.id == AV_CODEC_ID_WEBP) {
        av_opt_set_double(own, "quality", std::clamp(quality, 0, 100), 0);
    } else if (quality >= 0 && av_opt_find(own, "crf", nullptr, 0, 0)) {
        context->bit_rate = 0;
        av_opt_set_double(own, "crf", quality, 0);
    } else if (codec.id == AV_CODEC_ID_MPEG4 || codec.id == AV_CODEC_ID_MPEG2VIDEO) {
        context->flags |= AV_CODEC_FLAG_QSCALE;
        context->global_quality = 3 * FF_QP2LAMBDA;
    }
    if (!options.preset.empty()) av_opt_set(own, "preset", options.preset.c_str(), 0);
    if (codec.id == AV_CODEC_ID_VP9) {
        // Its default takes seconds for a frame; this is the knee of quality against time.
        av_opt_set(own, "deadline", "good", 0);
        av_opt_set_int(own, "cpu-used", 4, 0);
        av_opt_set_int(own, "row-mt", options.reproducible ? 0 : 1, 0);
        // Frames that are never shown cannot carry alpha.
        if (context->pix_fmt == AV_PIX_FMT_YUVA420P) av_opt_set_int(own, "auto-alt-ref", 0, 0);
    }
    if (codec.id == AV_CODEC_ID_PRORES && context->pix_fmt == AV_PIX_FMT_YUVA444P10) {
        av_opt_set(own, "profile", "4444", 0);
        av_opt_set_int(own, "alpha_bits", 16, 0);
        av_opt_set(own, "vendor", "apl0", 0);
    }
}

void VideoEncoder::Fail(const std::string& step, int error) const {
    FailToWrite(path, step + ": " + LibavErrorText(error));
}

void VideoEncoder::Encode(const Picture& picture, const Sink& sink) {
    if (picture.width != width || picture.height != height) {
        FailToWrite(path, "a frame of " + std::to_string(picture.width) + "x" +
                              std::to_string(picture.height) + " came where " +
                              std::to_string(width) + "x" + std::to_string(height) + " was agreed");
    }
    int error = 0;
    AVFrame* frame = exporter->Export(picture, error);
    if (!frame) Fail("a frame cannot be converted", error);
    frame->pts = frames++;
    frame->pict_type = AV_PICTURE_TYPE_NONE;
    frame->sample_aspect_ratio = {1, 1};
    frame->quality = context->global_quality;
    frame->color_range = context->color_range;
    frame->colorspace = context->colorspace;
    frame->color_primaries = context->color_primaries;
    frame->color_trc = context->color_trc;
    error = avcodec_send_frame(context.get(), frame);
    if (error < 0) Fail("a frame cannot be encoded", error);
    Drain(sink);
}

void VideoEncoder::Flush(const Sink& sink) {
    const int error = avcodec_send_frame(context.get(), nullptr);
    if (error < 0 && error != AVERROR_EOF) Fail("the last frames cannot be encoded", error);
    Drain(sink);
}

void VideoEncoder::Drain(const Sink& sink) {
    for (;;) {
        const int error = avcodec_receive_packet(context.get(), packet.get());
        if (error == AVERROR(EAGAIN) || error == AVERROR_EOF) return;
        if (error < 0) Fail("a frame cannot be encoded", error);
        if (packet->duration == 0) packet->duration = 1;
        sink(*packet);
        av_packet_unref(packet.get());
    }
}

}  // namespace kelmo::host
