// SPDX-License-Identifier: GPL-3.0-or-later
#include "host/media/sound/audio_reader.h"

#include <algorithm>
#include <cstring>

#include "host/media/sound/audio_decoder.h"

namespace kelmo::host {

namespace {

// Forwards further than this many seconds: seek instead of decoding all between.
constexpr int kForwardSeek = 10;
// Samples kept behind the last read, so that reading one frame twice needs no seek.
constexpr int kKeptSeconds = 2;

}  // namespace

class AudioReader::Impl {
public:
    Impl(const std::string& path, int samplesPerSecond)
        : rate(std::clamp(samplesPerSecond, 1000, 768000)), decoder(path, rate) {
        const AVStream* stream = decoder.Input().Audio();
        if (!stream) return;
        info.present = true;
        info.codec = avcodec_get_name(stream->codecpar->codec_id);
        info.sourceRate = stream->codecpar->sample_rate;
        info.sourceChannels = stream->codecpar->ch_layout.nb_channels;
        info.duration = decoder.Input().DurationOf(*stream);
    }

    void Read(int64_t first, int count, int16_t* out) {
        if (count <= 0) return;
        const int64_t end = first + count;
        std::memset(out, 0, sizeof(int16_t) * 2 * static_cast<size_t>(count));
        if (first < heldStart && !(heldStart == earliest)) {
            Reposition(first);
        } else if (first > HeldEnd() + int64_t{kForwardSeek} * rate && !atEnd &&
                   decoder.SeeksExactly()) {
            Reposition(first);
        }
        CopyHeld(first, end, out);
        while (!atEnd && HeldEnd() < end) {
            DecodeMore();
            // A gap moves what is held; the samples before it were copied already.
            CopyHeld(first, end, out);
            Forget(first);
        }
    }

    const int rate;
    AudioInfo info;
    AudioDecoder decoder;

private:
    int64_t HeldEnd() const { return heldStart + static_cast<int64_t>(held.size() / 2); }

    void Reposition(int64_t sample) {
        decoder.SeekBefore(std::max<int64_t>(sample, 0));
        held.clear();
        heldStart = sample;
        atEnd = false;
        started = true;
        earliest = kUnknown;
    }

    void DecodeMore() {
        scratch.clear();
        int64_t position = 0;
        const AudioDecoder::Run run = decoder.Next(scratch, position);
        if (run == AudioDecoder::Run::kEnd) {
            atEnd = true;
            return;
        }
        if (run == AudioDecoder::Run::kStartsAt) {
            held.clear();
            heldStart = position;
            if (!started) earliest = position;
            started = true;
        }
        held.insert(held.end(), scratch.begin(), scratch.end());
    }

    void CopyHeld(int64_t first, int64_t end, int16_t* out) const {
        const int64_t from = std::max(first, heldStart);
        const int64_t to = std::min(end, HeldEnd());
        if (from >= to) return;
        std::memcpy(out + 2 * (from - first), held.data() + 2 * (from - heldStart),
                    sizeof(int16_t) * 2 * static_cast<size_t>(to - from));
    }

    void Forget(int64_t first) {
        const int64_t keepFrom = first - int64_t{kKeptSeconds} * rate;
        // In large steps, so that the rest is moved rarely.
        if (keepFrom - heldStart < int64_t{kKeptSeconds} * rate) return;
        const int64_t drop = std::min(keepFrom, HeldEnd()) - heldStart;
        held.erase(held.begin(), held.begin() + 2 * drop);
        heldStart += drop;
    }

    static constexpr int64_t kUnknown = INT64_MIN;

    std::vector<int16_t> held;  // pairs from heldStart on
    int64_t heldStart = 0;
    // The place of the very first sample, known while nothing before heldStart was dropped.
    int64_t earliest = 0;
    bool started = false;
    bool atEnd = false;
    std::vector<int16_t> scratch;
};

std::unique_ptr<AudioReader> AudioReader::Open(const std::string& path, int samplesPerSecond) {
    return std::unique_ptr<AudioReader>(
        new AudioReader(std::make_unique<Impl>(path, samplesPerSecond)));
}

AudioReader::AudioReader(std::unique_ptr<Impl> parts) : impl(std::move(parts)) {}

AudioReader::~AudioReader() = default;

const AudioInfo& AudioReader::Info() const {
    return impl->info;
}

int AudioReader::SamplesPerSecond() const {
    return impl->rate;
}

void AudioReader::Read(int64_t firstSample, int count, int16_t* out) {
    impl->Read(firstSample, count, out);
}

const std::vector<std::string>& AudioReader::Warnings() const {
    return impl->decoder.Warnings();
}

}  // namespace kelmo::host
