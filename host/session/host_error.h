// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <stdexcept>
#include <string>

namespace kelmo::host {

/// Something could not be done: a sentence that says what, where and what to do about it.
class HostError : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

/// What was asked for makes no sense (a misspelt name, a value out of range): asking again in the
/// same way can never work.
class UsageError : public HostError {
public:
    using HostError::HostError;
};

}  // namespace kelmo::host
