// The function names, the instruments' words, and the lopsided map between them.
#include "state/vocabulary.h"

#include <gtest/gtest.h>
#include <utility>
#include <vector>

namespace vantrel {
namespace {

std::string Mapped(const std::string& text) {
    MapFunctionName(text);
    return MapResult;
}

template <int N>
std::vector<std::string> Entries(const Table<std::string, N>& table) {
    std::vector<std::string> entries;
    for (int i = 0; i < N; ++i) entries.push_back(table(i));
    return entries;
}

// The last entry of each table is spare.

TEST(Vocabulary, Function_names_stand_in_offer_order) {
    FillVocabulary();
    EXPECT_EQ(Entries(FunctionNames), (std::vector<std::string>{"DCV", "ACV", "DCI", "ACI", "2W", "4W", "FREQ",
                                                                "PERIOD", "TCOUPL", "TEMP", "4W,TEMP", "NONE", ""}));
}

TEST(Vocabulary, RTD_types_stand_in_offer_order) {
    FillVocabulary();
    EXPECT_EQ(Entries(RtdTypeNames),
              (std::vector<std::string>{"PT100", "D100", "F100", "PT385", "PT3916", "USER", "SPRTD", "NTCT", ""}));
}

TEST(Vocabulary, Thermocouple_letters_stand_in_offer_order) {
    FillVocabulary();
    EXPECT_EQ(Entries(TcoupleTypeNames), (std::vector<std::string>{"E", "J", "K", "N", "R", "S", "T", ""}));
}

TEST(Vocabulary, Map_has_no_result_before_its_first_use) { EXPECT_EQ(MapResult, ""); }

TEST(Vocabulary, Result_of_the_map_stays_until_its_next_use) {
    MapFunctionName("2W");
    FillVocabulary();
    EXPECT_EQ(MapResult, "\"RES\"");
    MapFunctionName(MapResult);
    EXPECT_EQ(MapResult, "2W");
}

TEST(Vocabulary, Each_name_maps_to_its_word_with_quotes) {
    const std::vector<std::pair<std::string, std::string>> words = {
        {"DCV", "\"VOLT\""},   {"ACV", "\"VOLT:AC\""}, {"DCI", "\"VOLT\""},     {"ACI", "\"VOLT:AC\""},
        {"2W", "\"RES\""},     {"4W", "\"FRES\""},     {"FREQ", "\"FREQ\""},    {"PERIOD", "\"PERIOD\""},
        {"TCOUPL", "\"TCO\""}, {"TEMP", "\"TEMP\""},   {"4W,TEMP", "\"TEMP\""}, {"NONE", "\"NONE\""},
    };
    for (const auto& [name, word] : words) EXPECT_EQ(Mapped(name), word);
}

TEST(Vocabulary, Each_word_maps_to_its_name) {
    const std::vector<std::pair<std::string, std::string>> names = {
        {"\"VOLT:AC\"", "ACV"}, {"\"VOLT\"", "DCV"},   {"\"FRES\"", "4W"},   {"\"RES\"", "2W"},    {"\"FREQ\"", "FREQ"},
        {"\"PER\"", "PERIOD"},  {"\"TCO\"", "TCOUPL"}, {"\"TEMP\"", "TEMP"}, {"\"NONE\"", "NONE"},
    };
    for (const auto& [word, name] : names) EXPECT_EQ(Mapped(word), name);
}

TEST(Vocabulary, Anything_else_stays_as_it_is) {
    for (const std::string text : {"", "DIOD", "VOLT", "VOLT:AC", "RES", "\"volt\"", "volt", "dcv", "DCV ", " DCV",
                                   "\"DCV\"", "\"VOLT\"\n", " \"VOLT\"", "\"VOLT", "TCO", "PER", "4W, TEMP", "\"\""})
        EXPECT_EQ(Mapped(text), text);
}

TEST(Vocabulary, Long_word_of_the_period_stays_a_word) { EXPECT_EQ(Mapped("\"PERIOD\""), "\"PERIOD\""); }

TEST(Vocabulary, Short_word_of_the_period_goes_back_out_as_the_long_one) {
    EXPECT_EQ(Mapped(Mapped("\"PER\"")), "\"PERIOD\"");
}

TEST(Vocabulary, Currents_come_back_as_voltages) {
    EXPECT_EQ(Mapped(Mapped("DCI")), "DCV");
    EXPECT_EQ(Mapped(Mapped("ACI")), "ACV");
}

TEST(Vocabulary, Four_wire_temperature_comes_back_as_two_wire) { EXPECT_EQ(Mapped(Mapped("4W,TEMP")), "TEMP"); }

TEST(Vocabulary, Quotes_alone_tell_a_word_from_a_name) {
    for (const std::string name : {"FREQ", "TEMP", "NONE"}) {
        EXPECT_EQ(Mapped(name), "\"" + name + "\"");
        EXPECT_EQ(Mapped("\"" + name + "\""), name);
    }
}

// ---- What is asked about a function

TEST(FunctionQuestions, Are_answered_by_letters_anywhere_in_the_text) {
    struct Case {
        const char* text;
        bool off, four_wires, holds_current, is_current;
        Sensor of_word, of_name;
    };
    constexpr auto kNo = Sensor::kNone;
    constexpr auto kRtd = Sensor::kRtd;
    constexpr auto kTc = Sensor::kThermocouple;
    const std::vector<Case> cases = {
        {"", false, false, false, false, kNo, kNo},           {"DCV", false, false, false, false, kNo, kNo},
        {"DCI", false, false, true, true, kNo, kNo},          {"ACI", false, false, true, true, kNo, kNo},
        {"xDCIx", false, false, true, false, kNo, kNo},       {"ACI ", false, false, true, false, kNo, kNo},
        {"dci", false, false, false, false, kNo, kNo},        {"2W", false, false, false, false, kNo, kNo},
        {"4W", false, true, false, false, kNo, kNo},          {"x4Wx", false, true, false, false, kNo, kNo},
        {"4w", false, false, false, false, kNo, kNo},         {"TEMP", false, false, false, false, kRtd, kRtd},
        {"\"TEMP\"", false, false, false, false, kRtd, kRtd}, {"4W,TEMP", false, true, false, false, kRtd, kRtd},
        {"temp", false, false, false, false, kNo, kNo},       {"TCOUPL", false, false, false, false, kTc, kTc},
        {"\"TCO\"", false, false, false, false, kTc, kNo},    {"xTCOUPL", false, false, false, false, kTc, kNo},
        {"TEMP TCO", false, false, false, false, kRtd, kRtd}, {"NONE", true, false, false, false, kNo, kNo},
        {"\"NONE\"", true, false, false, false, kNo, kNo},    {"none", false, false, false, false, kNo, kNo},
    };
    for (const Case& it : cases) {
        EXPECT_EQ(IsOff(it.text), it.off) << it.text;
        EXPECT_EQ(TakesFourWires(it.text), it.four_wires) << it.text;
        EXPECT_EQ(HoldsCurrent(it.text), it.holds_current) << it.text;
        EXPECT_EQ(IsCurrent(it.text), it.is_current) << it.text;
        EXPECT_EQ(SensorOfWord(it.text), it.of_word) << it.text;
        EXPECT_EQ(SensorOfName(it.text), it.of_name) << it.text;
    }
}

TEST(FunctionQuestions, Sensors_have_their_types_in_offer_order) {
    FillVocabulary();
    EXPECT_EQ(SensorTypes(Sensor::kRtd),
              (std::vector<std::string>{"PT100", "D100", "F100", "PT385", "PT3916", "USER", "SPRTD", "NTCT"}));
    EXPECT_EQ(SensorTypes(Sensor::kThermocouple), (std::vector<std::string>{"E", "J", "K", "N", "R", "S", "T"}));
    EXPECT_TRUE(SensorTypes(Sensor::kNone).empty());
}

}  // namespace
}  // namespace vantrel
