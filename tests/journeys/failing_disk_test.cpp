// A disk that fails while a person shows a record, draws it, saves a page of it, or scans into it: the end or message
// is one that is described, every row is there, and the next run goes on behind them.
//
// Every case is played in a process of its own. A few are drawn at random; VANTREL_ROUNDS says how many.
#include "platform/dbengine.h"
#include "platform/qt/application.h"
#include "support/file_calls.h"
#include "support/records.h"
#include "support/rounds.h"
#include "support/run_desk.h"
#include "support/texts.h"

#include <algorithm>
#include <cerrno>
#include <filesystem>
#include <fstream>
#include <set>
#include <sstream>
#include <sys/wait.h>
#include <unistd.h>

namespace vantrel {
namespace {

constexpr int kRows = 30;
constexpr int kScans = 3;

std::string Reading(int row, int channel) { return std::to_string(row) + "." + std::to_string(channel); }

/// Which file operation fails, from 1, with which errno, alone or with all behind it.
struct Fault {
    int call;
    int cause;
    bool is_lasting;
};

std::ostream& operator<<(std::ostream& out, const Fault& fault) {
    return out << "call " << fault.call << (fault.is_lasting ? " and all behind it fail" : " fails") << " with errno "
               << fault.cause;
}

struct Outcome {
    int status = 0;  ///< 0 or 1, as the program ended
    int calls = 0;   ///< file operations
    Texts messages;  ///< first lines
};

class FailingDisk : public RunDesk {
protected:
    /// Does `work`, with the files in `watched` on a disk that fails, or not, in a process of its own.
    Outcome Play(const std::string& watched, const std::optional<Fault>& fault, const User::Action& work) {
        const std::string report = folder / "report";
        const bool had_failed = HasFailure();
        const pid_t child = fork();
        if (child == 0) {
            constexpr int kHangs = 600;  // seconds, with the sanitizers and on a busy machine
            alarm(kHangs);
            OpenWith(SmallScanner(0, "channel 1-3 VOLT\n"));
            Assign({"Record1"});
            Pace(1);
            Count(std::to_string(kScans));
            user.WhenMessage("Run-time error", [&] { Report(report, 0); });
            FileCalls calls(watched);
            if (fault) calls.FailFrom(fault->call, fault->cause, fault->is_lasting);
            work();
            Report(report, calls.Count());
            ExitNow(HasFailure() && !had_failed ? 3 : 0);
        }
        int status = 0;
        waitpid(child, &status, 0);
        EXPECT_TRUE(WIFEXITED(status)) << "signal " << WTERMSIG(status);
        Outcome outcome;
        outcome.status = WEXITSTATUS(status);
        std::ifstream lines(report);
        lines >> outcome.calls >> std::ws;
        for (std::string line; std::getline(lines, line);) outcome.messages.push_back(line);
        return outcome;
    }
    /// Plays `work` without a fault and then with faults, each on a fresh record whose numbers begin with 2, and looks
    /// at each outcome with `check`. Whatever it is, the rows are there and the next run adds its own.
    void PlayEach(const char* watched, const User::Action& work, const std::function<void(const Outcome&)>& check) {
        MakeRecord(Record("Record1"), kRows + 1, [](int row, int channel) { return Reading(row - 1, channel); });
        Database database = TheDBEngine().OpenDatabase(Record("Record1"));
        database.OpenRecordset("select * from data").Delete();
        database.Close();
        const std::string bytes = FileBytes(Record("Record1"));

        const Outcome without_fault = Play(folder / watched, std::nullopt, work);
        ASSERT_EQ(without_fault.status, 0);
        check(without_fault);
        const std::vector<Fault> cases = Cases(without_fault.calls);
        for (const Fault& fault : cases) {
            SCOPED_TRACE(testing::Message() << fault);
            for (const auto& entry : std::filesystem::directory_iterator(folder / "db")) std::filesystem::remove(entry);
            WriteFileBytes(Record("Record1"), bytes);
            const Outcome outcome = Play(folder / watched, fault, work);
            check(outcome);
            const int stored = ExpectEveryRow();
            ASSERT_EQ(Play(folder / "db", std::nullopt, [this] { Run(); }).messages, Texts{"End of Job."});
            EXPECT_EQ(Numbers(), Counting(stored + kScans));
            if (HasFailure()) return;
        }
        Tried(static_cast<int>(cases.size()), "file operations that fail at work");
    }
    /// The end is without a word, or that of a run-time error of the database engine.
    static void ExpectADescribedEnd(const Outcome& outcome) {
        static const std::set<std::string> of_the_engine = {"3000", "3024", "3026", "3027", "3051", "3260", "3343"};
        if (outcome.status == 0) {
            EXPECT_EQ(outcome.messages, Texts{});
            return;
        }
        ASSERT_EQ(outcome.status, 1);
        ASSERT_EQ(outcome.messages.size(), 1U);
        std::string number = outcome.messages[0];
        std::erase_if(number, [](char letter) { return letter < '0' || letter > '9'; });
        EXPECT_TRUE(of_the_engine.contains(number)) << outcome.messages[0];
    }
    Texts Numbers() const {
        Texts numbers;
        for (const auto& row : RowsOf(Record("Record1"))) numbers.push_back(row[0]);
        return numbers;
    }

private:
    static std::vector<Fault> Cases(int calls) {
        std::vector<Fault> all;
        for (int call = 1; call <= calls; ++call)
            for (const int cause : {ENOSPC, EIO, EACCES})
                for (const bool is_lasting : {false, true}) all.push_back({call, cause, is_lasting});
        const Rounds rounds(4);
        std::mt19937 chance = rounds.Chance(0);
        std::vector<Fault> cases;
        std::ranges::sample(all, std::back_inserter(cases), rounds.Count(), chance);
        return cases;
    }
    void Report(const std::string& path, int calls) const {
        std::ofstream file(path);
        file << calls << '\n';
        for (const std::string& message : user.Messages()) file << message.substr(0, message.find('\n')) << '\n';
    }
    /// Each row that was there, under its number or the one that it gets, and behind them those of the scans that were
    /// stored. Gives the number of all rows.
    int ExpectEveryRow() const {
        const auto rows = RowsOf(Record("Record1"));
        EXPECT_GE(rows.size(), static_cast<std::size_t>(kRows));
        for (int row = 1; row <= kRows; ++row) {
            const auto& found = rows.at(static_cast<std::size_t>(row) - 1);
            EXPECT_TRUE(found[0] == std::to_string(row) || found[0] == std::to_string(row + 1)) << found[0];
            EXPECT_EQ(found[1], RowTime(row + 1));
            for (int channel = 1; channel <= 20; ++channel)
                EXPECT_EQ(found[static_cast<std::size_t>(channel) + 1], Reading(row, channel));
        }
        return static_cast<int>(rows.size());
    }
};

TEST_F(FailingDisk, That_a_record_is_shown_from_ends_as_described) {
    const auto show = [this] {
        user.Click("Form1", "Command7");
        user.Choose("Record_View_Form", "List1", "Record1.mdb");
        user.Click("Record_View_Form", "Command2");
        EXPECT_EQ(user.RowCount("Record_View_Form", "MSFlexGrid1"), kRows + 2);
        for (int row = 1; row <= kRows; ++row)
            EXPECT_EQ(user.CellText("Record_View_Form", "MSFlexGrid1", row + 1, 21), Reading(row, 20));
    };
    PlayEach("db", show, ExpectADescribedEnd);
}

TEST_F(FailingDisk, That_a_record_is_drawn_from_is_told_and_the_dialog_goes_on) {
    const auto draw = [this] {
        user.WhenShown("Record_View_Draw", [this] {
            user.Pick("Record_View_Draw", "Combo_record", "Record1.mdb");
            user.Pick("Record_View_Draw", "Combo_chan", "CH2");
            user.Click("Record_View_Draw", "Command1");
            user.Click("Record_View_Draw", "Command3");
        });
        user.Menu("Record_Draw");
    };
    PlayEach("db", draw, [](const Outcome& outcome) {
        EXPECT_EQ(outcome.status, 0);
        static const std::set<std::string> told = {"The record cannot be opened.", "The record cannot be drawn.",
                                                   "The value cannot be read."};
        for (const std::string& message : outcome.messages) EXPECT_TRUE(told.contains(message)) << message;
    });
}

TEST_F(FailingDisk, That_a_page_is_saved_to_ends_the_export_without_a_word_and_leaves_its_beginning) {
    std::filesystem::create_directory(folder / "pages");
    const std::string page = folder / "pages/page.csv";
    const auto save = [&] {
        user.Click("Form1", "Command7");
        user.Choose("Record_View_Form", "List1", "Record1.mdb");
        user.Click("Record_View_Form", "Command2");
        user.AnswerFile(page);
        user.Click("Record_View_Form", "Command5");
    };
    std::optional<std::string> whole;
    PlayEach("pages", save, [&](const Outcome& outcome) {
        EXPECT_EQ(outcome.status, 0);
        EXPECT_EQ(outcome.messages, Texts{});
        const std::string saved = FileBytes(page);
        if (!whole) whole = saved;
        EXPECT_EQ(std::ranges::count(*whole, '\n'), kRows + 1);
        EXPECT_TRUE(whole->starts_with(saved)) << saved;
        std::filesystem::remove(page);
    });
}

TEST_F(FailingDisk, That_a_run_stores_on_ends_as_described) {
    PlayEach(
        "db", [this] { Run(); },
        [this](const Outcome& outcome) {
            Outcome rest = outcome;
            const bool has_ended = std::erase(rest.messages, "End of Job.") == 1;
            EXPECT_EQ(has_ended, outcome.status == 0);
            ExpectADescribedEnd(rest);
            if (has_ended) {
                EXPECT_EQ(Numbers(), Counting(kRows + kScans));
            }
        });
}

}  // namespace
}  // namespace vantrel
