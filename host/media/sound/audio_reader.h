// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "host/media/common/media_error.h"

namespace kelmo::host {

struct AudioInfo {
    bool present = false;  // false: the file holds no sound and reads as silence
    std::string codec;
    int sourceRate = 0;  // samples a second in the file
    int sourceChannels = 0;
    double duration = 0;  // seconds; 0 when unknown
};

// Reads the sound of a file as interleaved 16-bit stereo at one rate. Mono is doubled; more than
// two channels are mixed down (centre and surrounds at -3 dB, the sum scaled so that it cannot
// clip).
//
// Sample 0 is the moment of the first picture, so that frame i of a rate covers the samples
// FirstSampleOf(i) .. FirstSampleOf(i + 1). A file without pictures begins with its first sample.
// Gaps in the file and everything outside of it are silence.
//
// Reading forwards decodes once; reading backwards starts again from a seek, or from the beginning
// if the file cannot seek, and is exact to the sample for codecs without memory and to the
// codec's own warm-up otherwise.
//
// Thread rule: one object, one thread at a time.
class AudioReader {
public:
    // Throws MediaError if the file cannot be opened; a file without sound is no error.
    static std::unique_ptr<AudioReader> Open(const std::string& path, int samplesPerSecond = 44100);
    ~AudioReader();
    AudioReader(const AudioReader&) = delete;
    AudioReader& operator=(const AudioReader&) = delete;

    const AudioInfo& Info() const;
    int SamplesPerSecond() const;

    // Writes `count` samples (pairs: 2 * count values) from `firstSample` on, which may be
    // negative. Always fills all of `out`.
    void Read(int64_t firstSample, int count, int16_t* out);

    // What went wrong without stopping the work, each sentence once, in order.
    const std::vector<std::string>& Warnings() const;

private:
    class Impl;
    explicit AudioReader(std::unique_ptr<Impl> parts);
    std::unique_ptr<Impl> impl;
};

}  // namespace kelmo::host
