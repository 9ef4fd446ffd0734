// The names of the channel functions and sensor types, and the words that the instruments use for them.
#pragma once

#include "platform/tables.h"

#include <string>

namespace vantrel {

inline constexpr int kFunctionNames = 12;    ///< names in use
inline constexpr int kRtdTypeNames = 8;      ///< names in use
inline constexpr int kTcoupleTypeNames = 7;  ///< names in use

extern Table<std::string, 13> FunctionNames;    ///< in the order in which the channel combos offer them
extern Table<std::string, 9> RtdTypeNames;      ///< in offer order
extern Table<std::string, 8> TcoupleTypeNames;  ///< in offer order

/// Result of the last MapFunctionName; stays until the next call.
extern std::string MapResult;

void FillVocabulary();

/// Maps a function name to the instrument's word, or else a word (with its quote characters) to a name, or else leaves
/// the text as it is; the result is MapResult. Not every name comes back as itself: see docs/kept-behaviour.md.
void MapFunctionName(const std::string& text);

}  // namespace vantrel
