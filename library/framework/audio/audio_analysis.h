// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

namespace kelmo {

/// The sound of one frame: interleaved signed 16-bit samples, borrowed.
struct AudioInput {
    int32_t channels = 0;
    /// Samples of each channel.
    int32_t samples = 0;
    /// Size of `data`. What `channels` and `samples` promise beyond it counts as silence.
    int32_t bytes = 0;
    int32_t format = 0;
    /// Null is silence.
    const void* data = nullptr;
};

struct AudioSettings {
    /// The part of the scale 0..1 that is stretched over the output. Equal values make a switch: 1
    /// for every bin above them, else 0.
    float audioMin = 0.0F;
    float audioMax = 1.0F;
    /// Band in Hz.
    float frequencyMin = 0.0F;
    float frequencyMax = 22050.0F;
    /// Exponent of the power scale; 0 takes decibels (-150..-10).
    float compressRatio = 1.0F;
};

/// Spectrum of the sound of a filter, frame by frame, for its shader: levels of 0..1 that rise at
/// once and fall ever faster, and their mean.
///
/// The transform is FFTW's, single precision, over the last N samples with a Hann window; N is
/// twice the power of two that holds the samples of a frame. It is planned on the first run and
/// again when the samples per frame need another N; otherwise a run allocates nothing.
///
/// Thread rule: one mutex of the process guards `Analyse` and the release of the state, so objects
/// may be used from several threads; the accessors are for the thread that calls `Analyse`.
/// Settings that are no finite numbers count as their defaults; an exponent is taken from -2..30,
/// beyond which its scale has no extent in single precision.
class AudioAnalysis {
public:
    AudioAnalysis() = default;
    ~AudioAnalysis();
    AudioAnalysis(const AudioAnalysis&) = delete;
    AudioAnalysis& operator=(const AudioAnalysis&) = delete;

    /// `position` is the frame's number: a second run for the same one takes no new samples and
    /// shows the levels as they are. `frameRate` in frames a second counts when N changes.
    /// `smoothing` other than 0 blends each level with the one before (0..1).
    /// Without memory for the transform the results stay what they were.
    void Analyse(const AudioInput& input, const AudioSettings& settings, int32_t position,
                 float frameRate, float smoothing);

    /// Range of the output of the last run that had one, both included; they index `Spectrum`.
    int32_t FirstBin() const { return firstBin; }
    int32_t LastBin() const { return lastBin; }
    /// One value of 0..1 a bin; empty before the first run.
    const std::vector<float>& Spectrum() const { return spectrum; }
    /// The values of FirstBin..LastBin.
    std::span<const float> Band() const;
    /// Mean of that band.
    float Intensity() const { return intensity; }

    int32_t BinCount() const { return binCount; }
    /// In Hz.
    float BinWidth() const { return binWidth; }
    float SampleRate() const { return sampleRate; }
    /// N.
    int32_t FftSize() const { return fftSize; }

private:
    struct Scale;
    struct BinRange {
        int32_t first;
        int32_t last;
    };

    void ReleaseTransform();
    bool Prepare(int32_t samples, float frameRate, float floor);
    void PlanTransform();
    void TakeSamples(const AudioInput& input, int32_t samples);
    BinRange PickBand(const AudioSettings& settings) const;
    void FindLevels(BinRange range, const Scale& scale);
    void Smooth(BinRange range, const Scale& scale, float smoothing);
    void Fall(BinRange range, const Scale& scale, bool samePosition);
    float Stretch(BinRange range, const Scale& scale, const AudioSettings& settings);

    bool fftReady = false;
    int32_t fftSize = 0;
    /// Owned; FFTW's own types stay in the .cpp file.
    float* fftInput = nullptr;
    float (*fftOutput)[2] = nullptr;
    void* fftPlan = nullptr;
    int32_t binCount = 0;
    float binWidth = 0.0F;
    float sampleRate = 0.0F;
    /// The last N mono samples, -1..1.
    std::vector<float> sampleHistory;
    /// The samples of the frame as they came.
    std::vector<int16_t> words;
    std::vector<float> window;
    std::vector<float> levels;
    /// Factor of the next fall of each bin.
    std::vector<float> fallOff;
    std::vector<float> spectrum;
    /// Levels of a run before they are compared with `levels`.
    std::vector<float> newLevels;
    float intensity = 0.0F;
    int32_t firstBin = 0;
    int32_t lastBin = 0;
    int32_t lastPosition = -1;
};

}  // namespace kelmo
