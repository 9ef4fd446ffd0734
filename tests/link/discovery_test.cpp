// The search: every call, who qualifies, and where the tables end.
#include "platform/toolkit/events.h"
#include "state/shared.h"
#include "support/desk.h"
#include "support/errors.h"
#include "support/texts.h"
#include "windows/Connect.h"
#include "windows/Form1.h"

#include <QCursor>
#include <QGuiApplication>

namespace vantrel {
namespace {

class Discovery : public Desk {
protected:
    /// Runs the search on this bench, as the dialog's load step does.
    void Search(const std::string& bench_file) {
        Open(bench_file);
        The<vantrel::Connect>();
    }
    /// An instrument entry; a `card` below 0 answers nothing.
    static std::string Instrument(int number, int card, const std::string& entries = "") {
        const std::string n = std::to_string(number);
        return "instrument GPIB0::" + n + "::INSTR\n  identity \"Orlane,M" + n + ",SN" + n +
               ",1.0\"\n  serial \"Serial " + n + "\"\n" +
               (card < 0 ? "silent\n" : "card " + std::to_string(card) + "\n") + entries;
    }
    static std::string Instruments(int count, int card) {
        std::string text;
        for (int i = 1; i <= count; ++i) text += Instrument(i, card);
        return text;
    }
    int Rows() { return The<vantrel::Connect>().MSFlexGrid1.Rows(); }
    std::string Model(int row) { return The<vantrel::Connect>().DeviceModel(row); }
};

const Texts kSixClosesOfZero(6, "viClose(0)");

Texts operator+(Texts left, const Texts& right) {
    left.insert(left.end(), right.begin(), right.end());
    return left;
}

// --------------------------------------------------------------------------------------------------------------- calls

TEST_F(Discovery, First_search_call_by_call) {
    Search(Instrument(7, 2) + Instrument(8, 0) + Instrument(9, 1));
    const Texts search = {
        "viOpenDefaultRM()",
        "viFindRsrc(1, \"(USB|GPIB)?*INSTR\")",
        "viOpen(1, \"GPIB0::7::INSTR\", 0, 0)",
        "viSetAttribute(3, 0x3FFF001A, 5000)",
        "viWrite(3, \"rout:state?\\n\")",
        "viRead(3, 1024)",
        "viWrite(3, \"cal:sec:serial?\\n\")",
        "viRead(3, 1024)",
        "viWrite(3, \"*IDN?\")",
        "viRead(3, 1024)",
        "viFindNext(2)",
        "viOpen(1, \"GPIB0::8::INSTR\", 0, 0)",
        "viSetAttribute(4, 0x3FFF001A, 5000)",
        "viWrite(4, \"rout:state?\\n\")",
        "viRead(4, 1024)",
        "viFindNext(2)",
        "viOpen(1, \"GPIB0::9::INSTR\", 0, 0)",
        "viSetAttribute(5, 0x3FFF001A, 5000)",
        "viWrite(5, \"rout:state?\\n\")",
        "viRead(5, 1024)",
        "viWrite(5, \"cal:sec:serial?\\n\")",
        "viRead(5, 1024)",
        "viWrite(5, \"*IDN?\")",
        "viRead(5, 1024)",
        "viFindNext(2)",
    };
    EXPECT_EQ(wire->Calls(), kSixClosesOfZero + search);
}

TEST_F(Discovery, Messages_have_12_16_and_5_bytes) {
    Search(Instrument(1, 2));
    const Texts sent = wire->Sent(0);
    ASSERT_EQ(sent.size(), 3U);
    EXPECT_EQ(sent[0].size(), 12U);
    EXPECT_EQ(sent[1].size(), 16U);
    EXPECT_EQ(sent[2].size(), 5U);
}

TEST_F(Discovery, Shows_the_wait_cursor_from_its_first_exchange_to_its_last) {
    Open(Instrument(7, 2) + Instrument(8, 0) + Instrument(9, -1));
    int exchanges = 0;
    int without_it = 0;
    wire->bench.SetObserver([&](const bench::Exchange&) {
        const QCursor* cursor = QGuiApplication::overrideCursor();
        ++exchanges;
        without_it += cursor == nullptr || cursor->shape() != Qt::WaitCursor;
    });
    The<vantrel::Connect>();
    EXPECT_GT(exchanges, 0);
    EXPECT_EQ(without_it, 0);
    EXPECT_EQ(QGuiApplication::overrideCursor(), nullptr);
}

TEST_F(Discovery, Nothing_is_waited_for_between_write_and_read) {
    Search(Instruments(4, 2));
    EXPECT_EQ(clock.Elapsed(), 0);
}

TEST_F(Discovery, Second_search_closes_list_manager_and_the_first_four_sessions) {
    Search(Instruments(5, 0));
    wire->ClearTranscript();
    The<vantrel::Connect>().Command1_Click();
    Texts calls = wire->Calls();
    calls.resize(8);
    EXPECT_EQ(calls, (Texts{"viClose(2)", "viClose(1)", "viClose(3)", "viClose(4)", "viClose(5)", "viClose(6)",
                            "viOpenDefaultRM()", "viFindRsrc(8, \"(USB|GPIB)?*INSTR\")"}));
}

TEST_F(Discovery, Sessions_beyond_the_fourth_stay_open) {
    Search(Instruments(5, 0));
    The<vantrel::Connect>().Command1_Click();
    EXPECT_EQ(wire->bench.OpenSessions(), (std::vector<bench::Handle>{7, 10, 11, 12, 13, 14}));
}

TEST_F(Discovery, Sessions_of_left_out_instruments_stay_open) {
    Search(Instrument(1, 0) + Instrument(2, 2));
    EXPECT_EQ(wire->bench.OpenSessions().size(), 2U);
}

TEST_F(Discovery, Status_of_the_last_next_resource_stays) {
    Search(Instruments(2, 2));
    EXPECT_EQ(wire->Calls().back(), "viFindNext(2)");
    EXPECT_EQ(VisaStatus, bench::kErrorRsrcNotFound);
}

TEST_F(Discovery, Resources_that_are_neither_USB_nor_GPIB_instruments_are_not_opened) {
    Search("instrument TCPIP0::10.0.0.1::INSTR\n  card 2\n" + Instrument(1, 2));
    EXPECT_EQ(FindCount, 1U);
    EXPECT_EQ(wire->Sent(0), Texts{});
}

// -------------------------------------------------------------------------------------------------- searches that fail

TEST_F(Discovery, Nothing_found_closes_the_manager_and_tells_nobody) {
    Search("");
    EXPECT_EQ(wire->Calls(),
              kSixClosesOfZero + (Texts{"viOpenDefaultRM()", "viFindRsrc(1, \"(USB|GPIB)?*INSTR\")", "viClose(1)"}));
    EXPECT_EQ(DeviceCount, 0);
    EXPECT_EQ(FindCount, 0U);
    EXPECT_EQ(Rows(), 1);
    EXPECT_TRUE(user.Messages().empty());
}

Texts calls_of_the_stub;

/// A library whose manager opens with `status`, and whose search ends with `search_status` and no resource at all.
template <std::uint32_t status, std::uint32_t search_status = 0>
VisaEntryPoints Stub() {
    using Word = VisaEntryPoints::Word;
    VisaEntryPoints table;
    table.viClose = [](Word object) {
        calls_of_the_stub.push_back("viClose(" + std::to_string(object) + ")");
        return Word{0};
    };
    table.viOpenDefaultRM = [](Word* session) {
        calls_of_the_stub.emplace_back("viOpenDefaultRM()");
        *session = 1;
        return Word{status};
    };
    table.viFindRsrc = [](Word, const char*, Word* list, Word* count, char*) {
        calls_of_the_stub.emplace_back("viFindRsrc()");
        *list = 2;
        *count = 0;
        return Word{search_status};
    };
    return table;
}

TEST_F(Discovery, Manager_that_does_not_open_ends_the_search) {
    UseVisa(Stub<0xBFFF0000>());
    The<vantrel::Connect>();
    EXPECT_EQ(calls_of_the_stub, kSixClosesOfZero + Texts{"viOpenDefaultRM()"});
    EXPECT_EQ(DeviceCount, 0);
}

TEST_F(Discovery, Search_that_succeeds_with_no_resource_ends_there) {
    UseVisa(Stub<0>());
    The<vantrel::Connect>();
    EXPECT_EQ(calls_of_the_stub, kSixClosesOfZero + (Texts{"viOpenDefaultRM()", "viFindRsrc()"}));
    EXPECT_EQ(Rows(), 1);
}

TEST_F(Discovery, Warning_of_the_manager_does_not_end_the_search) {
    UseVisa(Stub<0x3FFF0085>());
    The<vantrel::Connect>();
    EXPECT_EQ(calls_of_the_stub.back(), "viFindRsrc()");
}

TEST_F(Discovery, Warning_of_the_search_does_not_close_the_manager) {
    UseVisa(Stub<0, 0x3FFF0085>());
    The<vantrel::Connect>();
    EXPECT_EQ(calls_of_the_stub.back(), "viFindRsrc()");
}

TEST_F(Discovery, Machine_without_a_VISA_library_has_an_empty_list) {
    UseVisa({});
    The<vantrel::Connect>();
    EXPECT_EQ(Rows(), 1);
    EXPECT_EQ(DeviceCount, 0);
    EXPECT_LT(VisaStatus, 0);
    EXPECT_TRUE(user.Messages().empty());
}

TEST_F(Discovery, Resource_that_does_not_open_is_left_out) {
    Search(Instrument(1, 2, "refuses-to-open\n") + Instrument(2, 2));
    EXPECT_EQ(FindCount, 2U);
    EXPECT_EQ(DeviceCount, 1);
    EXPECT_EQ(DeviceSerial(0), "Serial 2");
    EXPECT_EQ(FoundSession(0), 1);
}

TEST_F(Discovery, Silent_instrument_costs_one_time_out_and_is_left_out) {
    Search(Instrument(1, -1) + Instrument(2, 2));
    EXPECT_EQ(clock.Elapsed(), 5000);
    EXPECT_EQ(wire->Sent(0), Texts{"rout:state?\n"});
    EXPECT_EQ(DeviceCount, 1);
    EXPECT_TRUE(user.Messages().empty());
}

TEST_F(Discovery, Search_lets_nothing_run) {
    bool ran = false;
    clock.At(1000, [&] { ran = true; });
    Search(Instrument(1, -1));
    EXPECT_FALSE(ran);
    DoEvents();
    EXPECT_TRUE(ran);
}

TEST_F(Discovery, Load_step_yields_once_before_the_search) {
    Open(Instrument(1, 2));
    std::size_t calls = 99;
    clock.At(0, [&] { calls = wire->Calls().size(); });
    The<vantrel::Connect>();
    EXPECT_EQ(calls, 0U);
}

// ------------------------------------------------------------------------------------------------------- who qualifies

TEST_F(Discovery, Reply_about_the_card_tells_the_channels) {
    struct Case {
        const char* reply;
        int channels;  // 0: left out
    };
    const std::vector<Case> cases = {
        {"1\\n", 10},       {"2\\n", 20}, {"3\\n", 10},     {"1", 10},           {"+2.0E+00\\n", 20}, {" 3 \\n", 10},
        {"2 banks\\n", 20}, {"0\\n", 0},  {"4\\n", 0},      {"-1\\n", 0},        {"1.5\\n", 0},       {"20\\n", 0},
        {"\\n", 0},         {"", 0},      {"card 2\\n", 0}, {"\\\"2\\\"\\n", 0},
    };
    for (const Case& it : cases) {
        Unload<vantrel::Connect>();
        ChannelCount(0) = 0;
        Search(Instrument(1, 2, "reply \"rout:state?\" \"" + std::string(it.reply) + "\"\n"));
        EXPECT_EQ(DeviceCount, it.channels == 0 ? 0 : 1) << it.reply;
        EXPECT_EQ(ChannelCount(0), it.channels) << it.reply;
    }
}

TEST_F(Discovery, Rows_skip_instruments_without_a_card) {
    Search(Instrument(1, 0) + Instrument(2, 1) + Instrument(3, -1) + Instrument(4, 2));
    EXPECT_EQ(DeviceCount, 2);
    EXPECT_EQ(FoundSession(0), 1);
    EXPECT_EQ(FoundSession(1), 3);
    EXPECT_EQ(ChannelCount(0), 10);
    EXPECT_EQ(ChannelCount(1), 20);
    EXPECT_EQ(FindCount, 4U);
}

TEST_F(Discovery, Reply_lands_over_what_stood_in_the_buffer) {
    Search(Instrument(1, 2) + Instrument(2, 0));
    EXPECT_EQ(ReplyBuffer.Text().substr(0, 20), "0\nlane,M1,SN1,1.0\n  ");
    EXPECT_EQ(ReplyBuffer.Text().size(), 1024U);
}

TEST_F(Discovery, Read_without_a_byte_is_no_card_whatever_stands_in_the_buffer) {
    Search(Instrument(1, 2, "reply \"*IDN?\" \"2,M1,x\\n\"\n") + Instrument(2, -1));
    EXPECT_EQ(ReplyBuffer.Text().substr(0, 7), "2,M1,x\n");
    EXPECT_EQ(RetCount, 0U);
    EXPECT_EQ(DeviceCount, 1);
}

TEST_F(Discovery, Serial_is_the_whole_reply_without_any_line_feed) {
    Search(Instrument(1, 2, "reply \"cal:sec:serial?\" \" A\\nB\\r \\n\"\n"));
    EXPECT_EQ(DeviceSerial(0), " AB\r ");
}

TEST_F(Discovery, Serial_that_does_not_come_is_empty) {
    Search(Instrument(1, 2, "no-reply \"cal:sec:serial?\"\n"));
    EXPECT_EQ(DeviceCount, 1);
    EXPECT_EQ(DeviceSerial(0), "");
}

TEST_F(Discovery, Model_is_the_second_field_as_it_stands) {
    const std::vector<std::pair<std::string, std::string>> cases = {
        {"Orlane,SB-20,SN1,1.04\\n", "SB-20"},
        {"Orlane, SB 20 ,SN1\\n", " SB 20 "},
        {"a,,b", ""},
        {",M1,", "M1"},
        {"a,M\\n1,b", "M\n1"},
    };
    for (const auto& [identity, model] : cases) {
        Unload<vantrel::Connect>();
        Search(Instrument(1, 2, "reply \"*IDN?\" \"" + identity + "\"\n"));
        EXPECT_EQ(Model(0), model) << identity;
    }
}

TEST_F(Discovery, Identity_with_one_comma_is_an_error) {
    Open(Instrument(1, 2, "reply \"*IDN?\" \"Orlane,SB-20\\n\"\n"));
    EXPECT_EQ(ErrorOf([] { The<vantrel::Connect>(); }), 5);
}

TEST_F(Discovery, Identity_without_a_comma_is_an_error) {
    Open(Instrument(1, 2, "reply \"*IDN?\" \"Orlane SB-20\\n\"\n"));
    EXPECT_EQ(ErrorOf([] { The<vantrel::Connect>(); }), 5);
}

TEST_F(Discovery, Identity_of_one_character_is_an_error_and_not_a_missing_one) {
    Open(Instrument(1, 2, "reply \"*IDN?\" \"x\"\n"));
    EXPECT_EQ(ErrorOf([] { The<vantrel::Connect>(); }), 5);
}

TEST_F(Discovery, Instrument_without_an_identity_is_overwritten_by_the_next) {
    for (const std::string missing : {"reply \"*IDN?\" \"\"\n", "no-reply \"*IDN?\"\n"}) {
        Unload<vantrel::Connect>();
        Search(Instrument(1, 2, missing) + Instrument(2, 1));
        EXPECT_EQ(DeviceCount, 1);
        EXPECT_EQ(DeviceSerial(0), "Serial 2");
        EXPECT_EQ(Model(0), "M2");
        EXPECT_EQ(ChannelCount(0), 10);
        EXPECT_EQ(FoundSession(0), 1);
    }
}

TEST_F(Discovery, Last_instrument_without_an_identity_leaves_its_entries_behind) {
    Search(Instrument(1, 2, "no-reply \"*IDN?\"\n"));
    EXPECT_EQ(DeviceCount, 0);
    EXPECT_EQ(DeviceSerial(0), "Serial 1");
    EXPECT_EQ(Rows(), 1);
}

// -------------------------------------------------------------------------------------------------------------- limits

TEST_F(Discovery, Fifth_instrument_has_a_session_and_no_row) {
    Search(Instruments(5, 2));
    EXPECT_EQ(DeviceCount, 4);
    EXPECT_EQ(Rows(), 5);
    EXPECT_EQ(FoundSession(4), 4);
    EXPECT_EQ(wire->bench.OpenSessions().size(), 5U);
}

TEST_F(Discovery, Sixth_instrument_with_a_card_is_an_error) {
    Open(Instruments(6, 2));
    EXPECT_EQ(ErrorOf([] { The<vantrel::Connect>(); }), 9);
    EXPECT_EQ(wire->Sent(5), Texts{"rout:state?\n"});
}

TEST_F(Discovery, Sixth_instrument_with_a_card_ends_the_program) {
    Open(Instruments(6, 2));
    EXPECT_EXIT(
        {
            user.WhenMessage("Run-time error '9'", [] { fputs("told", stderr); });
            user.Menu("Connected_to_Instrument");
        },
        testing::ExitedWithCode(1), "told");
}

TEST_F(Discovery, Twenty_one_resources_are_opened) {
    Search(Instruments(21, 0));
    EXPECT_EQ(wire->bench.OpenSessions().size(), 21U);
}

TEST_F(Discovery, Twenty_second_resource_is_an_error) {
    Open(Instruments(22, 0));
    EXPECT_EQ(ErrorOf([] { The<vantrel::Connect>(); }), 9);
    EXPECT_EQ(wire->Calls().back(), "viFindNext(2)");
    EXPECT_EQ(wire->bench.OpenSessions().size(), 21U);
}

}  // namespace
}  // namespace vantrel
