// The names of the channel functions and sensor types, and the words that the instruments use for them.
#pragma once

#include "platform/tables.h"

#include <string>
#include <vector>

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

inline constexpr const char* kOff = "NONE";  ///< the name of a channel that is not scanned
inline constexpr const char* kFourWireTemperature = "4W,TEMP";

// What the program asks about a channel's function. The text is a name, a word or any reply of an instrument: the
// letters count wherever they stand in it, unless "exactly" is said, and capitals count.

/// "NONE": the channel is not scanned.
bool IsOff(const std::string& function);
/// "4W": the channel takes the one half a card behind it as well.
bool TakesFourWires(const std::string& function);
/// "ACI" or "DCI": the voltage of the channel stands for a current.
bool HoldsCurrent(const std::string& function);
/// Exactly "ACI" or "DCI".
bool IsCurrent(const std::string& name);

enum class Sensor { kNone, kRtd, kThermocouple };
/// "TEMP": an RTD; else "TCO": a thermocouple.
Sensor SensorOfWord(const std::string& word);
/// "TEMP": an RTD; exactly "TCOUPL": a thermocouple.
Sensor SensorOfName(const std::string& name);
/// The sensor types that are offered for a sensor, in offer order; none for kNone.
std::vector<std::string> SensorTypes(Sensor sensor);

/// Maps a function name to the instrument's word, or else a word (with its quote characters) to a name, or else leaves
/// the text as it is; the result is MapResult. Not every name comes back as itself: see docs/kept-behaviour.md.
void MapFunctionName(const std::string& text);

}  // namespace vantrel
