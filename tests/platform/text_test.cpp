#include "platform/text.h"

#include <gtest/gtest.h>

namespace vantrel {
namespace {

using Pieces = std::vector<std::string>;

TEST(Trim, Takes_blanks_from_both_ends) {
    EXPECT_EQ(Trim("  a b  "), "a b");
    EXPECT_EQ(Trim("a"), "a");
}

TEST(Trim, Leaves_nothing_of_blanks_alone) {
    EXPECT_EQ(Trim("   "), "");
    EXPECT_EQ(Trim(""), "");
}

TEST(Trim, Keeps_line_feeds_tabs_and_carriage_returns) {
    EXPECT_EQ(Trim(" \t1\r\n "), "\t1\r\n");
    EXPECT_EQ(Trim("1 \n"), "1 \n");
}

TEST(WithoutLineFeeds, Takes_line_feeds_and_nothing_else) {
    EXPECT_EQ(WithoutLineFeeds("a\nb\r\n \n"), "ab\r ");
    EXPECT_EQ(WithoutLineFeeds("\n"), "");
}

TEST(Split, Gives_the_pieces_between_the_separators) {
    EXPECT_EQ(Split("a,b,c", ','), (Pieces{"a", "b", "c"}));
    EXPECT_EQ(Split("a,,b", ','), (Pieces{"a", "", "b"}));
    EXPECT_EQ(Split(",a,", ','), (Pieces{"", "a", ""}));
}

TEST(Split, Gives_one_piece_where_no_separator_stands) {
    EXPECT_EQ(Split("abc", ','), (Pieces{"abc"}));
    EXPECT_EQ(Split("", ','), (Pieces{""}));
}

TEST(Contains, Looks_anywhere_and_regards_case) {
    EXPECT_TRUE(Contains("Record1.mdb", "mdb"));
    EXPECT_FALSE(Contains("Record1.MDB", "mdb"));
    EXPECT_TRUE(Contains("a", ""));
    EXPECT_FALSE(Contains("", "a"));
}

TEST(Left, Gives_the_first_characters_or_all_of_a_shorter_text) {
    EXPECT_EQ(Left("abc", 2), "ab");
    EXPECT_EQ(Left("abc", 5), "abc");
    EXPECT_EQ(Left("", 1), "");
}

TEST(FixedText, Starts_blank) { EXPECT_EQ(FixedText<4>().Text(), "    "); }

TEST(FixedText, Fills_a_shorter_text_with_blanks) {
    FixedText<4> text;
    text = "abcd";
    text = "x";
    EXPECT_EQ(text.Text(), "x   ");
}

TEST(FixedText, Cuts_a_longer_text) {
    FixedText<4> text;
    text = "abcdef";
    EXPECT_EQ(text.Text(), "abcd");
}

}  // namespace
}  // namespace vantrel
