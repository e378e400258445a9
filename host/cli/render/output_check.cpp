// SPDX-License-Identifier: GPL-3.0-or-later
#include "host/cli/render/output_check.h"

#include <algorithm>
#include <filesystem>

#include <fmt/format.h>

#include "host/cli/render/render_plan.h"
#include "host/media/common/file_names.h"
#include "host/session/host_error.h"

namespace kelmo::host {

namespace {

namespace fs = std::filesystem;

bool IsFile(const std::string& path) {
    return !path.empty() && path != "-";
}

std::string FullPath(const std::string& path) {
    std::error_code error;
    const fs::path full = fs::weakly_canonical(fs::absolute(NativePath(path), error), error);
    return error ? path : full.string();
}

/// What stands before and after the number of a pattern.
struct Surroundings {
    std::string before;
    std::string after;

    explicit Surroundings(const std::string& pattern)
        : before(pattern.substr(0, pattern.find('%'))),
          after(pattern.substr(pattern.find('d', before.size()) + 1)) {}
    bool operator==(const Surroundings&) const = default;
};

/// Whether a file, or files of a pattern, are among the numbered pictures.
bool AreAmong(const std::string& pictures, const std::string& path) {
    if (!IsNumberedPictures(pictures)) return false;
    const Surroundings around(pictures);
    if (IsNumberedPictures(path)) return around == Surroundings(path);
    const size_t rest = around.before.size() + around.after.size();
    return path.size() > rest && path.starts_with(around.before) && path.ends_with(around.after) &&
           std::all_of(path.begin() + static_cast<ptrdiff_t>(around.before.size()),
                       path.end() - static_cast<ptrdiff_t>(around.after.size()),
                       [](char c) { return c >= '0' && c <= '9'; });
}

bool Meet(const std::string& one, const std::string& other) {
    if (!IsFile(one) || !IsFile(other)) return false;
    std::error_code ignored;
    if (fs::equivalent(NativePath(one), NativePath(other), ignored)) return true;
    const std::string first = FullPath(one);
    const std::string second = FullPath(other);
    return first == second || AreAmong(first, second) || AreAmong(second, first);
}

bool HoldsSomething(const std::string& path) {
    std::error_code ignored;
    const fs::file_status status = fs::status(NativePath(path), ignored);
    return fs::is_regular_file(status) || fs::is_block_file(status);
}

}  // namespace

void CheckOutputs(const std::vector<std::string>& outputs, const std::vector<std::string>& inputs,
                  bool overwrite) {
    for (auto output = outputs.begin(); output != outputs.end(); ++output) {
        const auto meetsOutput = [&](const std::string& path) { return Meet(path, *output); };
        if (std::any_of(inputs.begin(), inputs.end(), meetsOutput)) {
            throw UsageError(fmt::format("{} is input and output; choose another output", *output));
        }
        if (std::any_of(outputs.begin(), output, meetsOutput)) {
            throw UsageError(
                fmt::format("{} is two outputs at once; give each its own file", *output));
        }
        if (overwrite || !IsFile(*output)) continue;
        const std::string first = IsNumberedPictures(*output) ? NumberedFile(*output, 1) : *output;
        if (HoldsSomething(first)) {
            throw HostError(fmt::format("{} exists; overwrite it with -y", first));
        }
    }
}

}  // namespace kelmo::host
