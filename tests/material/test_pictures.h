// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <vector>

#include "host/media/picture/picture.h"

namespace kelmo::test {

/// Deterministic pictures, drawn afresh for each size from the same scene, 3x3 samples a pixel, so
/// that the same scene at half the size is the half-size picture. BGRA, premultiplied.

/// A technician's card: ramps of each channel, saturated patches, bars of one to four percent of
/// the width, and in the lower right part all alphas from clear to opaque. Half of nothing is
/// symmetric, so that a mirrored or turned picture differs.
host::Picture TestCard(int width, int height);

/// Something like a photograph, opaque: an evening sky with a bright sun, hills, a house with lit
/// windows, water that glitters.
host::Picture Landscape(int width, int height);

/// The landscape with the noise of a bad camera: different at every pixel, +-24 levels.
host::Picture NoisyLandscape(int width, int height);

/// Cool tones where the landscape is warm: rows of windows at night, opaque. The second clip.
host::Picture City(int width, int height);

/// A picture without anything: all zeros.
host::Picture Clear(int width, int height);

/// 40 ms of stereo sound at 48 kHz: bass, voice and hiss at once, as loud as it goes, going on
/// from frame to frame.
std::vector<int16_t> LoudSound(int64_t frame);
std::vector<int16_t> Silence();

}  // namespace kelmo::test
