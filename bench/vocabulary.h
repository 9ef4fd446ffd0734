// The words that the instruments take: commands in their short and long forms, functions, sensor types.
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace vantrel::bench {

/// Whether `header` ("rout:scan:func?", in any case) is the command `pattern` ("ROUTe:SCAN:FUNCtion?"), whose capital
/// letters are the short form of each word. A leading SENSe is left out of the pattern and may be sent or not.
bool IsCommand(std::string_view header, std::string_view pattern);

/// The function that a channel holds after `word`, which comes in double quotes: "PER" for the word PERIOD.
/// Nothing for a word that is not a function.
std::optional<std::string> StoredFunction(std::string_view word);

// All of these take upper case.
bool IsRtdType(std::string_view word);
bool IsTcoupleType(std::string_view word);
bool IsTransducer(std::string_view word);

}  // namespace vantrel::bench
