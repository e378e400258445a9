// SPDX-License-Identifier: GPL-3.0-or-later
// A library with one export, for the tests of loading.
extern "C" __attribute__((visibility("default"))) int KelmoTestAnswer() {
    return 42;
}
