// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "host/media/common/frame_rate.h"
#include "host/media/common/media_error.h"
#include "host/media/picture/picture.h"

namespace kelmo::host {

enum class AudioMode {
    kNone,
    kCopy,    // the sound of a file, its packets as they are where the container takes the codec
    kEncode,  // 16-bit stereo given by WriteAudio
};

struct WriterOptions {
    int width = 0;   // pixels of the frames that will come
    int height = 0;  // pixels
    FrameRate frameRate{25, 1};

    // libav's name of an encoder ("libx265", "prores_ks"); empty takes what suits the container.
    std::string videoCodec;
    // libav's name of the samples to write ("yuv444p"); empty: those of `sourceFormat`, where the
    // encoder has samples of 8 bits or more with the same chroma, else its usual ones.
    std::string pixelFormat;
    std::string sourceFormat;  // samples of the clip that the frames come from; may be empty
    // Quality of encoders that know one: x264/x265 0..51 (less is better), VP9/AV1 0..63, JPEG and
    // MJPEG 2..31, WebP 0..100 (more is better). -1 takes a good value.
    int crf = -1;
    std::string preset;  // speed of encoders that know one, "medium" for x264; empty = default
    // Keeps transparency: WebM VP9 with alpha, MOV ProRes 4444, PNG, WebP, GIF (on or off). If the
    // file cannot hold any, the frames are written on black and a warning says so. PNG, WebP and
    // TIFF pictures keep theirs in any case but `flatten`.
    bool keepAlpha = false;
    bool flatten = false;  // without keepAlpha: on black whatever the file could hold

    AudioMode audio = AudioMode::kNone;
    std::string audioSource;    // kCopy: the file whose sound is taken
    double audioStart = 0;      // kCopy: seconds in that file that fall on the first frame
    double audioDuration = -1;  // kCopy: seconds; negative: as long as the pictures last
    int audioRate = 44100;      // kEncode: samples a second
    std::string audioCodec;     // encoder to use; with kCopy it forces encoding. Empty: automatic

    std::string container;  // libav's name of a format; empty: by the ending of the path
    // Same input, same bytes: one thread, no version strings and no dates in the file.
    bool reproducible = false;
    int threads = 0;  // of the encoder; 0 = as many as there are cores
};

// Writes frames to a video file, to one picture or to numbered pictures ("out%04d.png", from 1 on;
// a single picture keeps its first frame and says so if more come).
//
// Defaults by ending: mp4, mov, mkv, avi: H.264, 4:2:0, BT.709 limited range, tagged so (mov with
// alpha: ProRes 4444; mkv with alpha: FFV1); webm: VP9; gif; png, jpg, webp, bmp, tiff: pictures.
// 4:2:0 codecs want even sizes: an odd one grows by one column or row, which repeats its neighbour.
// JPEG holds no alpha: it is flattened on black.
//
// Sound: packets are copied when the container takes them; otherwise the sound is mixed to stereo
// and encoded to AAC (mp4, mov, mkv), MP3 (avi) or Opus (webm). Copied packets are not cut: mp4 and
// mov tell players what to leave out of the first one, elsewhere the sound begins with the first
// whole packet (up to about 20 ms late, never out of time). Pictures and GIF hold no sound: a
// warning.
//
// The file is written beside its place as "<path>.part" and takes its name in Finish; until then an
// older file of that name stays as it was. A writer that is destroyed without Finish removes what
// it wrote. Finish after any number of frames but none, also after an interrupt, leaves a file that
// plays. Numbered pictures get their names one by one, each when it is complete; those that replace
// older files wait for Finish. "-" writes to standard output (container needed), and a path that is
// there and no regular file (a named pipe, /dev/null) is written itself: both know no part file.
//
// Thread rule: one object, one thread at a time.
class MediaWriter {
public:
    // Throws MediaError: no folder, no permission, unknown ending, encoder missing, bad size or
    // rate.
    static std::unique_ptr<MediaWriter> Open(const std::string& path, const WriterOptions& options);
    ~MediaWriter();
    MediaWriter(const MediaWriter&) = delete;
    MediaWriter& operator=(const MediaWriter&) = delete;

    // The next frame, of the size of the options. Throws MediaError (disk full, wrong size).
    void WriteFrame(const Picture& picture);

    // kEncode: the next samples, interleaved 16-bit stereo; any count. Call about frame by frame,
    // so that sound and pictures lie close together in the file.
    void WriteAudio(const int16_t* samples, int count);

    // Writes what is still on its way and gives the file its name. Throws MediaError.
    void Finish();

    // Stops and removes what was written. Also what the destructor does without Finish.
    void Abort() noexcept;

    int64_t FramesWritten() const;
    const std::string& VideoCodec() const;  // the encoder in use
    const std::string& AudioCodec() const;  // "copy (aac)", an encoder, or empty
    const std::vector<std::string>& Warnings() const;

private:
    class Impl;
    explicit MediaWriter(std::unique_ptr<Impl> parts);
    std::unique_ptr<Impl> impl;
};

}  // namespace kelmo::host
