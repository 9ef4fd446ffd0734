// Each call of VISA goes wrong in each way: in connecting, in reading a plan back, in SET, and in each shape of run.
//
// Every case is played in a process of its own and is judged by what it leaves behind: how it ended, which messages
// came up, what the records hold. A case of each kind is drawn at random, or VANTREL_ROUNDS cases if there are so many.
#include "bench/readings.h"
#include "bench/text.h"
#include "platform/qt/application.h"
#include "support/rounds.h"
#include "support/run_desk.h"

#include <QApplication>
#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <map>
#include <random>
#include <sstream>
#include <sys/wait.h>
#include <unistd.h>

namespace vantrel {
namespace {

namespace fs = std::filesystem;

enum class Shape { kConnection, kReadBack, kSet, kRun, kPacedRun, kCountedRun, kPacedCountedRun };

bool IsRun(Shape shape) { return shape >= Shape::kRun; }

/// The plans of both instruments: all kinds of read-back, a slave that is taken, currents left out.
const std::vector<std::string> kPlans = {
    "channel 1 VOLT\nchannel 2 TCO K\nchannel 3 TEMP PT385 FRTD\nchannel 8 VOLT\nchannel 10 RES\n",
    "channel 1-2 VOLT\nchannel 6 FREQ\n"};
constexpr int kChannels = 10;

/// What goes wrong with which call of which instrument.
struct Fault {
    std::string kind;
    bool and_after;
    int instrument;
    int call;

    std::string Entry() const { return kind + (and_after ? " from" : " at") + " call " + std::to_string(call) + "\n"; }
    /// Whether all that arrives is what the instrument has measured.
    bool LosesOnly() const { return kind == "time-out" || kind == "unplugged"; }
};

std::ostream& operator<<(std::ostream& out, const Fault& fault) {
    return out << "instrument " << fault.instrument << ": " << fault.Entry();
}

// ------------------------------------------------------------------------------------------------ in the child process

/// A person who does one job and leaves the program when it does not come to an end.
class Person : public RunDesk {
public:
    explicit Person(std::string report) : report_(std::move(report)) {}

