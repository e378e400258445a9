// SPDX-License-Identifier: GPL-3.0-or-later
#include "host/cli/command_line.h"

int main(int argc, char** argv) {
    return kelmo::host::RunCommandLine(argc, argv);
}
