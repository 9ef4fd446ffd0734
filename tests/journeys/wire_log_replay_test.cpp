// What went over the wire in a run is logged, and the log is a bench on which the run goes the same way.
#include "support/environment.h"
#include "support/run_desk.h"
#include "support/texts.h"

#include <cstdlib>
#include <fstream>
#include <sstream>

namespace vantrel {
namespace {

class WireLogReplay : public RunDesk {
protected:
    WireLogReplay() { SetEnvironment("VANTREL_WIRE_LOG", log_); }

    /// Puts a bench on the wire that does what the log holds so far.
    void ReplayTheLog() {
        std::ostringstream log;
        log << std::ifstream(log_, std::ios::binary).rdbuf();
        wire.reset();
        wire.emplace(bench::ParseBench(log.str()));
    }

    /// The readings of each row, without number and time.
    Texts Readings(const std::string& record) const {
        Texts rows;
        for (const auto& row : RowsOf(Record(record))) {
            rows.emplace_back();
            for (std::size_t i = 2; i < row.size(); ++i) rows.back() += row[i] + ";";
        }
        return rows;
    }

private:
    std::string log_ = folder / "wire.log";
};

TEST_F(WireLogReplay, Stores_the_same_rows_of_all_instruments) {
    Open(Scanner(0) + Scanner(1, "channel 1-7 TCO K\nchannel 9 TEMP PT385 FRTD\n"));
    Connect({0, 1});
    Assign({"Record1", "Record2"});
    Pace(2);
    Count("3");
    Run();
    const Texts first = Readings("Record1");
    const Texts second = Readings("Record2");
    ASSERT_EQ(first.size(), 3U);
    ASSERT_EQ(second.size(), 3U);

    ReplayTheLog();
    Connect({0, 1});
    Assign({"Record3", "Record4"});
    Run();
    EXPECT_EQ(Readings("Record3"), first);
    EXPECT_EQ(Readings("Record4"), second);
}

TEST_F(WireLogReplay, Gives_a_long_reply_in_the_pieces_in_which_it_came) {
    Open(Scanner(0));
    Connect({0});
    Assign({"Record1"});
    Count("200");
    Run();
    const Texts rows = Readings("Record1");
    ASSERT_EQ(rows.size(), 10U);

    ReplayTheLog();
    Connect({0});
    Assign({"Record2"});
    Run();
    EXPECT_EQ(Readings("Record2"), rows);
}

TEST_F(WireLogReplay, Loses_an_instrument_where_it_was_lost) {
    Open(Scanner(0, "channel 1-20 VOLT\ncounts 7 20\nno-reply 5 \"rout:scan:state?\"\n"));
    Connect({0});
    Assign({"Record1"});
    Run();
    const Texts messages = user.Messages();
    const Texts rows = Readings("Record1");
    ASSERT_EQ(messages, (Texts{"Device is disconnected !", "End of Job."}));
    ASSERT_EQ(rows.size(), 2U);

    ReplayTheLog();
    Connect({0});
    Assign({"Record2"});
    Run();
    EXPECT_EQ(Texts(user.Messages().begin() + 2, user.Messages().end()), messages);
    EXPECT_EQ(Readings("Record2"), rows);
}

}  // namespace
}  // namespace vantrel
