#include "platform/numbers.h"

#include "support/errors.h"

#include <clocale>
#include <gtest/gtest.h>
#include <locale>

namespace vantrel {
namespace {

TEST(RoundHalfEven, Rounds_halves_to_the_even_number) {
    EXPECT_EQ(RoundHalfEven(0.5), 0);
    EXPECT_EQ(RoundHalfEven(1.5), 2);
    EXPECT_EQ(RoundHalfEven(2.5), 2);
    EXPECT_EQ(RoundHalfEven(-2.5), -2);
    EXPECT_EQ(RoundHalfEven(2.51), 3);
}

TEST(Integer, Holds_the_16_bit_range) {
    EXPECT_EQ(Integer(32767), 32767);
    EXPECT_EQ(Integer(-32768), -32768);
}

TEST(Integer, Overflows_outside_the_range) {
    EXPECT_EQ(ErrorOf([] { Integer(32768); }), kOverflow);
    EXPECT_EQ(ErrorOf([] { Integer(-32769); }), kOverflow);
    EXPECT_EQ(ErrorOf([] { Integer(32767.5); }), kOverflow);
    EXPECT_EQ(ErrorOf([] { Integer(std::numeric_limits<double>::quiet_NaN()); }), kOverflow);
}

TEST(Integer, Takes_a_float_by_rounding_halves_to_even) {
    EXPECT_EQ(Integer(2.5), 2);
    EXPECT_EQ(Integer(3.5), 4);
    EXPECT_EQ(Integer(-32768.5), -32768);
}

TEST(Integer, Overflows_when_counted_past_its_end_and_keeps_its_value) {
    Integer counter = 32767;
    EXPECT_EQ(ErrorOf([&] { ++counter; }), kOverflow);
    EXPECT_EQ(counter, 32767);
    Integer low = -32768;
    EXPECT_EQ(ErrorOf([&] { low -= 1; }), kOverflow);
}

TEST(Each, Counts_from_0_and_reads_its_limit_once) {
    int limit = 3;
    int seen = 0;
    for (const Integer i : Each(limit)) {
        EXPECT_EQ(i, seen++);
        limit = 10;
    }
    EXPECT_EQ(seen, 3);
}

TEST(Each, Is_empty_for_0_and_below) {
    for ([[maybe_unused]] const Integer i : Each(0)) ADD_FAILURE();
    for ([[maybe_unused]] const Integer i : Each(-1)) ADD_FAILURE();
}

TEST(Val, Reads_a_number_behind_blanks) {
    EXPECT_EQ(Val("  17"), 17);
    EXPECT_EQ(Val("-0.5"), -0.5);
    EXPECT_EQ(Val("+1.5E-03"), 0.0015);
    EXPECT_EQ(Val("+9.90000000E+37"), 9.9e37);
    EXPECT_EQ(Val("2e3"), 2000);
}

TEST(Val, Takes_the_longest_numeric_prefix) {
    EXPECT_EQ(Val("12abc"), 12);
    EXPECT_EQ(Val("1.2.3"), 1.2);
    EXPECT_EQ(Val("1 2"), 1);
    EXPECT_EQ(Val(".5"), 0.5);
    EXPECT_EQ(Val("5."), 5);
    EXPECT_EQ(Val("5.E2"), 500);
    EXPECT_EQ(Val("1E"), 1);
    EXPECT_EQ(Val("1E+"), 1);
    EXPECT_EQ(Val("1E+x"), 1);
    EXPECT_EQ(Val("3\n"), 3);
}

TEST(Val, Is_0_where_no_number_stands) {
    for (const char* text : {"", " ", "abc", ".", "+", "-", "-.", "E5", ".E5", "+-1", "- 1", "--1"})
        EXPECT_EQ(Val(text), 0) << '"' << text << '"';
}

TEST(Val, Skips_only_blanks_in_front) {
    EXPECT_EQ(Val("\t1"), 0);
    EXPECT_EQ(Val("\n1"), 0);
}

TEST(Val, Knows_no_words_and_no_hexadecimal_numbers) {
    EXPECT_EQ(Val("inf"), 0);
    EXPECT_EQ(Val("nan"), 0);
    EXPECT_EQ(Val("0x10"), 0);
    EXPECT_EQ(Val("&H10"), 0);
}

TEST(Val, Takes_a_comma_for_the_end_of_the_number) { EXPECT_EQ(Val("1,5"), 1); }

TEST(Val, Overflows_beyond_the_range_of_a_float) {
    EXPECT_EQ(ErrorOf([] { Val("1E309"); }), kOverflow);
    EXPECT_EQ(ErrorOf([] { Val("-1E99999999999999999999"); }), kOverflow);
    EXPECT_EQ(ErrorOf([] { Val("1" + std::string(400, '0')); }), kOverflow);
}

TEST(Val, Gives_0_for_a_number_too_small_for_a_float) {
    EXPECT_EQ(Val("1E-400"), 0);
    EXPECT_EQ(Val("1e-400"), 0);
    EXPECT_EQ(Val("1E-99999999999999999999"), 0);
    EXPECT_EQ(Val("0." + std::string(400, '0') + "1"), 0);
    EXPECT_EQ(Val("0E999"), 0);
}

TEST(Val, Reads_large_exponents_by_what_they_come_to) {
    EXPECT_EQ(Val("0." + std::string(399, '0') + "1E400"), 1);
    EXPECT_EQ(Val("1" + std::string(400, '0') + "E-400"), 1);
}

TEST(CDbl, Reads_a_whole_text) {
    EXPECT_EQ(CDbl("51"), 51);
    EXPECT_EQ(CDbl("+1.0000E+00"), 1);
    EXPECT_EQ(CDbl("-.25"), -0.25);
}

TEST(CDbl, Accepts_white_space_around_the_number) { EXPECT_EQ(CDbl(" \t\r\n+2.5E-01\r\n \t"), 0.25); }

TEST(CDbl, Refuses_everything_that_is_no_number) {
    for (const char* text : {"", " ", "\n", "abc", "12abc", "1 2", "1E", "1E+", "1,5", ".", "-", "inf", "-inf", "nan",
                             "infinity", "0x10", "1\v", "1.2.3", "+ 1"})
        EXPECT_EQ(ErrorOf([&] { CDbl(text); }), kTypeMismatch) << '"' << text << '"';
}

TEST(CDbl, Refuses_a_null_character) {
    EXPECT_EQ(ErrorOf([] { CDbl(std::string_view("1\0", 2)); }), kTypeMismatch);
}

TEST(CDbl, Overflows_beyond_the_range_of_a_float) {
    EXPECT_EQ(ErrorOf([] { CDbl("1E309"); }), kOverflow);
    EXPECT_EQ(CDbl("1E-400"), 0);
}

TEST(IsNumeric, Says_whether_CDbl_takes_a_text) {
    for (const char* text : {"51", " +1.5E-03\r\n", ".5", "1E-400"}) EXPECT_TRUE(IsNumeric(text)) << text;
    for (const char* text : {"", "\n", "abc", "1x", "1E", "1,5", "1E309"}) EXPECT_FALSE(IsNumeric(text)) << text;
}

TEST(Str, Writes_whole_numbers_without_a_point) {
    EXPECT_EQ(Str(51), "51");
    EXPECT_EQ(Str(51.0), "51");
    EXPECT_EQ(Str(-20), "-20");
    EXPECT_EQ(Str(0), "0");
}

TEST(Str, Writes_a_negative_zero_as_0) { EXPECT_EQ(Str(-0.0), "0"); }

TEST(Str, Writes_fractions_in_the_shortest_form) {
    EXPECT_EQ(Str(0.25), "0.25");
    EXPECT_EQ(Str(-0.002), "-0.002");
    EXPECT_EQ(Str(0.0001), "0.0001");
}

TEST(Str, Keeps_15_significant_digits) {
    EXPECT_EQ(Str(0.1 + 0.2), "0.3");
    EXPECT_EQ(Str(1.0 / 3), "0.333333333333333");
    EXPECT_EQ(Str(123456789012345), "123456789012345");
    EXPECT_EQ(Str(100000000000000), "100000000000000");
}

TEST(Str, Takes_an_exponent_for_very_large_and_very_small_numbers) {
    EXPECT_EQ(Str(9.9e37), "9.9E+37");
    EXPECT_EQ(Str(-9.9e37), "-9.9E+37");
    EXPECT_EQ(Str(1e15), "1E+15");
    EXPECT_EQ(Str(0.00001), "1E-05");
    EXPECT_EQ(Str(1.5e300), "1.5E+300");
}

TEST(Str, Is_read_back_by_both_readers) {
    for (const double value : {9.9e37, 0.00001, -0.002, 51.0, 1e15}) {
        EXPECT_EQ(Val(Str(value)), value);
        EXPECT_EQ(CDbl(Str(value)), value);
    }
}

class DecimalComma : public std::numpunct<char> {
    char do_decimal_point() const override { return ','; }
};

TEST(Numbers, Have_a_point_whatever_the_locale) {
    std::locale::global(std::locale(std::locale::classic(), new DecimalComma));
    std::setlocale(LC_ALL, "de_DE.UTF-8");  // where the machine has it
    EXPECT_EQ(Str(0.25), "0.25");
    EXPECT_EQ(Val("0.25"), 0.25);
    EXPECT_EQ(CDbl("0.25"), 0.25);
    std::setlocale(LC_ALL, "C");
    std::locale::global(std::locale::classic());
}

TEST(WholeText, Has_no_decimals_and_rounds_halves_away_from_zero) {
    EXPECT_EQ(WholeText(0), "0");
    EXPECT_EQ(WholeText(25001), "25001");
    EXPECT_EQ(WholeText(2.4), "2");
    EXPECT_EQ(WholeText(2.5), "3");
    EXPECT_EQ(WholeText(-2.5), "-3");
}

TEST(WholeText, Has_no_sign_at_zero_and_no_exponent) {
    EXPECT_EQ(WholeText(-0.4), "0");
    EXPECT_EQ(WholeText(1e20), "100000000000000000000");
    EXPECT_EQ(WholeText(1e308).size(), 309U);
}

TEST(Divide, Gives_the_quotient) { EXPECT_EQ(Divide(1, 4), 0.25); }

TEST(Divide, Fails_for_a_divisor_of_0) {
    EXPECT_EQ(ErrorOf([] { Divide(1, 0); }), kDivisionByZero);
    EXPECT_EQ(ErrorOf([] { Divide(-1, -0.0); }), kDivisionByZero);
    EXPECT_EQ(ErrorOf([] { Divide(0, 0); }), kOverflow);
}

TEST(Divide, Overflows_with_a_quotient_that_no_float_holds) {
    EXPECT_EQ(ErrorOf([] { Divide(1e300, 1e-300); }), kOverflow);
}

TEST(CSng, Narrows_to_single_precision) { EXPECT_EQ(CSng(0.1), 0.1F); }

TEST(CSng, Overflows_beyond_single_precision) {
    EXPECT_EQ(CSng(3e38), 3e38F);
    EXPECT_EQ(ErrorOf([] { CSng(3.5e38); }), kOverflow);
    EXPECT_EQ(ErrorOf([] { CSng(-3.5e38); }), kOverflow);
}

TEST(Mod, Gives_the_remainder_with_the_sign_of_the_dividend) {
    EXPECT_EQ(Mod(17, 10), 7);
    EXPECT_EQ(Mod(-17, 10), -7);
    EXPECT_EQ(Mod(std::numeric_limits<int>::min(), -1), 0);
}

TEST(Mod, Fails_for_a_divisor_of_0) {
    EXPECT_EQ(ErrorOf([] { Mod(1, 0); }), kDivisionByZero);
}

TEST(RunTimeErrors, Have_their_standard_texts) {
    EXPECT_EQ(ErrorText(6), "Overflow");
    EXPECT_EQ(ErrorText(9), "Subscript out of range");
    EXPECT_EQ(ErrorText(11), "Division by zero");
    EXPECT_EQ(ErrorText(13), "Type mismatch");
    EXPECT_EQ(ErrorText(94), "Invalid use of Null");
    EXPECT_EQ(ErrorText(340), "Control array element does not exist");
    EXPECT_EQ(ErrorText(482), "Printer error");
    EXPECT_EQ(ErrorText(3343), "Unrecognized database format");
}

TEST(RunTimeErrors, Have_a_text_for_every_number) {
    EXPECT_EQ(ErrorText(4711), "Application-defined or object-defined error");
}

TEST(RunTimeErrors, Carry_their_number_and_text) {
    const RunTimeError error(kSubscript);
    EXPECT_EQ(error.Number(), 9);
    EXPECT_STREQ(error.what(), "Subscript out of range");
}

}  // namespace
}  // namespace vantrel
