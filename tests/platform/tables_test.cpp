#include "platform/tables.h"

#include "support/errors.h"

#include <gtest/gtest.h>
#include <string>

namespace vantrel {
namespace {

TEST(Table, Keeps_a_value_at_every_subscript) {
    Table<int, 3> table;
    for (int i = 0; i < 3; ++i) table(i) = 10 + i;
    for (int i = 0; i < 3; ++i) EXPECT_EQ(table(i), 10 + i);
    EXPECT_EQ(table.Size(), 3);
}

TEST(Table, Starts_with_empty_or_with_given_values) {
    EXPECT_EQ((Table<int, 2>()(1)), 0);
    EXPECT_EQ((Table<std::string, 2>("x")(1)), "x");
}

TEST(Table, Raises_error_9_outside_its_bounds) {
    Table<int, 3> table;
    EXPECT_EQ(ErrorOf([&] { table(-1) = 0; }), kSubscript);
    EXPECT_EQ(ErrorOf([&] { table(3) = 0; }), kSubscript);
    const Table<int, 3>& constant = table;
    EXPECT_EQ(ErrorOf([&] { (void)constant(3); }), kSubscript);
}

TEST(ChannelTable, Keeps_5_devices_by_21_channels_apart) {
    ChannelTable<int> table;
    for (int dev = 0; dev < 5; ++dev)
        for (int ch = 0; ch < 21; ++ch) table(dev, ch) = dev * 100 + ch;
    for (int dev = 0; dev < 5; ++dev)
        for (int ch = 0; ch < 21; ++ch) EXPECT_EQ(table(dev, ch), dev * 100 + ch);
}

TEST(ChannelTable, Starts_with_the_given_value) { EXPECT_EQ(ChannelTable<std::string>(" ")(4, 20), " "); }

TEST(ChannelTable, Raises_error_9_outside_either_bound) {
    ChannelTable<int> table;
    EXPECT_EQ(ErrorOf([&] { table(5, 0) = 0; }), kSubscript);
    EXPECT_EQ(ErrorOf([&] { table(-1, 0) = 0; }), kSubscript);
    EXPECT_EQ(ErrorOf([&] { table(0, 21) = 0; }), kSubscript);
    EXPECT_EQ(ErrorOf([&] { table(0, -1) = 0; }), kSubscript);
    const ChannelTable<int>& constant = table;
    EXPECT_EQ(ErrorOf([&] { (void)constant(0, 21); }), kSubscript);
}

}  // namespace
}  // namespace vantrel
