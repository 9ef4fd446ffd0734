#include "platform/text.h"

#include <algorithm>

namespace vantrel {

std::string Trim(std::string_view text) {
    text.remove_prefix(std::min(text.find_first_not_of(' '), text.size()));
    return std::string(text.substr(0, text.find_last_not_of(' ') + 1));
}

std::string WithoutLineFeeds(std::string_view text) {
    std::string kept(text);
    std::erase(kept, '\n');
    return kept;
}

std::vector<std::string> Split(std::string_view text, char separator) {
    std::vector<std::string> pieces;
    for (std::size_t end = text.find(separator); end != std::string_view::npos; end = text.find(separator)) {
        pieces.emplace_back(text.substr(0, end));
        text.remove_prefix(end + 1);
    }
    pieces.emplace_back(text);
    return pieces;
}

}  // namespace vantrel
