#include "bench/expression.h"

#include <regex>
#include <string>

namespace vantrel::bench {
namespace {

/// The same expression in the notation of std::regex.
std::string Translated(std::string_view expression) {
    std::string pattern;
    bool in_list = false;
    for (std::size_t i = 0; i < expression.size(); ++i) {
        const char c = expression[i];
        if (c == '\\' && i + 1 < expression.size()) {
            pattern += {'\\', expression[++i]};
        } else if (in_list) {
            in_list = c != ']';
            pattern += c;
        } else if (c == '?') {
            pattern += '.';
        } else if (std::string_view(".${}^").find(c) != std::string_view::npos) {
            pattern += {'\\', c};
        } else {
            in_list = c == '[';
            pattern += c;
        }
    }
    return pattern;
}

}  // namespace

std::optional<bool> Matches(std::string_view expression, std::string_view resource) {
    try {
        const std::regex pattern(Translated(expression), std::regex::ECMAScript | std::regex::icase);
        return std::regex_match(resource.begin(), resource.end(), pattern);
    } catch (const std::regex_error&) {
        return std::nullopt;
    }
}

}  // namespace vantrel::bench
