// SPDX-License-Identifier: GPL-3.0-or-later
#include "engine/shader/shader_source.h"

#include <algorithm>
#include <charconv>
#include <filesystem>
#include <fstream>
#include <string_view>

namespace kelmo {
namespace {

/// The file is told by the line number, file x this + line: drivers report source-string numbers
/// for syntax errors only, or not at all.
constexpr int kLinesPerFile = 100000;
/// Deeper nesting than any sane library of includes.
constexpr int kMaxDepth = 32;
constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";
constexpr std::string_view kVariantPrefix = "variant:";

std::filesystem::path PathOf(const std::string& text) {
    return std::filesystem::path(std::u8string(text.begin(), text.end()));
}

std::string TextOf(const std::filesystem::path& path) {
    const std::u8string text = path.generic_u8string();
    return {text.begin(), text.end()};
}

bool IsFile(const std::filesystem::path& path) {
    std::error_code error;
    return std::filesystem::is_regular_file(path, error);
}

bool ReadText(const std::string& path, std::string& text) {
    if (!IsFile(PathOf(path))) return false;
    std::ifstream file(PathOf(path), std::ios::binary);
    if (!file) return false;
    text.assign(std::istreambuf_iterator<char>(file), {});
    if (text.starts_with(kByteOrderMark)) text.erase(0, kByteOrderMark.size());
    return !file.bad();
}

std::string_view TrimLeft(std::string_view text) {
    const size_t start = text.find_first_not_of(" \t");
    return start == std::string_view::npos ? std::string_view() : text.substr(start);
}

/// The directive of a line ("include", "version") and what follows it; empty when it has none.
std::string_view Directive(std::string_view line, std::string_view& rest) {
    line = TrimLeft(line);
    if (!line.starts_with('#')) return {};
    line = TrimLeft(line.substr(1));
    const size_t end = std::min(line.find_first_not_of("abcdefghijklmnopqrstuvwxyz"), line.size());
    rest = TrimLeft(line.substr(end));
    return line.substr(0, end);
}

/// Whether the text behind `line` is inside a block comment.
bool EndsInComment(std::string_view line, bool inComment) {
    for (size_t i = 0; i + 1 < line.size(); ++i) {
        const std::string_view pair = line.substr(i, 2);
        if (inComment && pair == "*/") {
            inComment = false;
            ++i;
        } else if (!inComment && pair == "//") {
            return false;
        } else if (!inComment && pair == "/*") {
            inComment = true;
            ++i;
        }
    }
    return inComment;
}

class Assembler {
public:
    Assembler(const std::string& commonFolder, const VariantChoice& variants, ShaderSource& source,
              std::string& error)
        : commonFolder(commonFolder), variants(variants), source(source), error(error) {}

    bool Append(const std::string& path, int depth) {
        std::string text;
        if (!ReadText(path, text)) return Fail(path, 0, "cannot be read");
        source.files.push_back(path);
        const size_t file = source.files.size();
        MarkLine(1, file);
        bool inComment = false;
        int number = 1;
        for (size_t start = 0; start < text.size(); ++number) {
            const size_t end = std::min(text.find('\n', start), text.size());
            std::string_view line(text.data() + start, end - start);
            if (line.ends_with('\r')) line.remove_suffix(1);
            if (!AppendLine(line, inComment, path, file, number, depth)) return false;
            inComment = EndsInComment(line, inComment);
            start = end + 1;
        }
        return true;
    }

private:
    bool AppendLine(std::string_view line, bool inComment, const std::string& path, size_t file,
                    int number, int depth) {
        std::string_view rest;
        const std::string_view directive = inComment ? std::string_view() : Directive(line, rest);
        if (directive == "version") {
            return Fail(path, number,
                        "#version is written by the engine (3.30); take the line out");
        }
        if (directive == "include") {
            if (!Include(rest, path, number, depth)) return false;
            MarkLine(number + 1, file);
            return true;
        }
        source.text.append(line);
        source.text += '\n';
        return true;
    }

    bool Include(std::string_view rest, const std::string& path, int number, int depth) {
        const size_t close = rest.size() > 1 ? rest.find(rest[0] == '<' ? '>' : '"', 1) : 0;
        if (rest.empty() || (rest[0] != '"' && rest[0] != '<') || close == std::string_view::npos ||
            close < 2) {
            return Fail(path, number, "#include wants a file name in quotes");
        }
        if (depth >= kMaxDepth) return Fail(path, number, "includes are nested too deeply");
        const std::string name(rest.substr(1, close - 1));
        std::string found;
        if (!Resolve(name, path, number, found)) return false;
        const bool seen =
            std::find(source.files.begin(), source.files.end(), found) != source.files.end();
        return seen || Append(found, depth + 1);
    }

