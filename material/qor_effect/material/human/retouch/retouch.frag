// SPDX-License-Identifier: GPL-3.0-or-later
// The clip. Faces are retouched by the face library, which takes the parameters instead of this shader.
uniform int smooth_strength;
uniform int whiten_strength;
uniform int redden_strength;
uniform int sharpen_strength;
uniform int contrast_strength;
uniform int saturation_strength;
uniform int shrink_face_ratio;
uniform int narrow_face_strength;
uniform int shin_face_shape_ratio;
uniform int shrink_jaw_ratio;
uniform int shrink_cheekbone_strength;
uniform int length_chin_ratio;
uniform int height_hairline_ratio;
uniform int apple_musle_ratio;
uniform int enlarge_eye_ratio;
uniform int round_eye_strength;
uniform int eye_distance_ratio;
uniform int eye_angle_ratio;
uniform int open_canthus_ratio;
uniform int open_external_canthus_ratio;
uniform int bright_eye_ratio;
uniform int remove_dark_circles_ratio;
uniform int remove_nasolabial_folds_ratio;
uniform int white_teeth_ratio;
uniform int narrow_nose_ratio;
uniform int length_nose_ratio;
uniform int profile_rhinoplasty_ratio;
uniform int size_mouth_ratio;
uniform int length_philtrum_ratio;

void main() { fragColor = Input0(vTexCoord); }