    void Do(Shape shape, const std::string& bench_file) {
        user.WhenMessage("Run-time error", [this] { Report(); });
        Open(bench::ParseBench(bench_file));
        if (shape != Shape::kConnection) Begin(shape);
        calls_before_ = shape == Shape::kConnection ? 0 : wire->bench.Transcript().size();
        clock.At(Elapsed() + kPatienceMs, [this] { Leave(); });
        if (shape == Shape::kConnection) Connect({0, 1});
        if (shape == Shape::kReadBack || shape == Shape::kSet) WorkCard(shape == Shape::kSet);
        if (IsRun(shape)) {
            if (shape == Shape::kRun) After(2'500, [this] { Stop(); });
            if (shape == Shape::kPacedRun) After(6'000, [this] { Stop(); });
            Run();
        }
        Report();
    }

private:
    static constexpr int kPatienceMs = 400'000;

    void TestBody() override {}

    void Begin(Shape shape) {
        Connect({0, 1});
        Assign({"Record1", "Record2"});
        if (shape == Shape::kPacedRun || shape == Shape::kPacedCountedRun) Pace(2);
        if (shape == Shape::kCountedRun) Count("12");
        if (shape == Shape::kPacedCountedRun) Count("3");
    }

    void WorkCard(bool set) {
        user.WhenShown("Set_Dev", [this, set] {
            if (set) user.Click("Set_Dev", "Command1");
            user.Click("Set_Dev", "Command2");
        });
        user.Menu("set_sc");
    }

    /// Presses Stop, behind a message box that is up.
    void Stop() {
        if (QApplication::activeModalWidget() != nullptr)
            After(1, [this] { Stop(); });
        else if (user.Enabled("Form1", "Command4"))
            user.Click("Form1", "Command4");
    }

    void Leave() {
        if (QApplication::activeModalWidget() != nullptr) {
            After(1, [this] { Leave(); });
            return;
        }
        Stop();
        Report();
        user.Menu("exit_item");
    }

    /// The messages, and each exchange since the job began: the instrument's place and the first of its bytes.
    void Report() {
        std::ofstream file(report_);
        for (const std::string& message : user.Messages()) file << "message " << bench::Quoted(message) << '\n';
        const auto& transcript = wire->bench.Transcript();
        std::map<int, int> calls;
        for (std::size_t i = 0; i < transcript.size(); ++i) {
            const int call = ++calls[transcript[i].instrument];
            if (i < calls_before_) continue;
            file << "call " << transcript[i].instrument << ' ' << call << ' '
                 << bench::Quoted(transcript[i].bytes.substr(0, 12)) << '\n';
        }
    }

    std::string report_;
    std::size_t calls_before_ = 0;
};

// --------------------------------------------------------------------------------------------------------- in the test

struct Outcome {
    int status = 0;
    std::vector<std::string> messages;
    std::vector<std::vector<int>> calls = std::vector<std::vector<int>>(2);    ///< numbers, by instrument
    std::vector<std::vector<int>> fetches = std::vector<std::vector<int>>(2);  ///< the calls that sent "fetch?"
    std::vector<int> scans;  ///< the calls that sent "rout:SCAN", which goes to the first instrument alone
    std::vector<int> first_polls = std::vector<int>(2);       ///< the call that polled first
    std::vector<std::vector<std::vector<std::string>>> rows;  ///< of the record of each instrument
};

Outcome Play(Shape shape, const std::optional<Fault>& fault) {
    const TempFolder place;
    const std::string report = place / "report";
    std::string bench_file;
    for (int i = 0; i < 2; ++i) {
        bench_file += SmallScanner(i, kPlans[static_cast<std::size_t>(i)]);
        if (fault && fault->instrument == i) bench_file += fault->Entry();
    }
    const bool had_failed = testing::Test::HasFailure();
    const pid_t child = fork();
    if (child == 0) {
        constexpr int kHangs = 600;  // seconds, with the sanitizers and on a busy machine
        alarm(kHangs);
        setenv("TMPDIR", place.Path().c_str(), 1);
        Person person(report);
        person.Do(shape, bench_file);
        ExitNow(testing::Test::HasFailure() && !had_failed ? 3 : 0);
    }
    Outcome outcome;
    waitpid(child, &outcome.status, 0);
    std::ifstream lines(report);
    for (std::string line; std::getline(lines, line);) {
        if (line.starts_with("message ")) {
            outcome.messages.push_back(line.substr(8));
            continue;
        }
        std::istringstream words(line);
        std::string word;
        std::size_t instrument = 0;
        int call = 0;
        words >> word >> instrument >> call >> word;
        outcome.calls[instrument].push_back(call);
        if (word == "\"rout:SCAN\\n\"") outcome.scans.push_back(call);
        if (word == "\"fetch?\\n\"") outcome.fetches[instrument].push_back(call);
        if (word == "\"rout:scan:st\"" && outcome.first_polls[instrument] == 0) outcome.first_polls[instrument] = call;
    }
    outcome.rows.resize(2);
    for (const auto& entry : fs::recursive_directory_iterator(place.Path())) {
        if (entry.path().filename() == "Record1.mdb") outcome.rows[0] = RowsOf(entry.path());
        if (entry.path().filename() == "Record2.mdb") outcome.rows[1] = RowsOf(entry.path());
    }
    return outcome;
}

/// The sweep, from 0, that the readings of `row` are; -1 if they are none of instrument `instrument`.
int SweepOf(const std::vector<std::string>& row, int instrument) {
    constexpr int kSweeps = 500;
    const auto channels = bench::ParseBench(SmallScanner(instrument, kPlans[static_cast<std::size_t>(instrument)]))
                              .instruments[0]
                              .channels;
    for (int sweep = 0; sweep < kSweeps; ++sweep) {
        bool fits = true;
        for (int ch = 0; ch < kChannels && fits; ++ch) {
            const auto& channel = channels[static_cast<std::size_t>(ch)];
            const bool is_taken = instrument == 0 && ch == 7;  // by the four wires of channel 3
            const std::string expected = channel.function == "NONE" || is_taken
                                             ? " "
                                             : bench::ReadingText(bench::Reading(instrument, ch + 1, channel, sweep));
            // The last reading of a reply keeps the line feed that ends the reply.
            const std::string& stored = row[static_cast<std::size_t>(ch) + 2];
            fits = stored == expected || stored == expected + "\n";
        }
        if (fits) return sweep;
    }
    return -1;
}

/// A fetch that fails may leave a row, but no reading in it.
bool IsBlank(const std::vector<std::string>& row) {
    return std::all_of(row.begin() + 2, row.end(), [](const std::string& cell) { return cell.empty() || cell == " "; });
}

class VisaFaults : public testing::TestWithParam<Shape> {
protected:
    /// The cases to play: for each round one of each kind.
    static std::vector<Fault> Cases(const Outcome& without_fault) {
        std::vector<Fault> cases;
        const Rounds rounds(1);
        std::mt19937 chance = rounds.Chance(0);
        for (const char* kind : {"time-out", "unplugged", "short", "empty", "garbage", "long"}) {
            std::vector<Fault> of_kind;
            for (const bool and_after : {true, false}) {
                // A connection that is lost stays lost.
                if (std::string(kind) == "unplugged" && and_after) continue;
                for (int i = 0; i < 2; ++i)
                    for (const int call : without_fault.calls[static_cast<std::size_t>(i)])
                        of_kind.push_back({kind, and_after, i, call});
            }
            std::ranges::sample(of_kind, std::back_inserter(cases), rounds.Count(), chance);
        }
        return cases;
    }

    static void ExpectADescribedEnd(const Outcome& outcome) {
        ASSERT_TRUE(WIFEXITED(outcome.status)) << "signal " << WTERMSIG(outcome.status);
        const bool faulted = !outcome.messages.empty() && outcome.messages.back().find("Run-time error") == 1;
        EXPECT_EQ(WEXITSTATUS(outcome.status), faulted ? 1 : 0);
        for (const std::string& message : outcome.messages) {
            const auto is_known = [&](const char* part) { return message.find(part) != std::string::npos; };
            // What docs/troubleshooting.md says of them holds: a reply without commas, one too large for a number, no
            // channel left, no number where one is needed, a reading too long for its field.
            const std::vector<const char*> known = {
                "Device is disconnected !",   "End of Job.",         "Setting complete!",
                "is not a number of seconds", "Run-time error '5'",  "Run-time error '6'",
                "Run-time error '11'",        "Run-time error '13'", "Run-time error '3163'"};
            EXPECT_TRUE(std::ranges::any_of(known, is_known)) << message;
        }
    }

    static void ExpectTrueRows(const Outcome& outcome, const Outcome& without_fault, const Fault& fault) {
        const bool loses_scan =
            fault.instrument == 0 && std::ranges::find(without_fault.scans, fault.call) != without_fault.scans.end();
        for (std::size_t i = 0; i < 2; ++i) {
            const auto& rows = outcome.rows[i];
            int sweep = -1;
            for (std::size_t n = 0; n < rows.size(); ++n) {
                EXPECT_EQ(rows[n][0], std::to_string(n + 1));
                // With its replies spoiled, or its plan read back in part, an instrument's rows are what is made of
                // that.
                const bool is_hit = fault.instrument == static_cast<int>(i);
                if (is_hit && (!fault.LosesOnly() || fault.call < without_fault.first_polls[i])) continue;
                if (is_hit && IsBlank(rows[n])) continue;
                const int last = std::exchange(sweep, SweepOf(rows[n], static_cast<int>(i)));
                // When the command to scan gets lost, the instruments send once more what they have.
                const int least = loses_scan && last >= 0 ? last : last + 1;
                EXPECT_GE(sweep, least) << "row " << n + 1 << " of instrument " << i;
            }
        }
        // What was fetched before the fault is there to the byte.
        const auto hit = static_cast<std::size_t>(fault.instrument);
        const auto& fetches = without_fault.fetches[hit];
        const auto fetched = std::ranges::count_if(fetches, [&](int call) { return call + 1 < fault.call; });
        const auto& truth = without_fault.rows[hit];
        const auto rows_each = fetches.empty() ? 0 : truth.size() / fetches.size();
        const auto safe = static_cast<std::size_t>(fetched) * rows_each;
        ASSERT_GE(outcome.rows[hit].size(), safe);
        for (std::size_t n = 0; n < safe; ++n) EXPECT_EQ(outcome.rows[hit][n], truth[n]);
    }
};

TEST_P(VisaFaults, End_as_described_and_leave_no_wrong_row) {
    const Outcome without_fault = Play(GetParam(), std::nullopt);
    ASSERT_EQ(without_fault.status, 0);
    ASSERT_FALSE(without_fault.calls[0].empty());
    if (IsRun(GetParam())) {
        for (const std::size_t i : {0, 1}) {
            ASSERT_GE(without_fault.rows[i].size(), 2U);
            for (const auto& row : without_fault.rows[i]) {
                if (SweepOf(row, static_cast<int>(i)) < 0) ADD_FAILURE() << i << testing::PrintToString(row);
            }
        }
    }
    const std::vector<Fault> cases = Cases(without_fault);
    for (const Fault& fault : cases) {
        SCOPED_TRACE(testing::Message() << fault);
        const Outcome outcome = Play(GetParam(), fault);
        ExpectADescribedEnd(outcome);
        ExpectTrueRows(outcome, without_fault, fault);
        if (HasFatalFailure()) return;
    }
    Tried(static_cast<int>(cases.size()), "VISA calls that fail");
}

std::string NameOf(const testing::TestParamInfo<Shape>& shape) {
    const std::vector<std::string> names = {
        "In_connecting",    "In_a_read_back",        "In_SET", "In_a_run", "In_a_paced_run",
        "In_a_counted_run", "In_a_paced_counted_run"};
    return names[static_cast<std::size_t>(shape.param)];
}

INSTANTIATE_TEST_SUITE_P(Shapes, VisaFaults,
                         testing::Values(Shape::kConnection, Shape::kReadBack, Shape::kSet, Shape::kRun,
                                         Shape::kPacedRun, Shape::kCountedRun, Shape::kPacedCountedRun),
                         NameOf);

}  // namespace
}  // namespace vantrel
