// SPDX-License-Identifier: GPL-3.0-or-later
// The sound of a filter: what the host gives, and what the shader gets.
#include "framework/audio/audio_analysis.h"
#include "framework/filter/nle_opengl_filter.h"

namespace kelmo {

namespace {

/// The settings of "audio_type" 1: a band for voices, compressed hard.
constexpr AudioSettings kVoiceSettings = {0.0F, 0.5F, 0.0F, 15000.0F, 0.2F};

}  // namespace

int32_t NLEOpenGLFilter::SetAudioInput(int32_t channels, int32_t samples, int32_t bytes,
                                       int32_t format, const void* data) {
    if (!info->hasAudio) return kFilterFailed;
    audioChannels = channels;
    audioSamples = samples;
    audioBytes = bytes;
    audioFormat = format;
    audioData = data;
    return kFilterOk;
}

void NLEOpenGLFilter::TakeAudioSettings() {
    const NLEFilterParams* const type = FindParam("audio_type");
    if (type && CurrentNumber(*type) == 1.0F) {
        audioMin = kVoiceSettings.audioMin;
        audioMax = kVoiceSettings.audioMax;
        frequencyMin = kVoiceSettings.frequencyMin;
        frequencyMax = kVoiceSettings.frequencyMax;
        compressRatio = kVoiceSettings.compressRatio;
        return;
    }
    const auto take = [this](const char* name, float& setting) {
        if (const NLEFilterParams* const param = ParamNamed(name)) setting = CurrentNumber(*param);
    };
    take("audio_min", audioMin);
    take("audio_max", audioMax);
    take("frequency_min", frequencyMin);
    take("frequency_max", frequencyMax);
    take("compress_ratio", compressRatio);
}

int32_t NLEOpenGLFilter::UpdateAudio(float smoothing) {
    if (!info->hasAudio) return kFilterOk;
    TakeAudioSettings();
    if (!audioAnalysis) audioAnalysis = std::make_unique<AudioAnalysis>();
    audioAnalysis->Analyse({audioChannels, audioSamples, audioBytes, audioFormat, audioData},
                           {audioMin, audioMax, frequencyMin, frequencyMax, compressRatio},
                           position, GetFrameRate(), smoothing);
    if (!engine) return kFilterOk;
    const auto band = audioAnalysis->Band();
    engine->SetAudioBuffer(audioHandle, static_cast<int32_t>(band.size()), band.data());
    engine->SetUniformFloat("audio_intensity", audioAnalysis->Intensity());
    return kFilterOk;
}

}  // namespace kelmo
