// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

/// GUIDs that more than one place speaks of: masters of whole families, and the filters that many
/// effects use as their stages.
namespace kelmo {

/// Descriptions with this second class key are variants of the Astral master.
inline constexpr const char* kAstralSubGuid = "Astral";

inline constexpr const char* kAstralMasterGuid = "2BD0B96E-DCC2-7BFF-1263-0B14A9CFC1F6";
inline constexpr const char* kStickerMasterGuid = "229F9594-88C7-47A1-A403-2197CEB05CA8";
inline constexpr const char* kCornerPinGuid = "F8BB1068-4E41-4D33-A933-25AD3F2D2E86";

/// The line renderers.
inline constexpr const char* kBeamGuid = "4F345BBD-E420-1B6E-26D1-ADD11EF0A2E8";
inline constexpr const char* kBeamWaveGuid = "1FA3FB64-25DD-E0CB-E4CD-F57F33EDD08C";
inline constexpr const char* kBeamParticleDissipateGuid = "1CD27053-C217-4B49-9C64-211BF1641E0F";
inline constexpr const char* kBeamParticleConvergeGuid = "930DB036-5B18-42CD-B8BF-FC6747C8CF40";
inline constexpr const char* kBeamSineWaveGuid = "4C18CF6A-29D7-417B-8549-E619AB9828E6";
inline constexpr const char* kBeam3DGuid = "0CA7BF5C-C3E5-4BF9-B32E-DDB6FA3D230B";
/// Feathering.
inline constexpr const char* kBeamEclosionGuid = "C64ECC4D-F39E-77BB-673E-F9B7387C49FD";
/// Outlines gathered over time.
inline constexpr const char* kBeamAccumGuid = "9307DDCB-3D35-6E93-B108-D38A71A7361F";
/// A ring of noise on a tilted card.
inline constexpr const char* kBeamShapeNoiseGuid = "2626CC6E-9F50-78E9-FD00-0BF7E02E6C40";
/// The default look of the edge flow, and that of eyes and hands.
inline constexpr const char* kEdgeFlowLookGuid = "A0C9415F-3BD6-8E5C-E553-BE076A275459";
inline constexpr const char* kTrackedLookGuid = "14ECBC85-F9E7-DB9A-3733-17EE8240A8D6";

/// Trails of people: the accumulation, the afterimage that others feather, the queue of nine.
inline constexpr const char* kBackGroundAccumulationGuid = "186D593A-3CAF-0AFC-145A-01DF7D00A695";
inline constexpr const char* kBackGroundAfterimageGuid = "ACB83110-B1AA-5340-C6B0-F754527248EB";
inline constexpr const char* kBackGroundQueueAccumGuid = "B45A98DD-5EEA-14E3-9A2F-BF8BBF715305";

/// Particles: a clip's own, and those scattered over it.
inline constexpr const char* kParticleGuid = "304A470F-3E9B-490F-8E4F-6CF9A83E2192";
inline constexpr const char* kParticleEmitGuid = "1126AE85-1A80-8A95-5BBB-4B01C61B0B5A";

inline constexpr const char* kFractalNoiseGuid = "D6545134-70B8-4E1A-8669-A11268EA325B";
inline constexpr const char* kDualKawaseBlurGuid = "5FCCB3C4-83CA-446A-ACCA-08BAE84893D4";
inline constexpr const char* kMotionBlurGuid = "1CB976CB-FDD7-4669-A06F-D3AFB3A58456";

}  // namespace kelmo
