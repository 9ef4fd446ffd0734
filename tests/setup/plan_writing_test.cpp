// What SET sends, and what it makes of the answers.
#include "setup/plan_writing.h"

#include "setup/plan.h"
#include "support/errors.h"
#include "windows/Set_Dev.h"

#include <QApplication>
#include <QMessageBox>
#include <QWidget>

namespace vantrel {
namespace {

const std::string kVolt = R"("VOLT")";

class PlanWriting : public PlanDesk {
protected:
    /// Opens the dialog on the first rows of the bench, runs `edits`, SET. The traffic is that of SET alone.
    void SetAfter(const User::Action& edits) {
        SetDev([this, edits] {
            edits();
            wire->ClearTranscript();
            Set();
        });
    }
    /// A 10-channel device on which the timer `text` is set. True if it went out.
    bool SendsTimer(const std::string& text) {
        SetAfter([&] { user.Type("Set_Dev", "Timer_Set", text); });
        const Texts sent = wire->Sent(0);
        return !sent.empty() && sent.front() == "ROUTe:SCAN:TIMER " + text + "\n";
    }
};

TEST_F(PlanWriting, A_plain_plan_is_the_timer_and_one_command_a_channel_and_the_read_back) {
    Open(kTwentyVolts);
    Connect({0});
    SetAfter([] {});
    EXPECT_EQ(wire->Sent(0), Joined({Wire("ROUTe:SCAN:TIMER 0.5"), Functions(1, 20, kVolt), ReadBack(20)}));
    EXPECT_EQ(user.Messages(), Texts{"Setting complete!"});
}

TEST_F(PlanWriting, Every_function_goes_out_as_its_word) {
    Open(kTwentyVolts);
    Connect({0});
    SetAfter([&] {
        PickCurrent(0, "DCI");
        PickCurrent(1, "ACI");
        const Texts names = {"ACV", "2W", "FREQ", "PERIOD", "NONE", "DCV"};
        for (std::size_t k = 0; k < names.size(); ++k) user.Pick("Set_Dev", Ch(static_cast<int>(k) + 2), names[k]);
    });
    EXPECT_EQ(wire->Sent(0), Joined({Wire(R"(ROUTe:SCAN:TIMER 0.5
                                             rout:scan:func 1,"VOLT"
                                             rout:scan:func 2,"VOLT:AC"
                                             rout:scan:func 3,"VOLT:AC"
                                             rout:scan:func 4,"RES"
                                             rout:scan:func 5,"FREQ"
                                             rout:scan:func 6,"PERIOD"
                                             rout:scan:func 7,"NONE"
                                             rout:scan:func 8,"VOLT")"),
                                     Functions(9, 20, kVolt), ReadBack(20)}));
}

struct Sending {
    const char* name;
    const char* word;
    const char* sensor;      // the command behind the function, up to the channel; empty for none
    const char* transducer;  // the same for masters alone
    bool four_wire;
};
const std::vector<Sending> kSendings = {
    {"DCV", R"("VOLT")", "", "", false},
    {"ACV", R"("VOLT:AC")", "", "", false},
    {"DCI", R"("VOLT")", "", "", false},
    {"ACI", R"("VOLT:AC")", "", "", false},
    {"2W", R"("RES")", "", "", false},
    {"4W", R"("FRES")", "", "", true},
    {"FREQ", R"("FREQ")", "", "", false},
    {"PERIOD", R"("PERIOD")", "", "", false},
    {"TCOUPL", R"("TCO")", "SENSe:TCOuple:TYPE S", "", false},
    {"TEMP", R"("TEMP")", "SENSe:TEMP:RTD:TYPE S", "SENSe:TEMP:TRAN RTD", false},
    {"4W,TEMP", R"("TEMP")", "SENSe:TEMP:RTD:TYPE S", "SENSe:TEMP:TRAN FRTD", true},
    {"NONE", R"("NONE")", "", "", false},
    // Typed: what merely holds a word's letters counts.
    {"xTEMPx", "xTEMPx", "SENSe:TEMP:RTD:TYPE S", "SENSe:TEMP:TRAN RTD", false},
    {"x4WTEMPx", "x4WTEMPx", "SENSe:TEMP:RTD:TYPE S", "SENSe:TEMP:TRAN FRTD", true},
    {"xTCOx", "xTCOx", "SENSe:TCOuple:TYPE S", "", false},
    {"temp", "temp", "", "", false},
    {"tco", "tco", "", "", false},
    {R"("RES")", "2W", "", "", false},  // a word is taken for a word
};

TEST_F(PlanWriting, Masters_slaves_and_silenced_slaves_get_the_commands_of_their_function) {
    Open(kTenVolts);
    Connect({0});
    SetDev([&] {
        Set_Dev& dialog = The<Set_Dev>();
        for (const Sending& it : kSendings) {
            SCOPED_TRACE(it.name);
            // Channels 2 and 9 hold the function, and so does 10, whose master has four wires.
            for (int i = 0; i < 10; ++i) dialog.Fun_Set(0, i) = "DCV";
            for (const int i : {1, 8, 9}) {
                dialog.Fun_Set(0, i) = it.name;
                dialog.temp(i).SetText("S");
            }
            dialog.Fun_Set(0, 4) = "4W";
            wire->ClearTranscript();
            Set();

            const auto on_channel = [&](int n, const Texts& commands) {
                Texts messages = Functions(n, n, it.word);
                for (const std::string& command : commands)
                    if (!command.empty()) messages.push_back(command + " ,@" + std::to_string(n) + "\n");
                return messages;
            };
            const Texts expected =
                Joined({Wire("ROUTe:SCAN:TIMER 0.5"), Functions(1, 1, kVolt), on_channel(2, {it.sensor, it.transducer}),
                        Functions(3, 4, kVolt), Functions(5, 5, R"("FRES")"), Functions(6, 6, kVolt),
                        it.four_wire ? Texts{} : Functions(7, 7, kVolt), Functions(8, 8, kVolt),
                        on_channel(9, {it.sensor}), Wire("ROUTe:SCAN:TIMER?")});
            Texts sent = wire->Sent(0);
            sent.resize(expected.size());
            EXPECT_EQ(sent, expected);
        }
    });
}

TEST_F(PlanWriting, Four_wire_masters_get_their_commands_and_their_slaves_nothing) {
    Open(kTwentyVolts);
    Connect({0});
    SetAfter([&] {
        user.Pick("Set_Dev", "ch(1)", "4W");
        user.Pick("Set_Dev", "ch(3)", "4W,TEMP");
        user.Pick("Set_Dev", "temp(3)", "PT385");
    });
    EXPECT_EQ(wire->Sent(0), Joined({Wire(R"(ROUTe:SCAN:TIMER 0.5
                                             rout:scan:func 1,"VOLT"
                                             rout:scan:func 2,"FRES"
                                             rout:scan:func 3,"VOLT"
                                             rout:scan:func 4,"TEMP"
                                             SENSe:TEMP:RTD:TYPE PT385 ,@4
                                             SENSe:TEMP:TRAN FRTD ,@4)"),
                                     Functions(5, 11, kVolt), Functions(13, 13, kVolt), Functions(15, 20, kVolt),
                                     ReadBack(20, {{4, kRtd}})}));
    EXPECT_EQ(ChannelPlan(0, 1), "4W");
    EXPECT_EQ(ChannelPlan(0, 3), "4W,TEMP");
    EXPECT_EQ(ChannelPlan(0, 11), "NONE");
    EXPECT_EQ(ChannelPlan(0, 13), "NONE");
}

TEST_F(PlanWriting, On_a_10_channel_card_a_four_wire_channel_2_silences_channel_7) {
    Open(kTenVolts);
    Connect({0});
    SetAfter([&] { user.Pick("Set_Dev", "ch(1)", "4W"); });
    EXPECT_EQ(wire->Sent(0), Joined({Wire("ROUTe:SCAN:TIMER 0.5"), Functions(1, 1, kVolt), Functions(2, 2, R"("FRES")"),
                                     Functions(3, 6, kVolt), Functions(8, 10, kVolt), ReadBack(10)}));
}

TEST_F(PlanWriting, Thermocouples_send_their_letter_on_masters_and_slaves) {
    Open(kTenVolts);
    Connect({0});
    SetAfter([&] {
        user.Pick("Set_Dev", "ch(0)", "TCOUPL");
        user.Pick("Set_Dev", "temp(0)", "K");
        user.Pick("Set_Dev", "ch(9)", "TCOUPL");
        user.Pick("Set_Dev", "temp(9)", "T");
    });
    EXPECT_EQ(wire->Sent(0), Joined({Wire(R"(ROUTe:SCAN:TIMER 0.5
                                             rout:scan:func 1,"TCO"
                                             SENSe:TCOuple:TYPE K ,@1)"),
                                     Functions(2, 9, kVolt), Wire(R"(rout:scan:func 10,"TCO"
                                             SENSe:TCOuple:TYPE T ,@10)"),
                                     ReadBack(10, {{1, kLetter}, {10, kLetter}})}));
}

TEST_F(PlanWriting, A_two_wire_RTD_gets_its_transducer_on_a_master_and_none_on_a_slave) {
    Open(kTenVolts + "channel 8 TEMP PT100 FRTD\n");
    Connect({0});
    SetAfter([&] {
        user.Pick("Set_Dev", "ch(2)", "TEMP");
        user.Pick("Set_Dev", "temp(2)", "D100");
        user.Pick("Set_Dev", "ch(7)", "TEMP");
        user.Pick("Set_Dev", "temp(7)", "NTCT");
    });
    EXPECT_EQ(wire->Sent(0),
              Joined({Wire("ROUTe:SCAN:TIMER 0.5"), Functions(1, 2, kVolt), Wire(R"(rout:scan:func 3,"TEMP"
                                             SENSe:TEMP:RTD:TYPE D100 ,@3
                                             SENSe:TEMP:TRAN RTD ,@3)"),
                      Functions(4, 7, kVolt), Wire(R"(rout:scan:func 8,"TEMP"
                                             SENSe:TEMP:RTD:TYPE NTCT ,@8)"),
                      Functions(9, 10, kVolt), ReadBack(10, {{3, kRtd}, {8, kRtd}})}));
    // The slave keeps the four wires that the instrument was set to.
    EXPECT_EQ(ChannelPlan(0, 7), "4W,TEMP");
}

TEST_F(PlanWriting, Devices_are_written_and_read_back_one_after_the_other_with_the_sensor_types_that_are_shown) {
    Open(kTenVolts + "channel 5 TCO K\n" + kOtherTenVolts +
         "channel 1 TCO J\nchannel 3 TEMP PT385 RTD\nchannel 5 TEMP D100 RTD\n");
    Connect({0, 1});
    SetAfter([&] {
        // Out of sight, the combo keeps its text.
        user.Pick("Set_Dev", "ch(0)", "TCOUPL");
        user.Pick("Set_Dev", "temp(0)", "R");
        user.Pick("Set_Dev", "ch(0)", "DCV");
        user.Pick("Set_Dev", "temp(4)", "K");
    });
    auto expected = To(0, Joined({Wire("ROUTe:SCAN:TIMER 0.5"), Functions(1, 4, kVolt), Wire(R"(rout:scan:func 5,"TCO"
                                          SENSe:TCOuple:TYPE K ,@5)"),
                                  Functions(6, 10, kVolt), ReadBack(10, {{5, kLetter}})}));
    for (const auto& message :
         To(1, Joined({Wire(R"(ROUTe:SCAN:TIMER 0.5
                                                     rout:scan:func 1,"TCO"
                                                     SENSe:TCOuple:TYPE R ,@1
                                                     rout:scan:func 2,"VOLT"
                                                     rout:scan:func 3,"TEMP"
                                                     SENSe:TEMP:RTD:TYPE  ,@3
                                                     SENSe:TEMP:TRAN RTD ,@3
                                                     rout:scan:func 4,"VOLT"
                                                     rout:scan:func 5,"TEMP"
                                                     SENSe:TEMP:RTD:TYPE K ,@5
                                                     SENSe:TEMP:TRAN RTD ,@5)"),
                       Functions(6, 10, kVolt), ReadBack(10, {{1, kLetter}, {3, kRtd}, {5, kRtd}})})))
        expected.push_back(message);
    EXPECT_EQ(wire->Sent(), expected);
}

TEST_F(PlanWriting, A_typed_type_goes_to_all_devices_before_any_list_is_filled_anew) {
    Open(kTenVolts + "channel 5 TCO K\n" + kOtherTenVolts + "channel 5 TCO J\n");
    Connect({0, 1});
    SetAfter([&] { user.Type("Set_Dev", "temp(4)", "ZZ"); });
    for (const int instrument : {0, 1}) EXPECT_EQ(wire->Sent(instrument).at(6), "SENSe:TCOuple:TYPE ZZ ,@5\n");
}

TEST_F(PlanWriting, A_device_is_written_with_as_many_channels_as_the_first_row_has) {
    Open(kTenVolts + kTwentyVolts);
    Connect({1});
    SetAfter([&] { user.Pick("Set_Dev", "ch(1)", "4W"); });
    EXPECT_EQ(wire->Sent(1), Joined({Wire("ROUTe:SCAN:TIMER 0.5"), Functions(1, 1, kVolt), Functions(2, 2, R"("FRES")"),
                                     Functions(3, 6, kVolt), Functions(8, 10, kVolt), ReadBack(10)}));
    EXPECT_EQ(wire->Sent(0), Texts{});
}

TEST_F(PlanWriting, A_type_that_came_with_a_line_feed_is_overwritten_with_the_first_one) {
    Open(R"(
        instrument USB0::1::INSTR
        card 1
        channel 2 TEMP PT385 RTD
    )");
    Connect({0});
    SetAfter([] {});
    EXPECT_EQ(wire->Sent(0), Joined({Wire(R"(ROUTe:SCAN:TIMER 0.5
                                             rout:scan:func 1,"NONE"
                                             rout:scan:func 2,"TEMP"
                                             SENSe:TEMP:RTD:TYPE PT100 ,@2
                                             SENSe:TEMP:TRAN RTD ,@2)"),
                                     Functions(3, 10, R"("NONE")"), ReadBack(10, {{2, kRtd}})}));
}

TEST_F(PlanWriting, A_word_that_is_no_name_goes_back_out_as_it_came) {
    Open(kTenVolts + R"(reply "rout:scan:func? 8" "\"PERIOD\"\n")");
    Connect({0});
    SetAfter([] {});
    EXPECT_EQ(wire->Sent(0), Joined({Wire("ROUTe:SCAN:TIMER 0.5"), Functions(1, 7, kVolt),
                                     Functions(8, 8, R"("PERIOD")"), Functions(9, 10, kVolt), ReadBack(10)}));
}

TEST_F(PlanWriting, A_typed_name_goes_out_as_it_stands_and_what_the_instrument_holds_comes_back) {
    Open(kTenVolts);
    Connect({0});
    SetDev([&] {
        user.Type("Set_Dev", "ch(2)", "what");
        wire->ClearTranscript();
        Set();
        EXPECT_EQ(wire->Sent(0).at(3), "rout:scan:func 3,what\n");
        EXPECT_EQ(Shown("ch(2)"), "DCV");
        EXPECT_EQ(ChannelPlan(0, 2), "DCV");
    });
}

TEST_F(PlanWriting, A_typed_name_with_a_question_mark_is_a_query_and_its_reply_is_waited_for) {
    Open(kTenVolts);
    Connect({0});
    SetDev([&] {
        user.Type("Set_Dev", "ch(2)", "wh?t");
        wire->ClearTranscript();
        Set();
        const Texts calls = wire->Calls();
        const std::string session = std::to_string(InstrSession(0));
        const auto write = std::ranges::find(calls, "viWrite(" + session + ", \"rout:scan:func 3,wh?t\\n\")");
        ASSERT_LT(write - calls.begin(), std::ssize(calls) - 1);
        EXPECT_EQ(*(write + 1), "viRead(" + session + ", 1024)");
    });
    // The instrument has no reply to it.
    EXPECT_EQ(user.Messages(), (Texts{"Device is disconnected !", "Setting complete!"}));
}

TEST_F(PlanWriting, Four_wires_typed_on_a_slave_are_sent_and_come_back_as_NONE) {
    Open(kTenVolts);
    Connect({0});
    SetDev([&] {
        user.Type("Set_Dev", "ch(7)", "4W");
        wire->ClearTranscript();
        Set();
        EXPECT_EQ(wire->Sent(0).at(8), "rout:scan:func 8,\"FRES\"\n");
        EXPECT_EQ(Shown("ch(7)"), "NONE");
    });
}

TEST_F(PlanWriting, A_silenced_slave_keeps_the_name_that_the_dialog_holds_for_it) {
    Open(kTwentyVolts);
    Connect({0});
    SetDev([&] {
        user.Pick("Set_Dev", "ch(2)", "4W");
        The<Set_Dev>().Fun_Set(0, 12) = "DCI";  // the dialog shows NONE there
        wire->ClearTranscript();
        Set();
        EXPECT_EQ(wire->Sent(0),
                  Joined({Wire("ROUTe:SCAN:TIMER 0.5"), Functions(1, 2, kVolt), Functions(3, 3, R"("FRES")"),
                          Functions(4, 12, kVolt), Functions(14, 20, kVolt), ReadBack(20)}));
        EXPECT_EQ(ChannelPlan(0, 12), "DCI");
    });
}

TEST_F(PlanWriting, Current_channels_stay_current_in_the_plan) {
    Open(kTenVolts);
    Connect({0});
    SetAfter([&] {
        PickCurrent(1, "DCI");
        PickCurrent(2, "ACI");
    });
    EXPECT_EQ(ChannelPlan(0, 1), "DCI");
    EXPECT_EQ(ChannelPlan(0, 2), "ACI");
}

TEST_F(PlanWriting, A_current_channel_can_be_made_a_voltage_again) {
    Open(kTenVolts);
    Connect({0});
    SetAfter([&] { PickCurrent(1, "DCI"); });
    SetAfter([&] { user.Pick("Set_Dev", "ch(1)", "DCV"); });
    EXPECT_EQ(ChannelPlan(0, 1), "DCV");
}

// --------------------------------------------------------------------------------------------------------------- mode

TEST_F(PlanWriting, Only_SCAN_is_SCAN_and_any_other_mode_is_the_step_mode) {
    Open(kTenVolts);
    Connect({0});
    const std::vector<std::pair<std::string, std::string>> modes = {
        {"STEP", "SCAN:STEP"}, {"SCAN", "SCAN"}, {"scan", "SCAN:STEP"}, {"", "SCAN:STEP"}, {"SCAN ", "SCAN:STEP"},
    };
    for (const auto& [text, word] : modes) {
        SetAfter([&] { user.Type("Set_Dev", "Combo_Scan_model", text); });
        EXPECT_EQ(ScanModeWord(0), word) << text;
        EXPECT_EQ(wire->Sent(0), Joined({Wire("ROUTe:SCAN:TIMER 0.5"), Functions(1, 10, kVolt), ReadBack(10)}));
    }
}

TEST_F(PlanWriting, SET_shows_the_scan_mode_as_it_was_entered) {
    Open(kTenVolts);
    Connect({0});
    SetDev([&] {
        user.Type("Set_Dev", "Combo_Scan_model", "other");
        Set();
        EXPECT_EQ(Shown("Combo_Scan_model"), "other");
    });
}

// -------------------------------------------------------------------------------------------------------------- timer

TEST_F(PlanWriting, Timers_from_0_to_below_9999_999_are_sent_as_they_stand) {
    Open(kTenVolts);
    Connect({0});
    for (const char* text : {"0", "0.5", "9999.998", "5E-1", "+2", " 3 ", ".25", "007", "-0"})
        EXPECT_TRUE(SendsTimer(text)) << text;
}

TEST_F(PlanWriting, Timers_out_of_range_are_passed_over_without_a_word) {
    Open(kTenVolts);
    Connect({0});
    for (const char* text : {"9999.999", "10000", "-1", "-0.001", "1E6"}) EXPECT_FALSE(SendsTimer(text)) << text;
    EXPECT_EQ(user.Messages(), Texts(5, "Setting complete!"));
}

TEST_F(PlanWriting, After_a_timer_out_of_range_the_channels_go_out_and_the_instruments_timer_shows) {
    Open(kTenVolts);
    Connect({0});
    SetDev([&] {
        user.Type("Set_Dev", "Timer_Set", "9999.999");
        wire->ClearTranscript();
        Set();
        EXPECT_EQ(wire->Sent(0), Joined({Functions(1, 10, kVolt), ReadBack(10)}));
        EXPECT_EQ(Shown("Timer_Set"), "0.5");
        EXPECT_EQ(ScanTimerText(0), "0.5");
    });
}

TEST_F(PlanWriting, Mode_timer_and_function_are_taken_before_they_are_sent) {
    for (const auto& [text, taken] :
         std::vector<std::pair<std::string, std::string>>{{"2.0", "2.0"}, {"10000", "0.5"}}) {
        // A typed name with a question mark is the first command to be answered, or not: SET can be looked at there.
        Open(kTenVolts + "no-reply \"rout:scan:func 2,what?\"\n");
        Connect({0});
        bool looked = false;
        user.WhenMessage("Device is disconnected !", [&, it = taken] {
            looked = true;
            EXPECT_EQ(ScanModeWord(0), "SCAN:STEP");
            EXPECT_EQ(ScanTimerText(0), it);
            EXPECT_EQ(ChannelPlan(0, 1), "what?");
            EXPECT_EQ(ChannelPlan(0, 2), "DCV");
            EXPECT_TRUE(The<Set_Dev>().Plan_Busy);
        });
        SetAfter([&, it = text] {
            user.Pick("Set_Dev", "Combo_Scan_model", "STEP");
            user.Type("Set_Dev", "Timer_Set", it);
            user.Type("Set_Dev", "ch(1)", "what?");
            user.Pick("Set_Dev", "ch(2)", "2W");
        });
        EXPECT_TRUE(looked);
        EXPECT_EQ(wire->Sent(0).front() == "ROUTe:SCAN:TIMER 2.0\n", text == "2.0");
    }
}

TEST_F(PlanWriting, A_timer_is_refused_behind_the_scan_mode_and_before_the_functions) {
    Open(kTenVolts);
    Connect({0});
    SetAfter([&] {
        user.Pick("Set_Dev", "Combo_Scan_model", "STEP");
        user.Type("Set_Dev", "Timer_Set", "abc");
        user.Pick("Set_Dev", "ch(1)", "2W");
    });
    EXPECT_EQ(ScanModeWord(0), "SCAN:STEP");
    EXPECT_EQ(ScanTimerText(0), "0.5");
    EXPECT_EQ(ChannelPlan(0, 1), "DCV");
}

TEST_F(PlanWriting, A_timer_that_is_no_number_is_refused_by_name_and_nothing_of_that_device_is_sent) {
    Open(kTenVolts);
    Connect({0});
    for (const char* text : {"abc", "", "1,5", "0x5", "1 2", "2s", "1E999"}) {
        SetDev([&] {
            user.Type("Set_Dev", "Timer_Set", text);
            wire->ClearTranscript();
            Set();
            EXPECT_TRUE(wire->Sent().empty()) << text;
            EXPECT_EQ(user.Messages().back(), std::string("The scan timer of Ten is not a number of seconds: \"") +
                                                  text + "\". Please key a number.");
            EXPECT_FALSE(The<Set_Dev>().Plan_Busy);
            EXPECT_EQ(Shown("Timer_Set"), text);
            EXPECT_EQ(user.FindWindow("Set_Dev")->focusWidget()->objectName(), "Timer_Set");
        });
    }
    EXPECT_EQ(user.Messages().size(), 7U);
}

TEST_F(PlanWriting, A_refused_timer_leaves_the_edits_and_a_dialog_that_works) {
    Open(kTenVolts);
    Connect({0});
    SetDev([&] {
        user.Pick("Set_Dev", "ch(1)", "2W");
        user.Type("Set_Dev", "Timer_Set", "abc");
        Set();
        EXPECT_EQ(Shown("ch(1)"), "2W");
        PickCurrent(2, "DCI", "50");
        EXPECT_EQ(user.ToolTip("Set_Dev", "ch(2)"), "R=50, I= 0");
        user.Type("Set_Dev", "Timer_Set", "2");
        wire->ClearTranscript();
        Set();
        EXPECT_EQ(wire->Sent(0), Joined({Wire(R"(ROUTe:SCAN:TIMER 2
                                                 rout:scan:func 1,"VOLT"
                                                 rout:scan:func 2,"RES")"),
                                         Functions(3, 10, kVolt), ReadBack(10)}));
        EXPECT_EQ(user.Messages().back(), "Setting complete!");
    });
}

TEST_F(PlanWriting, A_refused_timer_leaves_what_went_to_the_devices_before_as_sent) {
    Open(kTwentyVolts + kTenVolts);
    Connect({0, 1});
    SetDev([&] {
        user.Pick("Set_Dev", "Combo1_dev", "Ten");
        user.Type("Set_Dev", "Timer_Set", "abc");
        wire->ClearTranscript();
        Set();
        EXPECT_EQ(wire->Sent(0), Joined({Wire("ROUTe:SCAN:TIMER 0.5"), Functions(1, 20, kVolt), ReadBack(20)}));
        EXPECT_EQ(wire->Sent(1), Texts{});
        EXPECT_EQ(user.Messages(),
                  Texts{"The scan timer of Ten is not a number of seconds: \"abc\". Please key a number."});
    });
}

TEST_F(PlanWriting, A_refused_timer_of_a_later_device_shows_what_the_shown_one_took) {
    Open(kTwentyVolts + kTenVolts);
    Connect({0, 1});
    SetDev([&] {
        user.Type("Set_Dev", "ch(2)", "what");
        The<Set_Dev>().Timer_Text(1) = "abc";
        Set();
        EXPECT_EQ(Shown("ch(2)"), "DCV");
    });
}

TEST_F(PlanWriting, A_timer_is_refused_while_no_device_is_shown) {
    Open(kTenVolts + R"(reply "ROUTe:SCAN:TIMER?" "soon\n")");
    Connect({0});
    SetDev([&] {
        user.Type("Set_Dev", "ch(2)", "what");
        user.TypeOn("Set_Dev", "Combo1_dev", "x");
        wire->ClearTranscript();
        Set();
        EXPECT_EQ(wire->Sent(), To(0, {}));
        EXPECT_EQ(user.Messages(),
                  Texts{"The scan timer of Ten is not a number of seconds: \"soon\". Please key a number."});
        EXPECT_EQ(Shown("ch(2)"), "what");
        EXPECT_FALSE(The<Set_Dev>().Plan_Busy);
    });
}

// ----------------------------------------------------------------------------------------------------------- failures

TEST_F(PlanWriting, A_dead_instrument_is_told_of_at_each_query_and_SET_goes_on_to_its_end) {
    Open(kTenVolts);
    Connect({0});
    SetDev([&] {
        wire->bench.Unplug(0);
        Set();
    });
    Texts expected(11, "Device is disconnected !");
    expected.emplace_back("Setting complete!");
    EXPECT_EQ(user.Messages(), expected);
}

TEST_F(PlanWriting, No_answer_is_waited_for_behind_a_command) {
    Open(kTenVolts);
    Connect({0});
    SetDev([&] {
        const auto begin = clock.Elapsed();
        Set();
        EXPECT_EQ(clock.Elapsed() - begin, 11 * 50);  // the queries of the read-back
    });
}

TEST_F(PlanWriting, Nothing_else_runs_between_the_commands) {
    Open(kTwentyVolts);
    Connect({0});
    std::size_t sent = 0;
    SetAfter([&] { clock.At(static_cast<int>(clock.Elapsed()) + 100, [&] { sent = wire->Sent(0).size(); }); });
    EXPECT_EQ(sent, 42U);
}

TEST_F(PlanWriting, A_device_name_that_is_none_ends_the_program_behind_the_last_device) {
    Open(kTenVolts);
    Connect({0});
    SetDev([&] {
        user.TypeOn("Set_Dev", "Combo1_dev", "x");
        wire->ClearTranscript();
        EXPECT_EQ(ErrorOf(WriteDevicePlans), 9);
        EXPECT_EQ(wire->Sent(0), Joined({Wire("ROUTe:SCAN:TIMER 0.5"), Functions(1, 10, kVolt), ReadBack(10)}));
    });
    EXPECT_TRUE(user.Messages().empty());
}

TEST_F(PlanWriting, The_message_has_one_OK_button_and_no_title_but_the_programs_name) {
    Open(kTenVolts);
    Connect({0});
    bool looked = false;
    user.WhenMessage("Setting complete!", [&] {
        const auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
        ASSERT_NE(box, nullptr);
        looked = true;
        EXPECT_EQ(box->standardButtons(), QMessageBox::Ok);
        EXPECT_EQ(box->windowTitle(), "VANTREL");
        EXPECT_EQ(box->text(), "Setting complete!");
    });
    SetAfter([] {});
    EXPECT_TRUE(looked);
}

TEST_F(PlanWriting, The_dialog_shows_what_the_instrument_took_before_the_message) {
    Open(kTenVolts);
    Connect({0});
    std::string shown;
    user.WhenMessage("Setting complete!", [&] { shown = Shown("ch(2)"); });
    SetAfter([&] { user.Type("Set_Dev", "ch(2)", "what"); });
    EXPECT_EQ(shown, "DCV");
}

TEST_F(PlanWriting, SET_is_busy_until_its_message_comes_up) {
    Open(kTenVolts);
    Connect({0});
    user.WhenMessage("Setting complete!", [] { EXPECT_FALSE(The<Set_Dev>().Plan_Busy); });
    SetAfter([] {});
    EXPECT_TRUE(user.Messages() == Texts{"Setting complete!"});
}

}  // namespace
}  // namespace vantrel
