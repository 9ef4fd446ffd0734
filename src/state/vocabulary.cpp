#include "state/vocabulary.h"

#include "platform/numbers.h"
#include "platform/text.h"

#include <array>
#include <utility>

namespace vantrel {

Table<std::string, 13> FunctionNames;
Table<std::string, 9> RtdTypeNames;
Table<std::string, 8> TcoupleTypeNames;
std::string MapResult;

namespace {

struct Pair {
    const char* from;
    const char* to;
};

constexpr std::array<Pair, kFunctionNames> kNameToWord = {{
    {"DCV", "\"VOLT\""},
    {"ACV", "\"VOLT:AC\""},
    {"DCI", "\"VOLT\""},
    {"ACI", "\"VOLT:AC\""},
    {"2W", "\"RES\""},
    {"4W", "\"FRES\""},
    {"FREQ", "\"FREQ\""},
    {"PERIOD", "\"PERIOD\""},  // Kept: K-period
    {"TCOUPL", "\"TCO\""},
    {"TEMP", "\"TEMP\""},
    {"4W,TEMP", "\"TEMP\""},
    {"NONE", "\"NONE\""},
}};

// Only the short word of the period comes back; no word comes back as a current or a four-wire temperature.
// Kept: K-one-way-words
constexpr auto kWordToName = std::to_array<Pair>({
    {"\"VOLT:AC\"", "ACV"},
    {"\"VOLT\"", "DCV"},
    {"\"FRES\"", "4W"},
    {"\"RES\"", "2W"},
    {"\"FREQ\"", "FREQ"},
    {"\"PER\"", "PERIOD"},
    {"\"TCO\"", "TCOUPL"},
    {"\"TEMP\"", "TEMP"},
    {"\"NONE\"", "NONE"},
});

constexpr std::array<const char*, kRtdTypeNames> kRtdTypes = {"PT100",  "D100", "F100",  "PT385",
                                                              "PT3916", "USER", "SPRTD", "NTCT"};
constexpr std::array<const char*, kTcoupleTypeNames> kTcoupleTypes = {"E", "J", "K", "N", "R", "S", "T"};

}  // namespace

void FillVocabulary() {
    for (const Integer i : Each(kFunctionNames)) FunctionNames(i) = kNameToWord.at(static_cast<std::size_t>(i)).from;
    for (const Integer i : Each(kRtdTypeNames)) RtdTypeNames(i) = kRtdTypes.at(static_cast<std::size_t>(i));
    for (const Integer i : Each(kTcoupleTypeNames)) TcoupleTypeNames(i) = kTcoupleTypes.at(static_cast<std::size_t>(i));
}

bool IsOff(const std::string& function) { return Contains(function, kOff); }

bool TakesFourWires(const std::string& function) { return Contains(function, "4W"); }

bool HoldsCurrent(const std::string& function) { return Contains(function, "ACI") || Contains(function, "DCI"); }

bool IsCurrent(const std::string& name) { return name == "ACI" || name == "DCI"; }

Sensor SensorOfWord(const std::string& word) {
    if (Contains(word, "TEMP")) return Sensor::kRtd;
    return Contains(word, "TCO") ? Sensor::kThermocouple : Sensor::kNone;
}

Sensor SensorOfName(const std::string& name) {
    if (Contains(name, "TEMP")) return Sensor::kRtd;
    return name == "TCOUPL" ? Sensor::kThermocouple : Sensor::kNone;
}

std::vector<std::string> SensorTypes(Sensor sensor) {
    std::vector<std::string> types;
    if (sensor == Sensor::kRtd)
        for (const Integer i : Each(kRtdTypeNames)) types.push_back(RtdTypeNames(i));
    if (sensor == Sensor::kThermocouple)
        for (const Integer i : Each(kTcoupleTypeNames)) types.push_back(TcoupleTypeNames(i));
    return types;
}

void MapFunctionName(const std::string& text) {
    for (const auto& [name, word] : kNameToWord) {
        if (text == name) {
            MapResult = word;
            return;
        }
    }
    for (const auto& [word, name] : kWordToName) {
        if (text == word) {
            MapResult = name;
            return;
        }
    }
    MapResult = text;  // Kept: K-quotes
}

}  // namespace vantrel
