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

// How a frame is brought to a size of another shape.
enum class FitMode {
    kStretch,    // fills the size, shape be damned
    kLetterbox,  // keeps its shape, centred, transparent beside it
};

struct MediaInfo {
    // Size that is shown: upright (rotation of the file applied), square pixels. Never 0.
    int width = 0;
    int height = 0;
    // Rate of the file. With frames at uneven times the base rate that all fall on (dropped frames
    // are held), or the average where that is not a rate of pictures. 25 for one picture.
    FrameRate frameRate;
    double duration = 0;     // seconds of the pictures; 0 when unknown or one picture
    int64_t frameCount = 0;  // at frameRate; 0 when unknown, 1 for one picture
    bool still = false;      // one picture, the same at every time
    bool hasAlpha = false;
    bool hasAudio = false;
    bool fullRange = false;  // 0..255 instead of 16..235; always true for RGB
    int rotation = 0;        // degrees clockwise that were applied: 0, 90, 180, 270
    std::string container;   // libav's short names: "mov", "matroska", "png_pipe"...
    std::string videoCodec;
    std::string audioCodec;  // empty without sound
    std::string pixelFormat;
    std::string colorMatrix;  // "bt709", "smpte170m", "bt2020nc", "gbr": what is really applied
    int depth = 8;            // bits a sample; more than 8 are rounded to 8
    bool interlaced = false;
    // What is done to the pictures on reading, a sentence each: HDR, depth, deinterlacing.
    std::vector<std::string> notes;
    int audioRate = 0;  // samples a second
    int audioChannels = 0;
};

struct ReaderOptions {
    // Size of the delivered frames in pixels; 0 means the size of the file. If only one is given,
    // the other follows from the shape of the file.
    int width = 0;
    int height = 0;
    FitMode fit = FitMode::kLetterbox;
    // Rate of numbered pictures, which do not know their own.
    FrameRate sequenceRate{25, 1};
    // Makes whole pictures of interlaced ones.
    bool deinterlace = true;
    int threads = 0;  // of the decoder and the conversion; 0 = as many as there are cores
};

// Reads the pictures of a video file, of one picture, or of numbered pictures ("frame%04d.png", the
// first number is between 0 and 4), at any time. "-" is standard input. A path is a file and never
// an address: nothing is fetched from a network.
//
// Time 0 is the first picture. The frame of a time is the one that a player shows then: the last
// whose time stamp is not later. A file with uneven time stamps is therefore brought to an even
// rate by asking at even times.
//
// Colour: YCbCr becomes RGB by the matrix and the range that the stream is tagged with. Without a
// tag, pictures of at least 720 rows or 1280 columns are BT.709 and smaller ones BT.601, limited
// range; JPEG is BT.601 full range as its format says. HDR (PQ, HLG) and BT.2020 are brought to
// BT.709 with a mild tone curve; other primaries and transfer curves are taken for BT.709. Straight
// alpha is premultiplied here.
//
// Asking forwards is cheap: each frame is decoded once. A time before the last one seeks to the key
// frame before it and decodes from there; if the file cannot, does not deliver after a seek, or
// stores too few time stamps to be exact then (MPEG program streams, AVI with reordered frames), it
// is opened again and decoded from its start.
//
// A damaged or truncated file gives its last good frame from there on, and a warning.
//
// Thread rule: one object, one thread at a time. Two objects are independent.
class MediaReader {
public:
    // Opens the file and decodes its first frame. Throws MediaError.
    static std::unique_ptr<MediaReader> Open(const std::string& path,
                                             const ReaderOptions& options = {});
    ~MediaReader();
    MediaReader(const MediaReader&) = delete;
    MediaReader& operator=(const MediaReader&) = delete;

    const MediaInfo& Info() const;

    // Changes the size of what is delivered from the next read on, as in ReaderOptions. Throws
    // MediaError when the size cannot be held.
    void SetOutput(int width, int height, FitMode fit);
    int OutputWidth() const;
    int OutputHeight() const;

    // The frame of this time, in seconds. Before the first frame the first, after the last the
    // last. False only when the frame cannot be converted to BGRA; `out` is transparent then. A
    // frame that is asked for again is copied, not converted again.
    bool ReadFrameAt(double seconds, Picture& out);

    // Whether the last read gave the same frame of the file as the read before it.
    bool LastFrameRepeated() const;

    // Whether the last read asked for a time after the end of the last frame: how the end of a
    // stream of unknown duration is found.
    bool Ended() const;

    // What went wrong without stopping the work, each sentence once, in order.
    const std::vector<std::string>& Warnings() const;

private:
    class Impl;
    explicit MediaReader(std::unique_ptr<Impl> parts);
    std::unique_ptr<Impl> impl;
};

}  // namespace kelmo::host
