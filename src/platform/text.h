// The few text operations that the logic rests on.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace vantrel {

/// True if `text` holds `part` anywhere. Case counts.
inline bool Contains(std::string_view text, std::string_view part) { return text.find(part) != std::string_view::npos; }

/// Without leading and trailing blanks (character 32 only: line feeds, tabs and carriage returns stay).
std::string Trim(std::string_view text);

/// Without any line feed (character 10).
std::string WithoutLineFeeds(std::string_view text);

/// The pieces between the separators; always at least one. "a,,b" gives "a", "" and "b".
std::vector<std::string> Split(std::string_view text, char separator);

/// The first `count` characters, or all of a shorter text.
inline std::string Left(std::string_view text, std::size_t count) { return std::string(text.substr(0, count)); }

/// A text of `N` characters for ever: a shorter one is stored left-aligned with blanks behind it, a longer one is cut.
template <std::size_t N>
class FixedText {
public:
    FixedText() : text_(N, ' ') {}
    FixedText& operator=(std::string_view text) {
        text_.assign(text.substr(0, N));
        text_.resize(N, ' ');
        return *this;
    }
    operator const std::string&() const { return text_; }
    operator std::string_view() const { return text_; }
    const std::string& Text() const { return text_; }

private:
    std::string text_;
};

}  // namespace vantrel
