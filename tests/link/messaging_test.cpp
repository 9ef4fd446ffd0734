// SCPI messages of a running program: the bytes, the wait, the buffer, and what a lost instrument does.
#include "link/messaging.h"

#include "platform/toolkit/events.h"
#include "state/shared.h"
#include "support/attached.h"
#include "support/desk.h"
#include "support/errors.h"
#include "windows/Form1.h"

#include <QApplication>
#include <QMessageBox>

namespace vantrel {
namespace {

const std::string kDisconnected = "Device is disconnected !";

/// Device 0 is discovery row 2, found fourth.
class Messaging : public Desk {
protected:
    void OpenWith(const std::string& entries) {
        Open("instrument GPIB0::1::INSTR\n  card 2\n" + entries);
        Attach(0, 2, 3, "GPIB0::1::INSTR");
        wire->ClearTranscript();
    }
    /// The buffer when a reply has just arrived.
    static std::string Padded(const std::string& reply) { return reply + std::string(1024 - reply.size(), ' '); }
};

// ------------------------------------------------------------------------------------------------------------- sending

TEST_F(Messaging, Command_goes_out_with_one_line_feed) {
    OpenWith("");
    SendScpi("rout:scan:state?", 0);
    EXPECT_EQ(wire->Sent(0), std::vector<std::string>{"rout:scan:state?\n"});
    EXPECT_EQ(wire->Calls().front(), "viWrite(2, \"rout:scan:state?\\n\")");
    EXPECT_EQ(wire->Sent(0).front().size(), 17U);
}

TEST_F(Messaging, Caller_gets_its_command_back_with_the_line_feed) {
    OpenWith("");
    std::string command = "rout:scan";
    SendScpi(command, 0);
    EXPECT_EQ(command, "rout:scan\n");
}

TEST_F(Messaging, Command_without_a_question_mark_reads_nothing_and_does_not_wait) {
    OpenWith("");
    ReplyBuffer = "old";
    SendScpi("rout:scan:count 5", 0);
    EXPECT_EQ(wire->Calls().size(), 1U);
    EXPECT_EQ(clock.Elapsed(), 0);
    EXPECT_EQ(ReplyBuffer.Text(), Padded("old"));
    EXPECT_EQ(RetCount, 18U);
}

TEST_F(Messaging, Question_mark_anywhere_makes_a_query) {
    OpenWith("channel 7 VOLT\n");
    SendScpi("rout:scan:func? 7", 0);
    EXPECT_EQ(ReplyBuffer.Text(), Padded("\"VOLT\"\n"));
    EXPECT_EQ(wire->Calls().back(), "viRead(2, 1024)");
}

TEST_F(Messaging, Device_leads_to_its_session_by_row_and_place) {
    Open("instrument GPIB0::1::INSTR\ninstrument GPIB0::2::INSTR\n");
    Attach(0, 7, 20, "GPIB0::2::INSTR");
    Attach(4, 10, 0, "GPIB0::1::INSTR");
    SendScpi("for-device-0", 0);
    SendScpi("for-device-4", 4);
    EXPECT_EQ(wire->Sent(), (std::vector<std::pair<int, std::string>>{{1, "for-device-0\n"}, {0, "for-device-4\n"}}));
}

TEST_F(Messaging, Subscript_out_of_bounds_is_an_error_at_each_of_the_three_steps) {
    OpenWith("");
    EXPECT_EQ(ErrorOf([] { SendScpi("rout:scan", 5); }), 9);
    SlotOf(0) = 11;
    EXPECT_EQ(ErrorOf([] { SendScpi("rout:scan", 0); }), 9);
    EXPECT_EQ(ErrorOf([] { ReadScpi(0); }), 9);
    SlotOf(0) = 2;
    FoundSession(2) = 21;
    EXPECT_EQ(ErrorOf([] { SendScpi("rout:scan", 0); }), 9);
    EXPECT_EQ(wire->Calls(), std::vector<std::string>{});
}

TEST_F(Messaging, Length_of_a_command_is_of_16_bits) {
    OpenWith("");
    EXPECT_EQ(ErrorOf([] { SendScpi(std::string(32767, 'x'), 0); }), 6);
    EXPECT_EQ(wire->Calls(), std::vector<std::string>{});
    EXPECT_EQ(ErrorOf([] { SendScpi(std::string(32766, 'x'), 0); }), 0);
}

TEST_F(Messaging, Length_is_taken_before_the_session_is_looked_up) {
    OpenWith("");
    EXPECT_EQ(ErrorOf([] { SendScpi(std::string(32767, 'x'), 5); }), 6);
    std::string command = "rout:scan";
    EXPECT_EQ(ErrorOf([&] { SendScpi(command, 5); }), 9);
    EXPECT_EQ(command, "rout:scan\n");
}

// ------------------------------------------------------------------------------------------------------------- reading

TEST_F(Messaging, Reply_keeps_its_line_feed_and_has_blanks_behind_it) {
    OpenWith("reply \"rout:scan:state?\" \"20\\n\"\n");
    SendScpi("rout:scan:state?", 0);
    EXPECT_EQ(ReplyBuffer.Text(), "20\n" + std::string(1021, ' '));
    EXPECT_EQ(RetCount, 3U);
    EXPECT_EQ(VisaStatus, 0);
}

TEST_F(Messaging, Nothing_of_a_longer_reply_is_left_behind_a_shorter_one) {
    OpenWith("reply 1 \"rout:scan:state?\" \"1234567890\\n\"\nreply 2 \"rout:scan:state?\" \"5\"\n");
    SendScpi("rout:scan:state?", 0);
    SendScpi("rout:scan:state?", 0);
    EXPECT_EQ(ReplyBuffer.Text(), Padded("5"));
}

TEST_F(Messaging, Empty_reply_is_a_buffer_of_blanks_and_good) {
    OpenWith("reply \"rout:scan:state?\" \"\"\n");
    SendScpi("rout:scan:state?", 0);
    EXPECT_EQ(ReplyBuffer.Text(), Padded(""));
    EXPECT_TRUE(user.Messages().empty());
}

TEST_F(Messaging, Query_waits_50_ms_between_write_and_read) {
    OpenWith("");
    std::vector<std::int64_t> moments;
    wire->bench.SetObserver([&](const bench::Exchange&) { moments.push_back(clock.Elapsed()); });
    SendScpi("rout:scan:state?", 0);
    EXPECT_EQ(moments, (std::vector<std::int64_t>{0, 50}));
    EXPECT_EQ(clock.Elapsed(), 50);
}

TEST_F(Messaging, Wait_of_a_query_lets_nothing_run) {
    OpenWith("");
    bool ran = false;
    clock.At(10, [&] { ran = true; });
    SendScpi("rout:scan:state?", 0);
    EXPECT_FALSE(ran);
    DoEvents();
    EXPECT_TRUE(ran);
}

TEST_F(Messaging, Buffer_is_cleared_between_the_write_and_the_wait) {
    struct LookingClock : Clock {
        DateTime Now() override { return {}; }
        void Sleep(int) override { at_wait = ReplyBuffer; }
        std::string at_wait = "none";
    } looking;
    OpenWith("");
    ReplyBuffer = "old";
    std::string at_write = "none";
    wire->bench.SetObserver([&](const bench::Exchange& exchange) {
        if (exchange.direction == bench::Exchange::kToInstrument) at_write = ReplyBuffer;
    });
    UseClock(&looking);
    SendScpi("rout:scan:state?", 0);
    UseClock(&clock);
    EXPECT_EQ(at_write, Padded("old"));
    EXPECT_EQ(looking.at_wait, Padded(""));
}

TEST_F(Messaging, Session_is_looked_up_again_for_the_read) {
    Open("instrument GPIB0::1::INSTR\ninstrument GPIB0::2::INSTR\n");
    Attach(0, 0, 0, "GPIB0::1::INSTR");
    Attach(1, 1, 1, "GPIB0::2::INSTR");
    wire->ClearTranscript();
    wire->bench.SetObserver([](const bench::Exchange&) { SlotOf(0) = 1; });
    SendScpi("rout:state?", 0);
    EXPECT_EQ(wire->Calls(), (std::vector<std::string>{"viWrite(2, \"rout:state?\\n\")", "viRead(3, 1024)"}));
}

// -------------------------------------------------------------------------------------------------------- long replies

TEST_F(Messaging, Reply_of_1024_bytes_is_good_and_leaves_more_to_read) {
    OpenWith("reply \"fetch?\" \"" + std::string(1024, '7') + "\"\n");
    SendScpi("fetch?", 0);
    EXPECT_EQ(VisaStatus, 0x3FFF0006);
    EXPECT_EQ(ReplyBuffer.Text(), std::string(1024, '7'));
    EXPECT_EQ(StopRequested, 0);
    EXPECT_TRUE(user.Messages().empty());
}

TEST_F(Messaging, Long_reply_is_read_on_from_where_it_stopped_without_a_wait) {
    OpenWith("reply \"fetch?\" \"" + std::string(1024, '7') + "tail\\n\"\n");
    SendScpi("fetch?", 0);
    ReadScpi(0);
    EXPECT_EQ(ReplyBuffer.Text(), Padded("tail\n"));
    EXPECT_EQ(VisaStatus, 0);
    EXPECT_EQ(clock.Elapsed(), 50);
    EXPECT_EQ(wire->Sent(0).size(), 1U);
}

TEST_F(Messaging, Reading_on_reads_over_a_cleared_buffer_and_lets_nothing_run) {
    OpenWith("reply \"fetch?\" \"" + std::string(1024, '7') + "tail\\n\"\n");
    SendScpi("fetch?", 0);
    bool ran = false;
    clock.At(0, [&] { ran = true; });
    std::string at_read = "none";
    wire->bench.SetObserver([&](const bench::Exchange&) { at_read = ReplyBuffer; });
    ReadScpi(0);
    EXPECT_EQ(at_read, Padded(""));
    EXPECT_EQ(RetCount, 5U);
    EXPECT_FALSE(ran);
    DoEvents();
    EXPECT_TRUE(ran);
}

TEST_F(Messaging, Reading_on_fails_like_a_query) {
    OpenWith("");
    ReplyBuffer = "old";
    user.WhenMessage(kDisconnected, [] { EXPECT_EQ(StopRequested, -1); });
    ReadScpi(0);
    EXPECT_EQ(user.Messages(), std::vector<std::string>{kDisconnected});
    EXPECT_EQ(ReplyBuffer.Text(), Padded(""));
    EXPECT_EQ(VisaStatus, bench::kErrorTimeOut);
}

// ------------------------------------------------------------------------------------------------------------- failing

TEST_F(Messaging, Failed_query_stops_then_tells_then_goes_on_with_a_blank_buffer) {
    OpenWith("silent\n");
    The<Form1>().Command5.SetEnabled(false);
    The<Form1>().Command3.SetEnabled(false);
    ReplyBuffer = "old";
    bool returned = false;
    user.WhenMessage(kDisconnected, [&] {
        EXPECT_FALSE(returned);
        EXPECT_EQ(StopRequested, -1);
        EXPECT_TRUE(user.Enabled("Form1", "Command5"));
        EXPECT_TRUE(user.Enabled("Form1", "Command3"));
        EXPECT_EQ(VisaStatus, bench::kErrorTimeOut);
    });
    SendScpi("fetch?", 0);
    returned = true;
    EXPECT_EQ(user.Messages(), std::vector<std::string>{kDisconnected});
    EXPECT_EQ(ReplyBuffer.Text(), Padded(""));
    EXPECT_EQ(VisaStatus, bench::kErrorTimeOut);
    EXPECT_EQ(RetCount, 0U);
}

TEST_F(Messaging, Silent_instrument_costs_the_wait_and_the_time_out) {
    OpenWith("silent\n");
    SendScpi("fetch?", 0);
    EXPECT_EQ(clock.Elapsed(), 5050);
}

TEST_F(Messaging, Reply_ended_by_a_termination_character_counts_as_a_lost_instrument) {
    OpenWith("status 3FFF0005 at call 2\n");
    SendScpi("rout:scan:state?", 0);
    EXPECT_EQ(VisaStatus, 0x3FFF0005);
    EXPECT_EQ(StopRequested, -1);
    EXPECT_EQ(user.Messages(), std::vector<std::string>{kDisconnected});
}

TEST_F(Messaging, Failed_write_shows_at_the_next_query_only) {
    OpenWith("unplugged at call 1\n");
    SendScpi("rout:scan", 0);
    EXPECT_EQ(VisaStatus, bench::kErrorConnectionLost);
    EXPECT_TRUE(user.Messages().empty());
    EXPECT_EQ(StopRequested, 0);
    EXPECT_EQ(clock.Elapsed(), 0);
    SendScpi("rout:scan:state?", 0);
    EXPECT_EQ(user.Messages(), std::vector<std::string>{kDisconnected});
}

TEST_F(Messaging, Write_that_fails_in_a_query_is_told_once_by_its_read) {
    OpenWith("unplugged at call 1\n");
    SendScpi("rout:scan:state?", 0);
    EXPECT_EQ(user.Messages().size(), 1U);
    EXPECT_EQ(wire->Calls().size(), 2U);
}

TEST_F(Messaging, Failed_write_before_a_good_read_is_not_told) {
    OpenWith("status BFFF003E at call 1\n");
    SendScpi("rout:scan:state?", 0);
    EXPECT_EQ(wire->Calls().size(), 2U);
    EXPECT_EQ(VisaStatus, 0);
    EXPECT_EQ(StopRequested, 0);
    EXPECT_TRUE(user.Messages().empty());
}

TEST_F(Messaging, Session_that_failed_stays_open) {
    OpenWith("silent\n");
    const auto open = wire->bench.OpenSessions();
    SendScpi("fetch?", 0);
    EXPECT_EQ(wire->bench.OpenSessions(), open);
}

TEST_F(Messaging, Box_of_a_lost_instrument_has_the_program_s_name_and_one_OK_button) {
    OpenWith("silent\n");
    bool looked = false;
    user.WhenMessage(kDisconnected, [&] {
        const auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
        ASSERT_NE(box, nullptr);
        EXPECT_EQ(box->text().toStdString(), kDisconnected);
        EXPECT_EQ(box->windowTitle(), "VANTREL");
        EXPECT_EQ(box->standardButtons(), QMessageBox::Ok);
        looked = true;
    });
    SendScpi("fetch?", 0);
    EXPECT_TRUE(looked);
}

TEST_F(Messaging, Two_devices_share_the_one_buffer) {
    Open(
        "instrument GPIB0::1::INSTR\nreply \"a?\" \"from 1, a long one\\n\"\ninstrument GPIB0::2::INSTR\n"
        "reply \"a?\" \"2\\n\"\n");
    Attach(0, 0, 0, "GPIB0::1::INSTR");
    Attach(1, 1, 1, "GPIB0::2::INSTR");
    SendScpi("a?", 0);
    SendScpi("a?", 1);
    EXPECT_EQ(ReplyBuffer.Text(), Padded("2\n"));
}

TEST_F(Messaging, Each_failing_query_tells_it_again_and_tries_nothing_else) {
    OpenWith("silent\n");
    for (int i = 0; i < 3; ++i) SendScpi("rout:scan:state?", 0);
    EXPECT_EQ(user.Messages(), std::vector<std::string>(3, kDisconnected));
    const std::string write = "viWrite(2, \"rout:scan:state?\\n\")";
    const std::string read = "viRead(2, 1024)";
    EXPECT_EQ(wire->Calls(), (std::vector<std::string>{write, read, write, read, write, read}));
}

TEST_F(Messaging, Good_query_makes_a_bad_status_good) {
    OpenWith("");
    VisaStatus = bench::kErrorTimeOut;
    SendScpi("rout:scan:state?", 0);
    EXPECT_EQ(VisaStatus, 0);
    EXPECT_EQ(StopRequested, 0);
}

TEST_F(Messaging, Bad_status_of_an_earlier_call_does_not_fail_a_later_command) {
    OpenWith("");
    VisaStatus = bench::kErrorTimeOut;
    SendScpi("rout:scan", 0);
    EXPECT_EQ(VisaStatus, 0);
    EXPECT_TRUE(user.Messages().empty());
}

}  // namespace
}  // namespace vantrel
