// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <stdexcept>
#include <string>

namespace kelmo::host {

// What the readers and the writer throw: a sentence that names the file, the reason and, where
// there is one, what to do about it. The side tells a program which exit code fits.
class MediaError : public std::runtime_error {
public:
    enum class Side { kInput, kOutput };

    MediaError(Side side, const std::string& message)
        : std::runtime_error(message), errorSide(side) {}

    Side side() const { return errorSide; }

private:
    Side errorSide;
};

}  // namespace kelmo::host