    bool Resolve(const std::string& name, const std::string& path, int number, std::string& found) {
        std::string wanted = name;
        if (name.starts_with(kVariantPrefix) && !ChooseVariant(name, path, number, wanted)) {
            return false;
        }
        const std::filesystem::path beside = PathOf(path).parent_path() / PathOf(wanted);
        const std::filesystem::path common = PathOf(commonFolder) / PathOf(wanted);
        if (IsFile(beside)) {
            found = TextOf(beside.lexically_normal());
        } else if (!commonFolder.empty() && IsFile(common)) {
            found = TextOf(common.lexically_normal());
        } else {
            return Fail(path, number, "cannot find include '" + wanted + "'");
        }
        return true;
    }

    bool ChooseVariant(const std::string& name, const std::string& path, int number,
                       std::string& chosen) {
        const char* digits = name.c_str() + kVariantPrefix.size();
        const char* end = name.c_str() + name.size();
        size_t group = 0;
        const auto [stop, problem] = std::from_chars(digits, end, group);
        if (problem != std::errc() || stop != end || !variants.groups ||
            group >= variants.groups->size()) {
            return Fail(path, number, "there is no group of files for '" + name + "'");
        }
        const std::vector<std::string>& files = (*variants.groups)[group];
        const bool given = variants.indices && group < variants.indices->size();
        const int32_t index = given ? (*variants.indices)[group] : 0;
        if (index < 0 || static_cast<size_t>(index) >= files.size()) {
            return Fail(path, number,
                        "'" + name + "' has no file with index " + std::to_string(index));
        }
        chosen = files[static_cast<size_t>(index)];
        return true;
    }

    /// From the next line on the driver counts from `number` in file `file`.
    void MarkLine(int number, size_t file) {
        const int line = static_cast<int>(file) * kLinesPerFile + number;
        source.text += "#line " + std::to_string(line) + "\n";
    }

    bool Fail(const std::string& path, int number, const std::string& message) {
        error = path + (number > 0 ? ":" + std::to_string(number) : "") + ": " + message;
        return false;
    }

    const std::string& commonFolder;
    const VariantChoice& variants;
    ShaderSource& source;
    std::string& error;
};

bool ReadNumber(std::string_view& text, int& number) {
    const auto [stop, problem] = std::from_chars(text.data(), text.data() + text.size(), number);
    if (problem != std::errc()) return false;
    text.remove_prefix(static_cast<size_t>(stop - text.data()));
    return true;
}

/// "0:12(5): error: x", "0(12) : error x" and "ERROR: 0:12: x" are the forms that drivers use.
std::string MapLine(std::string_view line, const std::vector<std::string>& files, int lineOffset) {
    std::string_view rest = line;
    for (const std::string_view prefix : {"ERROR: ", "WARNING: "}) {
        if (rest.starts_with(prefix)) rest.remove_prefix(prefix.size());
    }
    int ignored = 0;
    int number = 0;
    if (!ReadNumber(rest, ignored) || rest.empty() || (rest[0] != ':' && rest[0] != '(')) {
        return std::string(line);
    }
    rest.remove_prefix(1);
    if (!ReadNumber(rest, number)) return std::string(line);
    if (rest.starts_with('(')) rest.remove_prefix(std::min(rest.find(')'), rest.size() - 1));
    const size_t message = rest.find_first_not_of(" :()");
    if (message == std::string_view::npos) return std::string(line);
    number += lineOffset;
    const int file = number / kLinesPerFile;
    const bool known = file >= 1 && static_cast<size_t>(file) <= files.size();
    const std::string name = known ? files[static_cast<size_t>(file) - 1] : "prelude";
    return name + ":" + std::to_string(number % kLinesPerFile) + ": " +
           std::string(rest.substr(message));
}

}  // namespace

bool AssembleShader(const std::string& path, const std::string& commonFolder,
                    const VariantChoice& variants, ShaderSource& source, std::string& error) {
    source = {};
    return Assembler(commonFolder, variants, source, error).Append(path, 0);
}

std::string CommonFolderOf(const std::string& path) {
    std::string slashed = path;
    std::replace(slashed.begin(), slashed.end(), '\\', '/');
    constexpr std::string_view kRoot = "qor_effect/";
    const size_t root = slashed.rfind(kRoot);
    if (root == std::string::npos) return {};
    return path.substr(0, root + kRoot.size()) + "material/common";
}

std::string MapCompileLog(const std::string& log, const std::vector<std::string>& files,
                          int lineOffset) {
    std::string mapped;
    for (size_t start = 0; start < log.size();) {
        const size_t end = std::min(log.find('\n', start), log.size());
        const std::string_view line(log.data() + start, end - start);
        if (!line.empty()) {
            if (!mapped.empty()) mapped += '\n';
            mapped += MapLine(line, files, lineOffset);
        }
        start = end + 1;
    }
    return mapped;
}

}  // namespace kelmo
