// Reading the channel plan back: what is asked, how replies are cleaned, and what the instrument cannot know.
#include "setup/plan_readback.h"

#include "platform/toolkit/events.h"
#include "state/shared.h"
#include "state/vocabulary.h"
#include "support/attached.h"
#include "support/desk.h"
#include "support/texts.h"
#include "windows/Form1.h"
#include "windows/Set_Dev.h"

#include <algorithm>

namespace vantrel {
namespace {

/// Device 0 is discovery row 2, so that tables by device and tables by row can be told apart.
class PlanReadback : public Desk {
protected:
    static constexpr int kRow = 2;

    void OpenWith(int channels, const std::string& entries) {
        Open("instrument GPIB0::1::INSTR\n  card " + std::to_string(channels / 10) + "\n" + entries);
        DefaultRM = 0;  // the manager of a bench before this one is gone with it
        Attach(0, kRow, 0, "GPIB0::1::INSTR");
        ChannelCount(0) = channels;
        wire->ClearTranscript();
    }
    /// The reply to the function query of a channel, numbered from 1, as a bench file's text.
    static std::string Function(int channel, const std::string& reply) {
        return "reply \"rout:scan:func? " + std::to_string(channel) + "\" \"" + reply + "\"\n";
    }
    static std::string Transducer(int channel, const std::string& reply) {
        return "reply \"TEMPerature:TRANsducer? @" + std::to_string(channel) + "\" \"" + reply + "\"\n";
    }
    static std::string& Cell(int ch) { return ChannelPlan(kRow, ch); }
    static std::string Working(int ch) { return The<Set_Dev>().Fun_Set(kRow, ch); }
    static std::string Sensor(int ch) { return The<Set_Dev>().Temp_Set(ch); }

