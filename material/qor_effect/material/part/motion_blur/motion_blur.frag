// SPDX-License-Identifier: GPL-3.0-or-later
// The mean of the frames that the owner hands over, the newest with the most weight.
uniform int history_frame_count;

vec4 Frame(int index) {
    switch (index) {
        case 0: return Input0(vTexCoord);
        case 1: return Input1(vTexCoord);
        case 2: return Input2(vTexCoord);
        case 3: return Input3(vTexCoord);
        case 4: return Input4(vTexCoord);
        case 5: return Input5(vTexCoord);
        case 6: return Input6(vTexCoord);
        case 7: return Input7(vTexCoord);
        case 8: return Input8(vTexCoord);
        case 9: return Input9(vTexCoord);
        case 10: return Input10(vTexCoord);
        case 11: return Input11(vTexCoord);
        case 12: return Input12(vTexCoord);
        case 13: return Input13(vTexCoord);
        case 14: return Input14(vTexCoord);
        default: return Input15(vTexCoord);
    }
}

void main() {
    int count = min(history_frame_count, 16);
    vec4 sum = vec4(0.0);
    float weights = 0.0;
    for (int k = 0; k < min(count, 16); ++k) {
        float w = float(count - k);
        sum += w * Frame(k);
        weights += w;
    }
    fragColor = weights > 0.0 ? sum / weights : vec4(0.0);
}
