#include "bench/vocabulary.h"

#include "bench/text.h"

#include <algorithm>
#include <array>

namespace vantrel::bench {
namespace {

constexpr auto kFunctions =
    std::to_array<std::string_view>({"VOLT", "VOLT:AC", "RES", "FRES", "FREQ", "PER", "TCO", "TEMP", "NONE"});
constexpr std::array<std::string_view, 8> kRtdTypes = {"PT100",  "D100", "F100",  "PT385",
                                                       "PT3916", "USER", "SPRTD", "NTCT"};
constexpr std::array<std::string_view, 7> kTcoupleTypes = {"E", "J", "K", "N", "R", "S", "T"};

template <typename Words>
bool Holds(const Words& words, std::string_view word) {
    return std::find(words.begin(), words.end(), word) != words.end();
}

/// Takes the text before the next ":" off `text`.
std::string_view TakeWord(std::string_view& text) {
    const auto colon = text.find(':');
    const std::string_view word = text.substr(0, colon);
    text = colon == std::string_view::npos ? std::string_view() : text.substr(colon + 1);
    return word;
}

std::string ShortForm(std::string_view pattern_word) {
    std::string form;
    for (const char c : pattern_word) {
        if (c < 'a' || c > 'z') form += c;
    }
    return form;
}

}  // namespace

bool IsCommand(std::string_view header, std::string_view pattern) {
    const std::string upper = Upper(header);
    std::string_view rest = upper;
    if (rest.starts_with("SENS:") || rest.starts_with("SENSE:")) TakeWord(rest);
    while (!rest.empty() && !pattern.empty()) {
        const std::string_view word = TakeWord(rest);
        const std::string_view pattern_word = TakeWord(pattern);
        if (word != Upper(pattern_word) && word != ShortForm(pattern_word)) return false;
    }
    return rest.empty() && pattern.empty();
}

std::optional<std::string> StoredFunction(std::string_view word) {
    if (word.size() < 2 || !word.starts_with('"') || !word.ends_with('"')) return std::nullopt;
    std::string function = Upper(word.substr(1, word.size() - 2));
    if (function == "PERIOD") function = "PER";
    if (!Holds(kFunctions, function)) return std::nullopt;
    return function;
}

bool IsRtdType(std::string_view word) { return Holds(kRtdTypes, word); }

bool IsTcoupleType(std::string_view word) { return Holds(kTcoupleTypes, word); }

bool IsTransducer(std::string_view word) { return word == "RTD" || word == "FRTD"; }

}  // namespace vantrel::bench