    /// Both read-backs, for behaviour that they share.
    const std::vector<void (*)(Integer)> both = {RefreshChannelFunctions, ReadDevicePlan};
};

struct Mapping {
    const char* reply;
    const char* name;
};
const std::vector<Mapping> kMappings = {
    {"\\\"VOLT\\\"\\n", "DCV"},
    {"\\\"VOLT:AC\\\"\\n", "ACV"},
    {"\\\"RES\\\"\\n", "2W"},
    {"\\\"FRES\\\"\\n", "4W"},
    {"\\\"FREQ\\\"\\n", "FREQ"},
    {"\\\"PER\\\"\\n", "PERIOD"},
    {"\\\"PERIOD\\\"\\n", "\"PERIOD\""},
    {"\\\"TCO\\\"\\n", "TCOUPL"},
    {"\\\"NONE\\\"\\n", "NONE"},
    {"\\\"VOLT\\\"", "DCV"},               // without a line feed
    {"\\n \\\"VO\\nLT\\\" \\n", "DCV"},    // full cleaning: line feeds anywhere, blanks around
    {"\\\"VO LT\\\"\\n", "\"VO LT\""},     // inner blanks stay
    {"\\\"VOLT\\\"\\r\\n", "\"VOLT\"\r"},  // so does a carriage return
    {"\\\"volt\\\"\\n", "\"volt\""},       // case counts
    {"nonsense\\n", "nonsense"},
    {"VOLT\\n", "VOLT"},
    {"DCV\\n", "\"VOLT\""},  // a name is taken for a name
    {"\\n", ""},
    {"", ""},
};

TEST_F(PlanReadback, Cleaned_reply_becomes_the_cell_by_the_map) {
    for (const auto read_back : both) {
        for (const Mapping& it : kMappings) {
            OpenWith(10, Function(1, it.reply));
            Cell(0) = "old";
            read_back(0);
            EXPECT_EQ(Cell(0), it.name) << it.reply;
        }
    }
}

TEST_F(PlanReadback, Cell_that_is_still_empty_is_no_current_channel_and_is_asked_for_all_there_is) {
    for (const auto read_back : both) {
        OpenWith(10, "channel 1 VOLT\nchannel 2 VOLT:AC\nchannel 3 TEMP PT385 FRTD\n");
        for (int ch = 0; ch < 10; ++ch) Cell(ch) = "";
        read_back(0);
        EXPECT_EQ(Cell(0), "DCV");
        EXPECT_EQ(Cell(1), "ACV");
        EXPECT_EQ(Cell(2), "4W,TEMP");
        const Texts sent = wire->Sent(0);
        for (const char* query : {"rout:scan:func? 1\n", "rout:scan:func? 2\n", "TEMPerature:TRANsducer? @3\n"})
            EXPECT_EQ(std::ranges::count(sent, query), 1) << query;
    }
}

// ------------------------------------------------------------------------------------------- functions only, for a run

TEST_F(PlanReadback, Refresh_asks_for_each_channel_in_turn) {
    OpenWith(20, "channel 1-20 VOLT\n");
    RefreshChannelFunctions(0);
    Texts expected;
    for (int channel = 1; channel <= 20; ++channel)
        expected.push_back("rout:scan:func? " + std::to_string(channel) + "\n");
    EXPECT_EQ(wire->Sent(0), expected);
}

TEST_F(PlanReadback, Refresh_asks_for_ten_channels_of_a_small_card) {
    OpenWith(10, "channel 1-10 VOLT\n");
    RefreshChannelFunctions(0);
    EXPECT_EQ(wire->Sent(0).size(), 10U);
    EXPECT_EQ(wire->Sent(0).back(), "rout:scan:func? 10\n");
    EXPECT_EQ(Cell(10), "");
}

TEST_F(PlanReadback, Refresh_of_no_channels_sends_nothing) {
    OpenWith(10, "");
    ChannelCount(0) = 0;
    RefreshChannelFunctions(0);
    EXPECT_EQ(wire->Calls(), Texts{});
}

TEST_F(PlanReadback, Refresh_fills_the_row_and_not_the_device) {
    OpenWith(10, "channel 1-10 VOLT\n");
    RefreshChannelFunctions(0);
    EXPECT_EQ(Cell(0), "DCV");
    EXPECT_EQ(ChannelPlan(0, 0), "");
}

TEST_F(PlanReadback, Refresh_leaves_current_channels_alone_and_does_not_ask_them) {
    OpenWith(10, "channel 1-10 RES\n");
    Cell(0) = "DCI";
    Cell(1) = "ACI";
    Cell(2) = "xDCIx";
    Cell(3) = "xACIx";
    Cell(4) = "dci";
    RefreshChannelFunctions(0);
    EXPECT_EQ(Cell(0), "DCI");
    EXPECT_EQ(Cell(1), "ACI");
    EXPECT_EQ(Cell(2), "xDCIx");
    EXPECT_EQ(Cell(3), "xACIx");
    EXPECT_EQ(Cell(4), "2W");
    EXPECT_EQ(wire->Sent(0).front(), "rout:scan:func? 5\n");
    EXPECT_EQ(wire->Sent(0).size(), 6U);
}

TEST_F(PlanReadback, Refresh_asks_an_RTD_for_its_transducer_at_once) {
    OpenWith(10, "channel 2 TEMP PT100 FRTD\nchannel 3 TEMP PT100 RTD\nchannel 4 TCO K\n");
    RefreshChannelFunctions(0);
    Texts sent = wire->Sent(0);
    EXPECT_EQ(sent.size(), 12U);
    sent.resize(6);
    EXPECT_EQ(sent, (Texts{"rout:scan:func? 1\n", "rout:scan:func? 2\n", "TEMPerature:TRANsducer? @2\n",
                           "rout:scan:func? 3\n", "TEMPerature:TRANsducer? @3\n", "rout:scan:func? 4\n"}));
    EXPECT_EQ(Cell(1), "4W,TEMP");
    EXPECT_EQ(Cell(2), "TEMP");
}

TEST_F(PlanReadback, Transducer_counts_as_four_wire_if_the_reply_holds_FRTD) {
    const std::vector<Mapping> cases = {{"FRTD\\n", "4W,TEMP"},
                                        {" \\\"FRTD\\\" \\n", "4W,TEMP"},
                                        {"RTD\\n", "TEMP"},
                                        {"frtd\\n", "TEMP"},
                                        {"", "TEMP"}};
    for (const auto read_back : both) {
        for (const Mapping& it : cases) {
            OpenWith(10, "channel 1 TEMP PT100 RTD\n" + Transducer(1, it.reply));
            read_back(0);
            EXPECT_EQ(Cell(0), it.name) << it.reply;
        }
    }
}

TEST_F(PlanReadback, Any_reply_with_TEMP_in_it_leads_to_the_transducer) {
    for (const auto read_back : both) {
        OpenWith(10, Function(1, "xTEMPx\\n") + Transducer(1, "FRTD\\n"));
        read_back(0);
        EXPECT_EQ(Cell(0), "4W,TEMP");
    }
}

TEST_F(PlanReadback, Any_reply_with_TCO_in_it_leads_to_the_letter) {
    OpenWith(10, Function(1, "xTCOx\\n") + "reply \"TCOuple:TYPE? @1\" \"N\\n\"\n");
    ReadDevicePlan(0);
    EXPECT_EQ(Cell(0), "xTCOx");
    EXPECT_EQ(Sensor(0), "N\n");
}

TEST_F(PlanReadback, Four_wire_slave_without_a_four_wire_master_stays_in_a_refresh) {
    OpenWith(10, "channel 1 VOLT\nchannel 6 FRES\nchannel 7 TEMP PT100 FRTD\n");
    RefreshChannelFunctions(0);
    EXPECT_EQ(Cell(5), "4W");
    EXPECT_EQ(Cell(6), "4W,TEMP");
}

TEST_F(PlanReadback, Refresh_does_not_load_the_scanner_card_dialog) {
    OpenWith(10, "channel 1-10 TEMP PT100 FRTD\n");
    RefreshChannelFunctions(0);
    EXPECT_FALSE(IsLoaded<Set_Dev>());
}

// ------------------------------------------------------------------------------------------------------------- pairing

TEST_F(PlanReadback, Four_wire_master_clears_the_slave_half_a_card_behind_it) {
    struct Case {
        int channels, master, slave;  // as they are numbered for the user
        const char* function;
    };
    const std::vector<Case> cases = {{20, 1, 11, "FRES"}, {20, 10, 20, "FRES"}, {20, 1, 11, "TEMP PT100 FRTD"},
                                     {10, 1, 6, "FRES"},  {10, 5, 10, "FRES"},  {10, 5, 10, "TEMP PT100 FRTD"}};
    for (const auto read_back : both) {
        for (const Case& it : cases) {
            const std::string others = "channel 1-" + std::to_string(it.channels) + " VOLT\n";
            const std::string master = "channel " + std::to_string(it.master) + " " + it.function + "\n";
            OpenWith(it.channels, others + master);
            // Where rows and devices agree.
            Attach(0, 0, 0, "GPIB0::1::INSTR");
            read_back(0);
            for (int ch = 0; ch < it.channels; ++ch) {
                if (ch == it.master - 1) continue;
                EXPECT_EQ(ChannelPlan(0, ch), ch == it.slave - 1 ? "NONE" : "DCV") << it.function << ch;
            }
        }
    }
}

TEST_F(PlanReadback, Four_wire_master_clears_its_slave_whatever_that_reports) {
    for (const auto read_back : both) {
        for (const std::string function :
             {"VOLT", "FRES", "FREQ", "NONE", "TCO K", "TEMP D100 RTD", "TEMP D100 FRTD"}) {
            OpenWith(10, "channel 1 FRES\nchannel 6 " + function + "\n");
            Attach(0, 0, 0, "GPIB0::1::INSTR");
            read_back(0);
            EXPECT_EQ(ChannelPlan(0, 5), "NONE") << function;
        }
    }
}

TEST_F(PlanReadback, Cleared_slave_is_asked_for_its_sensor_all_the_same) {
    OpenWith(10, "channel 1 FRES\nchannel 6 TEMP D100 FRTD\n");
    Attach(0, 0, 0, "GPIB0::1::INSTR");
    ReadDevicePlan(0);
    EXPECT_EQ(Sensor(5), "D100\n");
    EXPECT_EQ(The<Set_Dev>().Fun_Set(0, 5), "NONE");
}

TEST_F(PlanReadback, Slave_follows_what_its_master_has_just_become) {
    for (const auto read_back : both) {
        OpenWith(10, "channel 1 VOLT\nchannel 2 FRES\nchannel 6-7 VOLT\n");
        Attach(0, 0, 0, "GPIB0::1::INSTR");
        ChannelPlan(0, 0) = "4W";
        ChannelPlan(0, 1) = "DCV";
        read_back(0);
        EXPECT_EQ(ChannelPlan(0, 5), "DCV");
        EXPECT_EQ(ChannelPlan(0, 6), "NONE");
    }
}

TEST_F(PlanReadback, Four_wire_master_without_a_slave_of_its_own_kind_keeps_its_name) {
    for (const auto read_back : both) {
        OpenWith(10, "channel 5 FRES\n");
        read_back(0);
        EXPECT_EQ(Cell(4), "4W");
    }
}

TEST_F(PlanReadback, Refresh_pairs_by_row) {
    OpenWith(10, "channel 1 FRES\nchannel 2 VOLT\nchannel 6-7 VOLT\n");
    ChannelPlan(0, 1) = "4W";
    RefreshChannelFunctions(0);
    EXPECT_EQ(Cell(5), "NONE");
    EXPECT_EQ(Cell(6), "DCV");
}

TEST_F(PlanReadback, Full_read_back_looks_a_slaves_master_up_by_device) {
    OpenWith(10, "channel 1 FRES\nchannel 2 VOLT\nchannel 6-7 VOLT\n");
    ChannelPlan(0, 1) = "4W";
    ReadDevicePlan(0);
    EXPECT_EQ(Cell(5), "DCV");
    EXPECT_EQ(Cell(6), "NONE");
}

TEST_F(PlanReadback, Slave_is_never_read_back_in_full_as_four_wire_resistance) {
    for (const std::string reply : {"\\\"FRES\\\"", "4W,other"}) {
        OpenWith(10, Function(6, reply));
        ReadDevicePlan(0);
        EXPECT_EQ(Cell(5), "NONE") << reply;
        EXPECT_EQ(Working(5), "NONE") << reply;
    }
}

TEST_F(PlanReadback, Slave_is_read_back_in_full_as_four_wire_temperature) {
    OpenWith(10, "channel 6 TEMP PT100 FRTD\n");
    ReadDevicePlan(0);
    EXPECT_EQ(Cell(5), "4W,TEMP");
    EXPECT_EQ(Working(5), "4W,TEMP");
}

// --------------------------------------------------------------------------------------------- in full, for the dialog

TEST_F(PlanReadback, Full_read_back_message_by_message) {
    OpenWith(10, "channel 1 TEMP PT385 FRTD\nchannel 2 TCO J\nchannel 3-10 VOLT\n");
    Cell(2) = "DCI";
    ReadDevicePlan(0);
    EXPECT_EQ(wire->Sent(0),
              (Texts{"ROUTe:SCAN:TIMER?\n", "rout:scan:func? 1\n", "TEMPerature:RTD:TYPE? @1\n",
                     "TEMPerature:TRANsducer? @1\n", "rout:scan:func? 2\n", "TCOuple:TYPE? @2\n", "rout:scan:func? 3\n",
                     "rout:scan:func? 4\n", "rout:scan:func? 5\n", "rout:scan:func? 6\n", "rout:scan:func? 7\n",
                     "rout:scan:func? 8\n", "rout:scan:func? 9\n", "rout:scan:func? 10\n"}));
}

TEST_F(PlanReadback, Each_query_takes_50_ms) {
    OpenWith(10, "channel 1 TCO K\nchannel 2-10 VOLT\n");
    ReadDevicePlan(0);
    EXPECT_EQ(clock.Elapsed(), 12 * 50);
}

TEST_F(PlanReadback, Nothing_else_runs_during_a_read_back) {
    for (const auto read_back : both) {
        OpenWith(10, "channel 1-10 VOLT\n");
        bool ran = false;
        clock.At(static_cast<int>(clock.Elapsed()) + 100, [&] { ran = true; });
        read_back(0);
        EXPECT_FALSE(ran);
        DoEvents();
        EXPECT_TRUE(ran);
    }
}

TEST_F(PlanReadback, Cleaned_reply_goes_back_into_the_buffer) {
    for (const auto read_back : both) {
        OpenWith(10, "channel 1-10 VOLT\n" + Function(10, " \\\"VOLT\\\" \\n"));
        read_back(0);
        EXPECT_EQ(ReplyBuffer.Text(), "\"VOLT\"" + std::string(1018, ' '));
    }
}

TEST_F(PlanReadback, Full_read_back_of_no_channels_asks_for_the_timer_only) {
    OpenWith(10, "");
    ChannelCount(0) = 0;
    ReadDevicePlan(0);
    EXPECT_EQ(wire->Sent(0), Texts{"ROUTe:SCAN:TIMER?\n"});
}

TEST_F(PlanReadback, Timer_is_kept_in_the_instruments_notation_by_device) {
    OpenWith(10, "reply \"ROUTe:SCAN:TIMER?\" \" +5.00\\n000000E-01 \\n\"\n");
    ReadDevicePlan(0);
    EXPECT_EQ(ScanTimerText(0), "+5.00000000E-01");
    EXPECT_EQ(The<Set_Dev>().Timer_Text(0), "+5.00000000E-01");
    EXPECT_EQ(ScanTimerText(kRow), "");
    EXPECT_EQ(The<Set_Dev>().Timer_Text(kRow), "");
}

TEST_F(PlanReadback, Working_functions_become_the_cells_by_row) {
    OpenWith(10, "channel 1 VOLT\nchannel 2 FREQ\n");
    Cell(2) = "ACI";
    ReadDevicePlan(0);
    for (int ch = 0; ch < 10; ++ch) EXPECT_EQ(Working(ch), Cell(ch)) << ch;
    EXPECT_EQ(Working(1), "FREQ");
    EXPECT_EQ(The<Set_Dev>().Fun_Set(0, 1), "");
}

TEST_F(PlanReadback, Sensor_types_keep_their_line_feed) {
    OpenWith(10, "channel 1 TEMP PT385 RTD\nchannel 2 TCO J\n");
    ReadDevicePlan(0);
    EXPECT_EQ(Sensor(0), "PT385\n");
    EXPECT_EQ(Sensor(1), "J\n");
}

TEST_F(PlanReadback, Sensor_types_lose_the_blanks_around_them) {
    OpenWith(10,
             "channel 1 TEMP PT385 RTD\nchannel 2 TCO J\nreply \"TEMPerature:RTD:TYPE? @1\" \"  PT385  \"\n"
             "reply \"TCOuple:TYPE? @2\" \" J \\n \"\n");
    ReadDevicePlan(0);
    EXPECT_EQ(Sensor(0), "PT385");
    EXPECT_EQ(Sensor(1), "J \n");
}

TEST_F(PlanReadback, Channel_without_a_sensor_keeps_the_type_that_stood_there) {
    OpenWith(10, "channel 1 VOLT\n");
    The<Set_Dev>().Temp_Set(0) = "USER";
    ReadDevicePlan(0);
    EXPECT_EQ(Sensor(0), "USER");
}

TEST_F(PlanReadback, Later_device_overwrites_the_sensor_types_of_an_earlier_one) {
    Open(
        "instrument GPIB0::1::INSTR\n  card 1\n  channel 1-2 TCO J\n"
        "instrument GPIB0::2::INSTR\n  card 1\n  channel 1 TCO T\n");
    Attach(0, 0, 0, "GPIB0::1::INSTR");
    Attach(1, 1, 1, "GPIB0::2::INSTR");
    ChannelCount(0) = 10;
    ChannelCount(1) = 10;
    ReadDevicePlan(0);
    ReadDevicePlan(1);
    EXPECT_EQ(Sensor(0), "T\n");
    EXPECT_EQ(Sensor(1), "J\n");
}

TEST_F(PlanReadback, Reply_with_both_TEMP_and_TCO_counts_as_an_RTD) {
    OpenWith(10, Function(1, "TEMP TCO\\n"));
    ReadDevicePlan(0);
    EXPECT_EQ(wire->Sent(0)[2], "TEMPerature:RTD:TYPE? @1\n");
    EXPECT_EQ(wire->Sent(0)[4], "rout:scan:func? 2\n");
}

// ---------------------------------------------------------------------------------------------------- current channels

TEST_F(PlanReadback, Current_channel_takes_the_kind_of_voltage_that_the_instrument_tells) {
    struct Case {
        const char* before;
        const char* reply;
        const char* after;
    };
    const std::vector<Case> cases = {
        {"DCI", "\\\"VOLT\\\"\\n", "DCI"},
        {"ACI", "\\\"VOLT:AC\\\"\\n", "ACI"},
        {"ACI", "\\\"VOLT\\\"\\n", "DCI"},
        {"DCI", "\\\"VOLT:AC\\\"\\n", "ACI"},
        {"DCI", "\\\"RES\\\"\\n", "2WI"},
        {"DCI", "\\\"FRES\\\"\\n", "4WI"},
        {"DCI", "\\\"NONE\\\"\\n", "NOI"},
        {"ACI", "\\\"TEMP\\\"\\n", "TEI"},
        {"DCI", "\\\"TCO\\\"\\n", "TCI"},
        {"DCI", "\\\"odd\\\"\\n", "\"oI"},
        {"DCI", "X\\n", "XI"},
        {"DCI", "", "I"},
        {"DCI", " \\\"VO\\nLT\\\" \\n", "DCI"},
        {"DCIx", "\\\"VOLT\\\"\\n", "DCIx"},
        {"ACIx", "\\\"VOLT:AC\\\"\\n", "ACIx"},
        {"dci", "\\\"RES\\\"\\n", "2W"},
    };
    for (const Case& it : cases) {
        OpenWith(10, Function(1, it.reply));
        Cell(0) = it.before;
        ReadDevicePlan(0);
        EXPECT_EQ(Cell(0), it.after) << it.before << " " << it.reply;
        EXPECT_EQ(Working(0), it.after) << it.before << " " << it.reply;
    }
}

TEST_F(PlanReadback, Current_channel_is_not_asked_for_a_sensor) {
    OpenWith(10, "channel 1 TEMP PT100 FRTD\nchannel 2 TCO K\n");
    Cell(0) = "DCI";
    Cell(1) = "ACI";
    ReadDevicePlan(0);
    EXPECT_EQ(wire->Sent(0).size(), 11U);
}

TEST_F(PlanReadback, Current_slave_is_not_cleared_by_its_master) {
    for (const auto read_back : both) {
        OpenWith(10, "channel 1 FRES\nchannel 6 VOLT\n");
        Attach(0, 0, 0, "GPIB0::1::INSTR");
        ChannelPlan(0, 5) = "DCI";
        read_back(0);
        EXPECT_EQ(ChannelPlan(0, 0), "4W");
        EXPECT_EQ(ChannelPlan(0, 5), "DCI");
    }
}

TEST_F(PlanReadback, Name_that_a_current_channel_fell_to_is_replaced_by_the_next_read_back) {
    OpenWith(10, "channel 1-2 RES\n");
    Cell(0) = "DCI";
    ReadDevicePlan(0);
    EXPECT_EQ(Cell(0), "2WI");
    ReadDevicePlan(0);
    EXPECT_EQ(Cell(0), "2W");
}

TEST_F(PlanReadback, Name_that_a_current_channel_fell_to_is_replaced_by_the_next_refresh) {
    OpenWith(10, "channel 1 RES\n");
    Cell(0) = "2WI";
    RefreshChannelFunctions(0);
    EXPECT_EQ(Cell(0), "2W");
}

// ------------------------------------------------------------------------------------------------------------- failing

TEST_F(PlanReadback, Lost_instrument_leaves_empty_cells_and_is_told_for_each_query) {
    OpenWith(10, "unplugged at call 1\n");
    for (int ch = 0; ch < 10; ++ch) Cell(ch) = "DCV";
    RefreshChannelFunctions(0);
    for (int ch = 0; ch < 10; ++ch) EXPECT_EQ(Cell(ch), "");
    EXPECT_EQ(user.Messages(), Texts(10, "Device is disconnected !"));
}

TEST_F(PlanReadback, Lost_instrument_leaves_a_current_channel_as_a_single_letter) {
    OpenWith(10, "unplugged at call 1\n");
    Cell(3) = "ACI";
    ReadDevicePlan(0);
    EXPECT_EQ(Cell(3), "I");
    EXPECT_EQ(Working(3), "I");
    EXPECT_EQ(ScanTimerText(0), "");
    EXPECT_EQ(user.Messages().size(), 11U);
}

TEST_F(PlanReadback, One_failed_query_costs_its_own_channel_only) {
    OpenWith(10, "channel 1-10 VOLT\ntime-out at call 4\n");
    RefreshChannelFunctions(0);
    EXPECT_EQ(Cell(0), "DCV");
    EXPECT_EQ(Cell(1), "");
    EXPECT_EQ(Cell(2), "DCV");
    EXPECT_EQ(user.Messages().size(), 1U);
}

TEST_F(PlanReadback, Failed_sensor_query_leaves_an_empty_type) {
    OpenWith(10, "channel 1 TCO J\nno-reply \"TCOuple:TYPE? @1\"\n");
    The<Set_Dev>().Temp_Set(0) = "old";
    ReadDevicePlan(0);
    EXPECT_EQ(Cell(0), "TCOUPL");
    EXPECT_EQ(Sensor(0), "");
}

}  // namespace
}  // namespace vantrel
