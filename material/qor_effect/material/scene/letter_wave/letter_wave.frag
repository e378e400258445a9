// SPDX-License-Identifier: GPL-3.0-or-later
void main() { fragColor = Input0(vTexCoord); }
