#include "support/bench_on_the_wire.h"

#include "platform/clock.h"
#include "platform/visa.h"

#include <gtest/gtest.h>

using namespace vantrel;

namespace {

/// Stands still but for sleeping.
class StandingClock : public Clock {
public:
    StandingClock() { UseClock(this); }
    ~StandingClock() override { UseClock(nullptr); }
    DateTime Now() override { return {ms}; }
    void Sleep(int milliseconds) override { ms += milliseconds; }
    std::int64_t ms = 1700000000000;
};

constexpr const char* kTwo =
    "instrument GPIB0::1::INSTR\ncard 1\nchannel 1-10 VOLT\ninstrument GPIB0::2::INSTR\ncard 2\n";

/// Sessions with all instruments, by the program's calls.
std::vector<ViSession> OpenAll() {
    std::vector<ViSession> sessions;
    ViSession manager = 0;
    ViSession list = 0;
    std::uint32_t count = 0;
    std::string descriptor;
    viOpenDefaultRM(&manager);
    viFindRsrc(manager, "(USB|GPIB)?*INSTR", &list, &count, &descriptor);
    for (; count > 0; --count) {
        sessions.emplace_back();
        viOpen(manager, descriptor, 0, 0, &sessions.back());
        viFindNext(list, &descriptor);
    }
    return sessions;
}

std::string Ask(ViSession session, const std::string& query) {
    std::uint32_t bytes = 0;
    std::string reply;
    viWrite(session, query, static_cast<std::uint32_t>(query.size()), &bytes);
    viRead(session, &reply, 1024, &bytes);
    return reply;
}

TEST(BenchOnTheWire, Gets_the_calls_of_the_program) {
    BenchOnTheWire wire(bench::ParseBench(kTwo));
    const auto sessions = OpenAll();
    ASSERT_EQ(sessions.size(), 2U);
    EXPECT_EQ(Ask(sessions[0], "rout:state?\n"), "1\n");
    EXPECT_EQ(Ask(sessions[1], "rout:state?\n"), "2\n");
}

TEST(BenchOnTheWire, Tells_the_exact_bytes_that_went_to_each_instrument) {
    BenchOnTheWire wire(bench::ParseBench(kTwo));
    const auto sessions = OpenAll();
    Ask(sessions[1], "*IDN?");
    Ask(sessions[0], "rout:state?\n");
    Ask(sessions[1], "rout:state?\n");
    EXPECT_EQ(wire.Sent(1), (std::vector<std::string>{"*IDN?", "rout:state?\n"}));
    EXPECT_EQ(wire.Sent(),
              (std::vector<std::pair<int, std::string>>{{1, "*IDN?"}, {0, "rout:state?\n"}, {1, "rout:state?\n"}}));
}

TEST(BenchOnTheWire, Forgets_on_demand) {
    BenchOnTheWire wire(bench::ParseBench(kTwo));
    Ask(OpenAll()[0], "*IDN?");
    wire.ClearTranscript();
    EXPECT_TRUE(wire.Sent().empty());
    EXPECT_TRUE(wire.Calls().empty());
}

TEST(BenchOnTheWire, Tells_the_calls_in_order) {
    BenchOnTheWire wire(bench::ParseBench("instrument GPIB0::1::INSTR\n"));
    viClose(0);
    ViSession manager = 0;
    viOpenDefaultRM(&manager);
    viClose(manager);
    EXPECT_EQ(wire.Calls(), (std::vector<std::string>{"viClose(0)", "viOpenDefaultRM()", "viClose(1)"}));
}

TEST(BenchOnTheWire, Scans_in_the_time_of_the_programs_clock) {
    StandingClock clock;
    BenchOnTheWire wire(bench::ParseBench(kTwo));
    const ViSession session = OpenAll()[0];
    std::uint32_t bytes = 0;
    viWrite(session, "rout:SCAN\n", 10, &bytes);
    Sleep(60);
    EXPECT_EQ(Ask(session, "rout:scan:state?\n"), "4\n");
    Sleep(1000);
    EXPECT_EQ(Ask(session, "rout:scan:state?\n"), "10\n");
}

TEST(BenchOnTheWire, Vain_read_sleeps_on_the_programs_clock) {
    StandingClock clock;
    BenchOnTheWire wire(bench::ParseBench("instrument GPIB0::1::INSTR\nsilent\n"));
    const ViSession session = OpenAll()[0];
    viSetAttribute(session, kViAttrTmoValue, 5000);
    const auto before = clock.ms;
    EXPECT_EQ(Ask(session, "*IDN?"), "");
    EXPECT_EQ(clock.ms - before, 5000);
}

TEST(BenchOnTheWire, Leaves_a_machine_without_visa) {
    { BenchOnTheWire wire; }
    EXPECT_LT(viClose(0), 0);
    ViSession manager = 5;
    EXPECT_LT(viOpenDefaultRM(&manager), 0);
    EXPECT_EQ(manager, 0U);
}

}  // namespace
