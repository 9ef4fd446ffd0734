// What the user does while a record is being drawn.
#include "platform/qt/application.h"
#include "platform/toolkit/desktop.h"
#include "plot/record_plot_desk.h"
#include "records/record_desk.h"

#include <csignal>

namespace vantrel {
namespace {

using WhileItDraws = RecordPlotDesk;

const std::vector<Cell> kRising = {"1", "2", "3", "4", "5"};

Picture TraceOf(const std::vector<double>& readings, Colour colour = kYellow) {
    ExpectedRecordPlot expected;
    expected.Trace(readings, colour);
    return expected.Image();
}

/// The first `rows` points of a trace over `of` rows, in yellow.
ExpectedRecordPlot Beginning(int rows, int of) {
    ExpectedRecordPlot expected;
    const double x_step = 8775.0 / (of - 1);
    double x = -x_step;
    double y = 2505;
    for (int row = 0; row < rows; ++row) expected.Step(x, y, x_step, -501, kYellow);
    return expected;
}

TEST_F(WhileItDraws, Exit_ends_it) {
    MakeReadings("Record1", kRising);
    Choose("Record1");
    InYieldOf(2, [&] {
        Database database = TheDBEngine().OpenDatabase(Record("Record1"));
        database.OpenRecordset("select * from data where NUM='4'").Delete();
        user.Click(kDialog, "Command3");
    });
    Draw();  // which would tell of row 4 if it went on
    EXPECT_FALSE(user.Sees(kDialog));
    EXPECT_FALSE(IsLoaded<Record_View_Draw>());
    EXPECT_EQ(user.Messages(), std::vector<std::string>{});
    Kill(Record("Record1"));  // refused for a file in use
}

TEST_F(WhileItDraws, Its_close_box_ends_it_and_the_dialog_comes_back_afresh) {
    MakeReadings("Record1", kRising);
    Choose("Record1");
    InYieldOf(2, [&] { user.Close(kDialog); });
    Draw();
    EXPECT_FALSE(IsLoaded<Record_View_Draw>());
    Choose("Record1");
    ExpectSame(Plot(), ExpectedRecordPlot().Image());
    ExpectSlider(1, 11, 1);
    ExpectShown("1", "");
    Draw();
    ExpectSame(Plot(), TraceOf({1, 2, 3, 4, 5}));
}

TEST_F(WhileItDraws, Exit_and_a_new_dialog_in_one_yield_keep_the_two_apart) {
    MakeReadings("Record1", kRising);
    MakeReadings("Record2", {"-1", "-2", "-3"});
    Choose("Record1");
    InYieldOf(2, [&] {
        user.Click(kDialog, "Command3");
        Choose("Record2");
        Draw();
    });
    Draw();
    ExpectSame(Plot(), TraceOf({-1, -2, -3}));
    ExpectSlider(1, 3, 1);
    ExpectShown("1", "-1");
}

TEST_F(WhileItDraws, Clean_takes_away_what_is_drawn_and_the_rest_follows) {
    MakeReadings("Record1", kRising);
    Choose("Record1");
    InYieldOf(3, [&] { user.Click(kDialog, "Command2"); });
    Draw();
    ExpectedRecordPlot expected;
    double x = 2 * 2193.75;
    double y = 2505 - 3 * 501;
    expected.Step(x, y, 2193.75, -501, kYellow);
    expected.Step(x, y, 2193.75, -501, kYellow);
    ExpectSame(Plot(), expected.Image());
    ExpectShown("1", "1");
}

TEST_F(WhileItDraws, Clean_before_a_failure_leaves_a_clean_plot) {
    MakeReadings("Record1", {"1", "2", "3", " ", "+9.9E+37", "1"});
    MakeReadings("Record2", kRising);
    Choose("Record2");
    Draw();
    Choose("Record1");
    InYieldOf(2, [&] { user.Click(kDialog, "Command2"); });
    Draw();
    EXPECT_EQ(user.Messages().size(), 1U);
    ExpectSame(Plot(), ExpectedRecordPlot().Image());
}

TEST_F(WhileItDraws, A_second_draw_takes_its_place) {
    MakeReadings("Record1", kRising);
    MakeReadings("Record2", {"-1", "-2", "-3", "-4"});
    Choose("Record1");
    InYieldOf(2, [&] {
        Choose("Record2");
        Draw();
    });
    Draw();
    ExpectedRecordPlot expected = Beginning(2, 5);
    expected.Trace({-1, -2, -3, -4}, kYellow);
    ExpectSame(Plot(), expected.Image());
    ExpectSlider(1, 4, 1);
    ExpectShown("1", "-1");
    EXPECT_TRUE(user.Enabled(kDialog, "Slider1"));
    EXPECT_EQ(user.Messages(), std::vector<std::string>{});
}

TEST_F(WhileItDraws, A_second_draw_of_an_empty_record_takes_its_place) {
    MakeReadings("Record1", kRising);
    MakeRecord(Record("Record2"), 0);
    Choose("Record1");
    InYieldOf(2, [&] {
        Choose("Record2");
        Draw();
    });
    Draw();
    ExpectSame(Plot(), Beginning(2, 5).Image());
    EXPECT_TRUE(user.Enabled(kDialog, "Slider1"));
    EXPECT_EQ(user.Messages(), (std::vector<std::string>{"The Record is NULL.", "The Record is NULL."}));
}

TEST_F(WhileItDraws, A_second_draw_that_is_refused_lets_it_go_on) {
    MakeReadings("Record1", kRising);
    Choose("Record1");
    InYieldOf(2, [&] {
        user.Type(kDialog, "Combo_record", "none");
        Draw();
        EXPECT_FALSE(user.Enabled(kDialog, "Slider1"));
    });
    Draw();
    EXPECT_EQ(user.Messages(), std::vector<std::string>{"Please select a Record or Channel"});
    ExpectSame(Plot(), TraceOf({1, 2, 3, 4, 5}));
    ExpectShown("1", "1");
}

TEST_F(WhileItDraws, A_second_draw_that_fails_lets_it_go_on) {
    MakeReadings("Record1", kRising);
    MakeReadings("Record2", {"1", {}});
    MakeReadings("Record3", {"-1", " ", "+9.9E+37", "1"});
    for (const char* failing : {"Record9.mdb", "Record2.mdb", "Record3.mdb"}) {
        Choose("Record1");
        user.Click(kDialog, "Command2");
        InYieldOf(2, [&] {
            user.Type(kDialog, "Combo_record", failing);
            Draw();
            EXPECT_FALSE(user.Enabled(kDialog, "Slider1"));
        });
        Draw();
        ExpectSame(Plot(), TraceOf({1, 2, 3, 4, 5}));
        ExpectSlider(1, 5, 1);
        ExpectShown("1", "1");
    }
    EXPECT_EQ(user.Messages(),
              (std::vector<std::string>{"The record cannot be drawn.\n\n" + ErrorText(kFileMissing),
                                        "The record cannot be drawn.\n\nRow 2 holds nothing for CH1.",
                                        "The record cannot be drawn.\n\nThe reading in row 3, behind a gap, is too "
                                        "large."}));
}

TEST_F(WhileItDraws, Failures_in_and_behind_a_second_draw_take_back_both_traces) {
    MakeReadings("Record1", {"1", "2", "3", " ", "+9.9E+37", "1"});
    MakeReadings("Record2", {"-1", " ", "+9.9E+37", "1"});
    Choose("Record1");
    InYieldOf(2, [&] {
        user.Type(kDialog, "Combo_record", "Record2.mdb");
        Draw();
    });
    Draw();
    EXPECT_EQ(user.Messages().size(), 2U);
    ExpectSame(Plot(), ExpectedRecordPlot().Image());
    ExpectSlider(1, 11, 1);
    EXPECT_TRUE(user.Enabled(kDialog, "Slider1"));
}

TEST_F(WhileItDraws, Clean_in_a_second_draw_that_fails_leaves_a_clean_plot_when_the_first_fails_too) {
    MakeReadings("Record1", {"1", "2", "3", " ", "+9.9E+37", "1"});
    MakeReadings("Record2", {"-1", " ", "+9.9E+37", "1"});
    MakeReadings("Record3", kRising);
    Choose("Record3");
    Draw();
    Choose("Record1");
    InYieldOf(2, [&] {
        user.Type(kDialog, "Combo_record", "Record2.mdb");
        InYieldOf(1, [&] { user.Click(kDialog, "Command2"); });
        Draw();
    });
    Draw();
    EXPECT_EQ(user.Messages().size(), 2U);
    ExpectSame(Plot(), ExpectedRecordPlot().Image());
}

TEST_F(WhileItDraws, Another_choice_of_record_is_for_the_next_draw) {
    MakeReadings("Record1", kRising);
    MakeReadings("Record2", {"-1", "-2"});
    MakeRecord(Record("Record3"), 0);
    Choose("Record1");
    InYieldOf(2, [&] { user.Pick(kDialog, "Combo_record", "Record2.mdb"); });
    InYieldOf(3, [&] { user.Pick(kDialog, "Combo_record", "Record3.mdb"); });
    InYieldOf(4, [&] { user.Type(kDialog, "Combo_record", "Record9.mdb"); });
    Draw();
    ExpectSame(Plot(), TraceOf({1, 2, 3, 4, 5}));
    ExpectShown("1", "1");
    EXPECT_EQ(user.Messages(), std::vector<std::string>{"The Record is NULL."});
}

TEST_F(WhileItDraws, The_colour_dialog_holds_it) {
    MakeReadings("Record1", kRising);
    Choose("Record1");
    std::size_t lines = 0;
    InYieldOf(2, [&] {
        QMetaObject::invokeMethod(
            qApp, [&] { lines = The<Record_View_Draw>().draw_pic.LineCount(); }, Qt::QueuedConnection);
        SetColour(kPink);
    });
    Draw();
    EXPECT_EQ(lines, 2U);
    EXPECT_EQ(The<Record_View_Draw>().draw_pic.LineCount(), 5U);
    ExpectShown("1", "1");
}

TEST_F(WhileItDraws, The_end_of_the_session_may_come_while_the_colour_dialog_is_open) {
    MakeReadings("Record1", kRising);
    The<Form1>().Show();
    Choose("Record1");
    InYieldOf(2, [&] {
        QMetaObject::invokeMethod(qApp, EndSession, Qt::QueuedConnection);
        SetColour(kPink);
    });
    Draw();
    EXPECT_FALSE(IsLoaded<Record_View_Draw>());
}

TEST_F(WhileItDraws, The_main_window_may_go) {
    MakeReadings("Record1", kRising);
    The<Form1>().Show();
    Choose("Record1");
    InYieldOf(2, [] { Unload<Form1>(); });
    Draw();
    ExpectSame(Plot(), TraceOf({1, 2, 3, 4, 5}));
}

TEST_F(WhileItDraws, The_end_of_the_session_ends_it) {
    MakeReadings("Record1", kRising);
    The<Form1>().Show();
    Choose("Record1");
    InYieldOf(2, [] { EndSession(); });
    Draw();
    EXPECT_FALSE(IsLoaded<Record_View_Draw>());
    EXPECT_FALSE(user.Sees("Form1"));
}

#ifndef _WIN32  // requests to end come as messages to windows, not as signals
TEST_F(WhileItDraws, A_request_to_terminate_ends_the_program) {
    MakeReadings("Record1", kRising);
    EXPECT_EXIT(
        {
            RunProgram([&] {
                The<Form1>().Show();
                Choose("Record1");
                InYieldOf(2, [] { raise(SIGTERM); });
                while (true) Draw();
            });
        },
        testing::ExitedWithCode(0), "");
}
#endif

using PlotOfARun = RecordDesk;

TEST_F(PlotOfARun, Shows_what_is_stored_so_far_and_the_run_goes_on_behind_it) {
    OpenConnected(1);
    AssignTyped(0, "Record1");
    Picture plot;
    AfterScans(3, [&] {
        user.WhenShown(kDialog, [&] {
            user.Pick(kDialog, "Combo_record", "Record1.mdb");
            EXPECT_EQ(user.Text(kDialog, "Data_RecordCount"), "3");
            user.Pick(kDialog, "Combo_chan", "CH2");
            user.Click(kDialog, "Command1");
            plot = The<Record_View_Draw>().draw_pic.Image();
            user.Move(kDialog, "Slider1", 3);
            EXPECT_EQ(user.Text(kDialog, "show_value"), "+2.5E+00");
            user.Click(kDialog, "Command3");
        });
        user.Click("Form1", "Command9");
    });
    RunScans(6);
    ExpectSame(plot, TraceOf({2.5, 2.5, 2.5}, HighlightText()));
    EXPECT_EQ(Column(RowsOf(Record("Record1")), 0), (Texts{"1", "2", "3", "4", "5", "6"}));
    EXPECT_EQ(user.Messages(), Texts{"End of Job."});
}

}  // namespace
}  // namespace vantrel
