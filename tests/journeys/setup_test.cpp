// A measuring job is set up: what each channel measures, the shunt of a current channel, and when the run is to be.
#include "state/shared.h"
#include "support/desk.h"

#include <algorithm>
#include <cstddef>

namespace vantrel {
namespace {

class SetUp : public Desk {
protected:
    std::ptrdiff_t Sends(const std::string& command) const {
        const auto sent = wire->Sent(0);
        return std::count(sent.begin(), sent.end(), command + "\n");
    }
};

TEST_F(SetUp, Channels_a_shunt_and_a_schedule_make_a_run_of_three_paced_scans) {
    Open(R"(
        instrument USB0::1::INSTR
        serial "Oven"
        card 1
        channel 1-3 VOLT
    )");
    Connect({0});
    EXPECT_EQ(user.CellText("Form1", "MSFlexGrid1(0)", 0, 0), "CH 1(DCV)");
    EXPECT_EQ(user.CellText("Form1", "MSFlexGrid1(0)", 0, 3), "CH 4(NONE)");

    user.WhenShown("Set_Dev", [&] {
        user.WhenShown("DCI_ACI_SET", [&] {
            user.Type("DCI_ACI_SET", "ohm_set", "0.5");
            user.Type("DCI_ACI_SET", "curr_set", "100");
            user.Click("DCI_ACI_SET", "Command1");
        });
        user.Type("Set_Dev", "ch(0)", "DCI");
        user.Pick("Set_Dev", "ch(1)", "4W,TEMP");
        user.Pick("Set_Dev", "temp(1)", "PT385");
        user.Pick("Set_Dev", "ch(2)", "NONE");
        user.Pick("Set_Dev", "ch(7)", "TCOUPL");
        user.Pick("Set_Dev", "temp(7)", "J");
        user.Pick("Set_Dev", "Combo_Scan_model", "STEP");
        user.Type("Set_Dev", "Timer_Set", "soon");
        user.Click("Set_Dev", "Command1");
        user.Type("Set_Dev", "Timer_Set", "1.5");
        user.Click("Set_Dev", "Command1");
        EXPECT_EQ(user.Text("Set_Dev", "ch(0)"), "DCI");
        EXPECT_EQ(user.Text("Set_Dev", "ch(6)"), "NONE");
        EXPECT_EQ(user.ToolTip("Set_Dev", "ch(0)"), "R=0.5, I= 100");
        user.Click("Set_Dev", "Command2");
    });
    user.Menu("set_sc");
    EXPECT_EQ(user.Messages(), (std::vector<std::string>{
                                   "The scan timer of Oven is not a number of seconds: \"soon\". Please key a number.",
                                   "Setting complete!"}));
    const std::vector<std::string> headings = {"CH 1(DCI)",  "CH 2(4W,TEMP)", "CH 3(NONE)", "CH 4(NONE)",
                                               "CH 5(NONE)", "CH 6(NONE)",    "CH 7(NONE)", "CH 8(TCOUPL)",
                                               "CH 9(NONE)", "CH 10(NONE)"};
    for (int ch = 0; ch < 10; ++ch)
        EXPECT_EQ(user.CellText("Form1", "MSFlexGrid1(0)", 0, ch), headings[static_cast<std::size_t>(ch)]);

    Schedule([&] {
        user.Click("Form4", "at_time");
        user.TypeOn("Form4", "StartTime", "2026");
        user.Click("Form4", "per_scan_interval");
        user.Click("Form4", "stop_after_n_scan");
        user.Type("Form4", "N_SCAN", "3");
    });
    Assign({"Record1"});
    wire->ClearTranscript();
    Run();

    EXPECT_EQ(Sends("rout:scan:count 3"), 1);
    EXPECT_EQ(Sends("rout:SCAN:STEP"), 3);
    const auto rows = RowsOf(Record("Record1"));
    ASSERT_EQ(rows.size(), 3U);
    // A voltage of some volts over half an ohm, and a hundred amperes more.
    for (const auto& row : rows) EXPECT_GT(std::stod(row[2]), 50);
    EXPECT_EQ(user.Messages().back(), "End of Job.");
}

TEST_F(SetUp, What_was_set_is_still_there_for_the_next_look) {
    Open(R"(
        instrument USB0::1::INSTR
        card 1
        no-line-feed
        channel 1-3 VOLT
    )");
    Connect({0});
    user.WhenShown("Set_Dev", [&] {
        user.Pick("Set_Dev", "ch(1)", "4W,TEMP");
        user.Pick("Set_Dev", "temp(1)", "PT385");
        user.Type("Set_Dev", "Timer_Set", "2");
        user.Click("Set_Dev", "Command1");
        user.Click("Set_Dev", "Command2");
    });
    user.Menu("set_sc");
    user.WhenShown("Set_Dev", [&] {
        EXPECT_EQ(user.Text("Set_Dev", "ch(1)"), "4W,TEMP");
        EXPECT_EQ(user.Text("Set_Dev", "temp(1)"), "PT385");
        EXPECT_FALSE(user.Enabled("Set_Dev", "ch(6)"));
        EXPECT_EQ(user.Text("Set_Dev", "Timer_Set"), "2");
        user.Click("Set_Dev", "Command2");
    });
    user.Menu("set_sc");
}

}  // namespace
}  // namespace vantrel
