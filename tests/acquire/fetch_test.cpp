// How the reply to fetch? is cut into readings and rows.
#include "acquire/scan_poll.h"
#include "state/shared.h"
#include "support/errors.h"
#include "support/run_desk.h"
#include "support/texts.h"
#include "windows/Form1.h"
#include "windows/Form4.h"

#include <ostream>

namespace vantrel {
namespace {

const std::string kFourChannels = SmallScanner(0, "channel 1-4 VOLT\n");
const std::string kEvenChannels = SmallScanner(0, "channel 2 VOLT\nchannel 4 VOLT\nchannel 6 VOLT\nchannel 8 VOLT\n");

/// `begin`, blanks, `end`: 1024 bytes, as many as one read takes.
std::string FullBuffer(const std::string& begin, const std::string& end) {
    return begin + std::string(1024 - begin.size() - end.size(), ' ') + end;
}

class FetchedReadings : public RunDesk {
protected:
    /// Connects the instrument, which has `reply` ready. There are stamps for 10 rows; the schedule's number is 0.
    void Ready(const std::string& bench_file, const std::string& reply) {
        bench::BenchDescription bench = bench::ParseBench(bench_file);
        bench.instruments[0].replies.push_back({"fetch?", reply});
        OpenWith(bench);
        The<Form4>().N_SCAN.SetText("0");
        for (int row = 0; row < 10; ++row) ListFetchTime(0).push_back(Stamp(row));
    }
    void Fetch(const std::string& bench_file, const std::string& reply) {
        Ready(bench_file, reply);
        Fetch_Readings(0);
    }
    static std::string Stamp(int row) { return "2026-01-01 00:00:0" + std::to_string(row); }
    /// The readings of the first channels.
    static Texts Cells(int count) {
        Texts cells;
        for (const Integer ch : Each(count)) cells.push_back(ScanRow(0, ch));
        return cells;
    }
    /// The first channels of every row that was handed on.
    static std::vector<Texts> Rows(int count) {
        const MSFlexGrid& list = The<Form1>().MSFlexGrid2(0);
        std::vector<Texts> rows;
        for (int row = 2; row < list.Rows(); ++row) {
            rows.emplace_back();
            for (int ch = 0; ch < count; ++ch) rows.back().push_back(list.TextMatrix(row, ch + 2));
        }
        return rows;
    }
};

// ---- one after the other: the reply, the rows that it makes, the readings that stand there afterwards

struct Reply {
    const char* name;
    std::string bytes;
    std::vector<Texts> rows;
    Texts cells;
    friend std::ostream& operator<<(std::ostream& out, const Reply& reply) { return out << reply.name; }
};

class FetchReply : public FetchedReadings, public testing::WithParamInterface<Reply> {};

TEST_P(FetchReply, On_four_channels_gives_its_rows_and_readings) {
    Fetch(kFourChannels, GetParam().bytes);
    EXPECT_EQ(Rows(4), GetParam().rows);
    EXPECT_EQ(Cells(4), GetParam().cells);
    EXPECT_EQ(ScanCount(0), static_cast<double>(GetParam().rows.size()));
    EXPECT_TRUE(ListFetchTime(0).empty());
    EXPECT_TRUE(user.Messages().empty());
}

INSTANTIATE_TEST_SUITE_P(
    Replies, FetchReply,
    testing::Values(
        Reply{"One_row", "1,2,3,4\n", {{"1", "2", "3", "4\n"}}, {"1", "2", "3", "4\n"}},
        Reply{"Two_rows", "1,2,3,4,5,6,7,8\n", {{"1", "2", "3", "4"}, {"5", "6", "7", "8\n"}}, {"5", "6", "7", "8\n"}},
        Reply{"No_line_feed", "1,2,3,4", {{"1", "2", "3", "4"}}, {"1", "2", "3", "4"}},
        Reply{"Too_few_fields", "1,2\n", {}, {"1", "2\n", " ", " "}},
        Reply{"A_row_and_a_bit", "1,2,3,4,5\n", {{"1", "2", "3", "4"}}, {"5\n", " ", " ", " "}},
        Reply{"Blanks_are_trimmed", "  1, 2 ,3  ,4  \n", {{"1", "2", "3", "4  \n"}}, {"1", "2", "3", "4  \n"}},
        Reply{"Inner_blanks_and_carriage_returns_stay",
              "1 1,2\r,\t3,4\r\n",
              {{"1 1", "2\r", "\t3", "4\r\n"}},
              {"1 1", "2\r", "\t3", "4\r\n"}},
        Reply{"Text_that_is_no_number", "a,b,c,d\n", {{"a", "b", "c", "d\n"}}, {"a", "b", "c", "d\n"}},
        Reply{"Garbage", "***\n", {}, {"***\n", " ", " ", " "}},
        Reply{"Nothing_but_a_line_feed", "\n", {}, {"\n", " ", " ", " "}},
        Reply{"Nothing_at_all_is_one_field_of_blanks", "", {}, {"", " ", " ", " "}},
        Reply{"Fields_of_blanks_count", "1, ,3,4\n", {{"1", "", "3", "4\n"}}, {"1", "", "3", "4\n"}},
        Reply{"A_comma_at_the_end_is_followed_by_a_field_of_blanks",
              "1,2,3,4,\n",
              {{"1", "2", "3", "4"}},
              {"\n", " ", " ", " "}},
        Reply{"Exactly_1024_bytes_are_read_on_and_the_empty_rest_is_a_field_of_blanks",
              FullBuffer("1,2,3,", "4"),
              {{"1", "2", "3", "4"}},
              {"", " ", " ", " "}},
        Reply{"Byte_1025_is_a_field_of_its_own",
              FullBuffer("1,2,3,", "4") + "\n",
              {{"1", "2", "3", "4"}},
              {"\n", " ", " ", " "}},
        // The empty field before the comma takes channel 3, "3" channel 4; the row is not full and begins again there.
        Reply{"A_rest_that_begins_with_a_comma_leaves_a_cell_and_goes_round_again",
              FullBuffer("1,", "2") + ",3,4\n",
              {{"1", "2", "4\n", " "}},
              {"1", "2", "4\n", " "}},
        Reply{"A_field_cut_in_two_counts_twice",
              FullBuffer("1,", "22") + "33,4\n",
              {{"1", "22", "33", "4\n"}},
              {"1", "22", "33", "4\n"}},
        Reply{"A_buffer_that_ends_in_a_comma_after_a_row_gives_the_row_test_again",
              FullBuffer("1,2,3,", "4,") + "5,6,7,8\n",
              {{"1", "2", "3", "4"}, {"1", " ", " ", " "}, {"5", "6", "7", "8\n"}},
              {"5", "6", "7", "8\n"}},
        Reply{"A_buffer_that_ends_in_a_comma_within_a_row_leaves_the_next_cell",
              FullBuffer("1,", "2,") + "3,4\n",
              {{"1", "2", "3", "4\n"}},
              {"1", "2", "3", "4\n"}}),
    [](const auto& reply) { return reply.param.name; });

// ---- channels without readings

TEST_F(FetchedReadings, Channels_that_are_off_take_no_field_and_show_one_blank) {
    Ready(kEvenChannels, "1,2,3,4\n");
    for (const Integer ch : Each(10)) ScanRow(0, ch) = "old";
    Fetch_Readings(0);
    const Texts row = {" ", "1", " ", "2", " ", "3", " ", "4\n", " ", " "};
    EXPECT_EQ(Cells(10), row);
    EXPECT_EQ(Rows(10), std::vector<Texts>{row});
}

TEST_F(FetchedReadings, A_row_over_two_reads_goes_on_at_the_count_of_readings_whatever_is_off_before) {
    Fetch(kEvenChannels, FullBuffer("1,", "2,") + "3,4\n");
    EXPECT_EQ(Rows(10), (std::vector<Texts>{{" ", "1", " ", "3", " ", "4\n", " ", " ", " ", " "}}));
}

TEST_F(FetchedReadings, A_rest_for_which_the_plan_leaves_no_channel_goes_to_the_next_row) {
    Ready(kFourChannels, FullBuffer("1,2,3", "") + "5,6,7\n");
    ChannelPlan(0, 3) = "NONE";
    Fetch_Readings(0);
    EXPECT_EQ(Cells(4), (Texts{"5", "6", "7\n", " "}));
    EXPECT_EQ(ScanCount(0), 0);
}

TEST_F(FetchedReadings, End_where_the_plan_has_lost_its_channels_between_two_rows) {
    Ready(kFourChannels, "1,2,3,4,5,6,7,8\n");
    After(0, [] {
        for (const Integer ch : Each(10)) ChannelPlan(0, ch) = "NONE";
    });
    Fetch_Readings(0);
    EXPECT_EQ(Rows(4), (std::vector<Texts>{{"1", "2", "3", "4"}}));
    EXPECT_EQ(ScanCount(0), 1);
}

TEST_F(FetchedReadings, End_where_the_plan_has_lost_its_only_channel_behind_the_first_reading) {
    Ready(SmallScanner(0, "channel 1 VOLT\n"), "1,2\n");
    After(0, [] {
        for (const Integer ch : Each(10)) ChannelPlan(0, ch) = "NONE";
    });
    Fetch_Readings(0);
    EXPECT_EQ(Rows(1), (std::vector<Texts>{{"1"}}));
    EXPECT_EQ(ScanCount(0), 1);
}

TEST_F(FetchedReadings, An_empty_field_leaves_the_cell_and_counts_no_reading) {
    Ready(kFourChannels, "1,,3,4\n");
    ScanRow(0, 1) = "old";
    Fetch_Readings(0);
    EXPECT_EQ(Cells(4), (Texts{"1", "old", "3", "4\n"}));
    EXPECT_EQ(ScanCount(0), 0);
}

TEST_F(FetchedReadings, A_function_that_contains_NONE_takes_no_reading) {
    Ready(kFourChannels, "1,2,3\n");
    ChannelPlan(0, 1) = "4W NONE";
    Fetch_Readings(0);
    EXPECT_EQ(Cells(4), (Texts{"1", " ", "2", "3\n"}));
}

TEST_F(FetchedReadings, One_active_channel_makes_every_reading_a_row) {
    Fetch(SmallScanner(0, "channel 3 VOLT\n"), "1,2,3\n");
    EXPECT_EQ(Rows(3), (std::vector<Texts>{{" ", " ", "1"}, {" ", " ", "2"}, {" ", " ", "3\n"}}));
}

TEST_F(FetchedReadings, The_plan_is_read_by_device_and_not_by_the_row_that_was_ticked) {
    bench::BenchDescription bench = bench::ParseBench(Scanner(0) + Scanner(1, "channel 1-4 VOLT\n"));
    bench.instruments[1].replies.push_back({"fetch?", "1,2,3,4\n"});
    Open(bench);
    Connect({1});
    ChannelPlan(0, 0) = "NONE";
    ListFetchTime(0).push_back(Stamp(0));
    Fetch_Readings(0);
    EXPECT_EQ(Cells(6), (Texts{" ", "1", "2", "3", "4\n", " "}));
    EXPECT_EQ(ScanCount(0), 1);
}

// ---- what makes a row

TEST_F(FetchedReadings, Rows_take_the_stamps_in_order) {
    Fetch(kFourChannels, "1,2,3,4,5,6,7,8,9,10,11,12\n");
    const MSFlexGrid& list = The<Form1>().MSFlexGrid2(0);
    for (int row = 0; row < 3; ++row) {
        EXPECT_EQ(list.TextMatrix(row + 2, 0), std::to_string(row + 1));
        EXPECT_EQ(list.TextMatrix(row + 2, 1), Stamp(row));
    }
}

TEST_F(FetchedReadings, The_number_asked_for_makes_a_row_of_what_there_is) {
    Ready(kFourChannels, "1,2,3,4,5,6\n");
    The<Form4>().N_SCAN.SetText("6");
    Fetch_Readings(0);
    EXPECT_EQ(Rows(4), (std::vector<Texts>{{"1", "2", "3", "4"}, {"5", "6\n", " ", " "}}));
    EXPECT_EQ(The<Form1>().MSFlexGrid2(0).TextMatrix(3, 1), Stamp(1));
}

TEST_F(FetchedReadings, A_number_of_0_or_none_at_all_makes_no_row_of_a_part) {
    for (const char* number : {"0", "", "none"}) {
        Ready(kFourChannels, "1,2\n");
        The<Form4>().N_SCAN.SetText(number);
        Fetch_Readings(0);
        EXPECT_EQ(ScanCount(0), 0) << number;
    }
}

class NumberOfTheSchedule : public FetchedReadings, public testing::WithParamInterface<std::pair<int, int>> {};

TEST_P(NumberOfTheSchedule, Counts_in_every_shape_of_run) {
    Ready(kFourChannels, "1\n");
    const auto [counted, paced] = GetParam();
    The<Form4>().stop_after_n_scan.SetValue(counted);
    The<Form4>().per_scan_interval.SetValue(paced);
    The<Form4>().N_SCAN.SetText("1");
    Fetch_Readings(0);
    EXPECT_EQ(Rows(4), (std::vector<Texts>{{"1\n", " ", " ", " "}}));
}

INSTANTIATE_TEST_SUITE_P(Shapes, NumberOfTheSchedule,
                         testing::Values(std::pair{0, 0}, std::pair{0, 1}, std::pair{1, 0}, std::pair{1, 1}));

TEST_F(FetchedReadings, A_fresh_schedule_makes_a_reply_of_one_reading_a_row) {
    Ready(kFourChannels, "1\n");
    Unload<Form4>();
    Fetch_Readings(0);
    EXPECT_EQ(ScanCount(0), 1);
}

TEST_F(FetchedReadings, Counting_runs_on_across_reads) {
    Ready(kFourChannels, FullBuffer("1,", "2,") + "3,4,5,6\n");
    The<Form4>().N_SCAN.SetText("6");
    Fetch_Readings(0);
    EXPECT_EQ(Rows(4), (std::vector<Texts>{{"1", "2", "3", "4"}, {"5", "6\n", " ", " "}}));
}

TEST_F(FetchedReadings, Readings_stay_until_they_are_overwritten) {
    Fetch(kFourChannels, "1,2,3,4\n");
    user.Click("Form1", "Command4");
    EXPECT_EQ(Cells(4), (Texts{"1", "2", "3", "4\n"}));
}

// ---- faults

TEST_F(FetchedReadings, More_rows_than_stamps_are_a_type_error_after_those_that_have_one) {
    Ready(kFourChannels, "1,2,3,4,5,6,7,8\n");
    ListFetchTime(0).resize(1);
    EXPECT_EQ(ErrorOf([] { Fetch_Readings(0); }), 13);
    EXPECT_EQ(ScanCount(0), 1);
}

TEST_F(FetchedReadings, A_buffer_of_empty_fields_asks_for_the_stamp_before_the_first) {
    Ready(kFourChannels, std::string(1024, ','));
    EXPECT_EQ(ErrorOf([] { Fetch_Readings(0); }), 13);
}

TEST_F(FetchedReadings, No_active_channel_is_a_division_by_zero) {
    Ready(SmallScanner(0, ""), "\n");
    EXPECT_EQ(ActiveChannels(0), 0);
    EXPECT_EQ(ErrorOf([] { Fetch_Readings(0); }), 11);
}

/// As many readings, at two bytes each.
std::string Ones(int count) {
    std::string reply;
    for (int i = 0; i < count; ++i) reply += i == 0 ? "1" : ",1";
    return reply + "\n";
}

TEST_F(FetchedReadings, Readings_up_to_32767_are_counted) {
    Ready(kFourChannels, Ones(32767));
    ListFetchTime(0).assign(10'000, Stamp(0));
    EXPECT_EQ(ErrorOf([] { Fetch_Readings(0); }), 0);
    EXPECT_GE(ScanCount(0), 32767 / 4);
}

TEST_F(FetchedReadings, The_reading_after_32767_is_an_overflow) {
    Ready(kFourChannels, Ones(32768));
    ListFetchTime(0).assign(10'000, Stamp(0));
    EXPECT_EQ(ErrorOf([] { Fetch_Readings(0); }), 6);
}

TEST_F(FetchedReadings, A_continuation_that_fails_is_a_field_of_blanks_and_the_end) {
    Ready(kFourChannels, FullBuffer("1,2,3,", "4") + ",5,6\n");
    AfterSending("0 fetch?", [this] { wire->bench.Unplug(0); });  // in the first row's yield
    Fetch_Readings(0);
    EXPECT_EQ(user.Messages(), Texts{"Device is disconnected !"});
    EXPECT_EQ(Cells(4), (Texts{"", " ", " ", " "}));
    EXPECT_EQ(ScanCount(0), 1);
    EXPECT_TRUE(ListFetchTime(0).empty());
}

TEST_F(FetchedReadings, A_fetch_that_fails_under_a_fresh_schedule_is_a_row_of_blanks) {
    Ready(kFourChannels, "1,2,3,4\n");
    Unload<Form4>();
    wire->bench.Unplug(0);
    Fetch_Readings(0);
    EXPECT_EQ(Rows(4), (std::vector<Texts>{{"", " ", " ", " "}}));
}

TEST_F(FetchedReadings, A_fetch_that_fails_is_a_field_of_blanks) {
    Ready(kFourChannels, "1,2,3,4\n");
    wire->bench.Unplug(0);
    Fetch_Readings(0);
    EXPECT_EQ(user.Messages(), Texts{"Device is disconnected !"});
    EXPECT_EQ(Cells(4), (Texts{"", " ", " ", " "}));
    EXPECT_EQ(ScanCount(0), 0);
}

}  // namespace
}  // namespace vantrel
