// SPDX-License-Identifier: GPL-3.0-or-later
#include "tools/material/shader_loops.h"

#include <cctype>
#include <regex>

#include "tools/material/unused_params.h"

namespace kelmo::material {
namespace {

// What stands between the parenthesis at `open` and the one that closes it.
std::string_view InParentheses(std::string_view text, std::size_t open) {
    int depth = 0;
    for (std::size_t i = open; i < text.size(); ++i) {
        depth += text[i] == '(' ? 1 : text[i] == ')' ? -1 : 0;
        if (depth == 0) return text.substr(open + 1, i - open - 1);
    }
    return text.substr(open + 1);
}

// Whether each name in an expression is the loop's own, a constant, or inside of min() or clamp().
bool IsBounded(std::string_view expression, std::string_view own) {
    for (std::size_t i = 0; i < expression.size();) {
        const auto isWord = [&](std::size_t at) {
            return at < expression.size() &&
                   (std::isalnum(static_cast<unsigned char>(expression[at])) ||
                    expression[at] == '_');
        };
        if (!isWord(i)) {
            ++i;
            continue;
        }
        const std::size_t start = i;
        while (isWord(i)) ++i;
        const std::string_view word = expression.substr(start, i - start);
        if (word == "min" || word == "clamp") {
            while (i < expression.size() && expression[i] != '(') ++i;
            if (i < expression.size()) i += InParentheses(expression, i).size() + 2;
            continue;
        }
        const bool isNumber = std::isdigit(static_cast<unsigned char>(word[0])) != 0;
        const bool isConstant = word.size() > 1 && word[0] == 'k' &&
                                std::isupper(static_cast<unsigned char>(word[1])) != 0;
        if (!isNumber && !isConstant && word != own && word != "int" && word != "float") {
            return false;
        }
    }
    return true;
}

bool IsSound(const std::string& head) {
    static const std::regex kHead(R"(\s*(?:int|float)\s+(\w+)\s*=([^;]*);([^;]*);.*)");
    std::smatch match;
    if (!std::regex_match(head, match, kHead)) return false;
    const std::string own = match[1];
    return IsBounded(match[2].str(), own) && IsBounded(match[3].str(), own);
}

}  // namespace

std::vector<std::string> UnboundedLoops(std::string_view source) {
    const std::string text = WithoutComments(source);
    static const std::regex kLoop(R"(\b(for|while)\s*\()");
    std::vector<std::string> loops;
    for (std::sregex_iterator it(text.begin(), text.end(), kLoop), end; it != end; ++it) {
        const std::size_t open = static_cast<std::size_t>(it->position() + it->length()) - 1;
        const std::string head(InParentheses(text, open));
        if ((*it)[1] == "while" || !IsSound(head))
            loops.push_back((*it)[1].str() + " (" + head + ")");
    }
    return loops;
}

}  // namespace kelmo::material
