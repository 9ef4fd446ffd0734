#include "bench/expression.h"

#include <gtest/gtest.h>

using vantrel::bench::Matches;

namespace {

constexpr const char* kSearch = "(USB|GPIB)?*INSTR";

TEST(ResourceExpression, Search_of_the_program_finds_usb_and_gpib_instruments) {
    EXPECT_EQ(Matches(kSearch, "USB0::0xFFFF::0x0020::X::INSTR"), true);
    EXPECT_EQ(Matches(kSearch, "GPIB0::22::INSTR"), true);
}

TEST(ResourceExpression, Search_of_the_program_leaves_other_buses_and_classes_out) {
    EXPECT_EQ(Matches(kSearch, "ASRL1::INSTR"), false);
    EXPECT_EQ(Matches(kSearch, "TCPIP0::10.0.0.4::INSTR"), false);
    EXPECT_EQ(Matches(kSearch, "GPIB0::INTFC"), false);
    EXPECT_EQ(Matches(kSearch, "XGPIB0::22::INSTR"), false);
}

TEST(ResourceExpression, Case_does_not_count) {
    EXPECT_EQ(Matches("gpib?*instr", "GPIB0::22::INSTR"), true);
    EXPECT_EQ(Matches(kSearch, "usb0::1::instr"), true);
}

TEST(ResourceExpression, Question_mark_is_exactly_one_character) {
    EXPECT_EQ(Matches("GPIB?::1", "GPIB0::1"), true);
    EXPECT_EQ(Matches("GPIB?::1", "GPIB::1"), false);
}

TEST(ResourceExpression, Star_repeats_from_none_on) {
    EXPECT_EQ(Matches("GPIB0*::1", "GPIB::1"), true);
    EXPECT_EQ(Matches("GPIB0*::1", "GPIB000::1"), true);
}

TEST(ResourceExpression, Plus_repeats_from_one_on) {
    EXPECT_EQ(Matches("GPIB0+::1", "GPIB::1"), false);
    EXPECT_EQ(Matches("GPIB0+::1", "GPIB00::1"), true);
}

TEST(ResourceExpression, Lists_take_one_character_in_or_out) {
    EXPECT_EQ(Matches("GPIB[0-9]::1", "GPIB7::1"), true);
    EXPECT_EQ(Matches("GPIB[^0]::1", "GPIB0::1"), false);
    EXPECT_EQ(Matches("GPIB[^0]::1", "GPIB1::1"), true);
}

TEST(ResourceExpression, Alternatives_span_the_whole_expression) {
    EXPECT_EQ(Matches("VXI|GPIB", "VXI"), true);
    EXPECT_EQ(Matches("VXI|GPIB", "GPIB"), true);
    EXPECT_EQ(Matches("VXI|GPIB", "VXIPIB"), false);
}

TEST(ResourceExpression, Point_and_braces_stand_for_themselves) {
    EXPECT_EQ(Matches("A.B{2}", "A.B{2}"), true);
    EXPECT_EQ(Matches("A.B", "AXB"), false);
}

TEST(ResourceExpression, Backslash_takes_the_next_character_literally) {
    EXPECT_EQ(Matches("A\\?", "A?"), true);
    EXPECT_EQ(Matches("A\\?", "AB"), false);
}

TEST(ResourceExpression, Unclosed_group_is_no_expression) {
    EXPECT_EQ(Matches("(USB|GPIB?*INSTR", "GPIB0::22::INSTR"), std::nullopt);
}

}  // namespace
