// SPDX-License-Identifier: GPL-3.0-or-later
#include "host/media/picture/color_description.h"

namespace kelmo::host {

namespace {

// From this size on an untagged picture is taken for high definition.
constexpr int kHighDefinitionRows = 720;
constexpr int kHighDefinitionColumns = 1280;

bool IsRgb(AVPixelFormat format) {
    const AVPixFmtDescriptor* description = av_pix_fmt_desc_get(format);
    return description && (description->flags & (AV_PIX_FMT_FLAG_RGB | AV_PIX_FMT_FLAG_PAL));
}

bool IsGrey(AVPixelFormat format) {
    const AVPixFmtDescriptor* description = av_pix_fmt_desc_get(format);
    return description && description->nb_components <= 2 && !IsRgb(format);
}

// Grey pictures use all values; the grey of a video codec keeps the range of its colour siblings.
bool GreyIsLimited(AVCodecID codec) {
    switch (codec) {
        case AV_CODEC_ID_H264:
        case AV_CODEC_ID_HEVC:
        case AV_CODEC_ID_AV1:
        case AV_CODEC_ID_VP9:
            return true;
        default:
            return false;
    }
}

AVColorSpace GuessMatrix(const AVFrame& frame, AVCodecID codec) {
    // Both formats fix BT.601 whatever the size.
    if (codec == AV_CODEC_ID_VP8 || codec == AV_CODEC_ID_WEBP || codec == AV_CODEC_ID_MJPEG) {
        return AVCOL_SPC_SMPTE170M;
    }
    const bool large = frame.height >= kHighDefinitionRows || frame.width >= kHighDefinitionColumns;
    return large ? AVCOL_SPC_BT709 : AVCOL_SPC_SMPTE170M;
}

}  // namespace

AVPixelFormat WithoutRange(AVPixelFormat format) {
    switch (format) {
        case AV_PIX_FMT_YUVJ420P:
            return AV_PIX_FMT_YUV420P;
        case AV_PIX_FMT_YUVJ422P:
            return AV_PIX_FMT_YUV422P;
        case AV_PIX_FMT_YUVJ444P:
            return AV_PIX_FMT_YUV444P;
        case AV_PIX_FMT_YUVJ440P:
            return AV_PIX_FMT_YUV440P;
        case AV_PIX_FMT_YUVJ411P:
            return AV_PIX_FMT_YUV411P;
        default:
            return format;
    }
}

bool FormatHasAlpha(AVPixelFormat format) {
    const AVPixFmtDescriptor* description = av_pix_fmt_desc_get(format);
    return description && (description->flags & AV_PIX_FMT_FLAG_ALPHA);
}

ColorDescription ColorOf(AVColorSpace matrix, bool fullRange) {
    ColorDescription color;
    color.fullRange = fullRange;
    switch (matrix) {
        case AVCOL_SPC_BT470BG:
        case AVCOL_SPC_SMPTE170M:
            color.swsMatrix = SWS_CS_ITU601;
            color.weights = {0.299, 0.114};
            break;
        case AVCOL_SPC_FCC:
            color.swsMatrix = SWS_CS_FCC;
            color.weights = {0.30, 0.11};
            break;
        case AVCOL_SPC_SMPTE240M:
            color.swsMatrix = SWS_CS_SMPTE240M;
            color.weights = {0.212, 0.087};
            break;
        case AVCOL_SPC_BT2020_NCL:
        case AVCOL_SPC_BT2020_CL:
            color.swsMatrix = SWS_CS_BT2020;
            color.weights = {0.2627, 0.0593};
            break;
        default:
            matrix = AVCOL_SPC_BT709;
            break;
    }
    color.name = av_color_space_name(matrix);
    return color;
}

ColorDescription DescribeColor(const AVFrame& frame, AVCodecID codec) {
    const auto format = static_cast<AVPixelFormat>(frame.format);
    if (IsRgb(format)) {
        ColorDescription color;
        color.name = av_color_space_name(AVCOL_SPC_RGB);
        color.fullRange = true;
        return color;
    }
    bool fullRange = frame.color_range == AVCOL_RANGE_JPEG || WithoutRange(format) != format;
    if (frame.color_range == AVCOL_RANGE_UNSPECIFIED && IsGrey(format)) {
        fullRange = !GreyIsLimited(codec);
    }
    AVColorSpace matrix = frame.colorspace;
    // "RGB" on YCbCr samples is a mistake of the file, not a matrix.
    if (matrix == AVCOL_SPC_UNSPECIFIED || matrix == AVCOL_SPC_RESERVED ||
        matrix == AVCOL_SPC_RGB) {
        matrix = GuessMatrix(frame, codec);
    }
    return ColorOf(matrix, fullRange);
}

}  // namespace kelmo::host
