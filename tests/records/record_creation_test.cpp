// A record comes into being whole or not at all, whatever happens meanwhile, and the next Start works.
#include "records/record_store.h"
#include "state/shared.h"
#include "support/child_process.h"
#include "support/errors.h"
#include "support/file_calls.h"
#include "support/rounds.h"
#include "support/temp_folder.h"
#include "support/texts.h"

#include <algorithm>
#include <cerrno>
#include <filesystem>
#include <gtest/gtest.h>
#include <memory>
#include <sys/resource.h>

namespace vantrel {
namespace {

const std::string kRecord = "Record1";

/// What Start does with the record of device 0, and the error that it ends with; 0 for none.
int Start() {
    return ErrorOf([] {
        CreateRecord(0);
        OpenRecord(0);
        CloseRecord(0);
    });
}

/// The names in a folder, in their alphabetical order.
Texts Entries(const std::string& folder) {
    Texts names;
    for (const auto& entry : std::filesystem::directory_iterator(folder)) names.push_back(entry.path().filename());
    std::ranges::sort(names);
    return names;
}

class RecordCreation : public testing::Test {
protected:
    RecordCreation() { RecordName(0) = kRecord; }
};

TEST_F(RecordCreation, Whose_file_operations_fail_from_any_on_leaves_no_record_or_a_whole_one) {
    for (const auto& [cause, expected] : {std::pair(ENOSPC, kEngineFull), std::pair(EDQUOT, kEngineFull),
                                          std::pair(EACCES, kNoPermission), std::pair(EIO, kEngineOther)}) {
        int fails = 0;
        for (;; ++fails) {
            const TempAppFolder folder;
            FileCalls calls(folder / "db");
            calls.FailFrom(fails + 1, cause, true);
            const int error = Start();
            if (error == 0) break;
            const bool is_made = FileExists(folder / "db/Record1.mdb");
            EXPECT_TRUE(is_made || error == expected) << error << " after a failure of call " << fails + 1;

            calls.Mend();
            EXPECT_EQ(Start(), 0) << "after a failure of call " << fails + 1;
            EXPECT_EQ(Entries(folder / "db"), Texts{"Record1.mdb"});
        }
        EXPECT_GE(fails, 5);  // made aside, written, synced, named, its folder synced
        Tried(fails, "failing file operations");
    }
}

/// Leaves in `folder` what a program leaves that is killed while it makes the record.
void LeaveHalfMade(const std::string& folder) {
    ChildProcess killed([&](const ChildProcess::Contact&) {
        FileCalls calls(folder);
        calls.KillAt(3);
        Start();
    });
    killed.End();
    ASSERT_EQ(Entries(folder).size(), 1U);
    ASSERT_NE(Entries(folder), Texts{"Record1.mdb"});
}

TEST_F(RecordCreation, Beside_one_that_was_left_half_made_fails_or_clears_it) {
    int fails = 0;
    for (;; ++fails) {
        const TempAppFolder folder;
        LeaveHalfMade(folder / "db");
        FileCalls calls(folder / "db");
        calls.FailFrom(fails + 1, EACCES, false);
        const int error = Start();
        if (calls.Count() <= fails) break;
        const bool is_made = FileExists(folder / "db/Record1.mdb");
        EXPECT_TRUE(is_made || error == kNoPermission) << error << " after a failure of call " << fails + 1;

        EXPECT_EQ(Start(), 0) << "after a failure of call " << fails + 1;
        EXPECT_EQ(Entries(folder / "db"), Texts{"Record1.mdb"});
    }
    EXPECT_GE(fails, 7);  // besides, the leftover opened and removed
    Tried(fails, "failing file operations");
}

TEST_F(RecordCreation, Goes_on_where_a_signal_interrupts_a_write) {
    /// How many of the calls may fail once with `cause` and the record is made all the same.
    const auto made_despite = [](int cause) {
        int made = 0;
        for (int call = 1;; ++call) {
            const TempAppFolder folder;
            FileCalls calls(folder / "db");
            calls.FailFrom(call, cause, false);
            const int error = Start();
            if (calls.Count() < call) return made;
            made += error == 0;
        }
    };
    EXPECT_GT(made_despite(EINTR), made_despite(EIO));
}

TEST_F(RecordCreation, On_a_disk_of_any_size_leaves_no_record_or_a_whole_one) {
    int disks = 0;
    for (rlim_t size = 0; size <= 20000; size += 500, ++disks) {
        const TempAppFolder folder;
        ChildProcess limited([&](const ChildProcess::Contact&) {
            const rlimit limit{size, size};
            if (setrlimit(RLIMIT_FSIZE, &limit) != 0) throw std::runtime_error("no limit");
            std::signal(SIGXFSZ, SIG_IGN);
            const int error = Start();
            const bool is_whole = FileExists(folder / "db/Record1.mdb");
            if (error != (is_whole ? 0 : kEngineFull)) throw std::runtime_error("unexpected end");
        });
        EXPECT_EQ(limited.End(), 0) << size;
        EXPECT_EQ(Start(), 0) << size;
        EXPECT_EQ(Entries(folder / "db"), Texts{"Record1.mdb"});
    }
    Tried(disks, "disks of other sizes");
}

TEST_F(RecordCreation, That_is_killed_at_any_step_leaves_no_record_or_a_whole_one_and_the_next_Start_works) {
    int steps = 0;
    for (;; ++steps) {
        const TempAppFolder folder;
        ChildProcess killed([&](const ChildProcess::Contact&) {
            FileCalls calls(folder / "db");
            calls.KillAt(steps + 1);
            Start();
        });
        if (killed.End() == 0) break;
        EXPECT_EQ(Start(), 0) << "after a kill at call " << steps + 1;
        EXPECT_EQ(Entries(folder / "db"), Texts{"Record1.mdb"}) << steps + 1;
    }
    EXPECT_GE(steps, 5);
    Tried(steps, "kills at a file operation");
}

/// What the engine plays back into a database that lies beside it: the order to cut it to one page.
std::string Journal() {
    const std::string magic = "\xd9\xd5\x05\xf9\x20\xa1\x63\xd7";
    const auto number = [](int value) {
        return std::string{'\0', '\0', static_cast<char>(value / 256), static_cast<char>(value % 256)};
    };
    std::string header = magic + number(0) + number(0) + number(1) + number(512) + number(4096);
    header.resize(512, '\0');
    return header;
}

TEST_F(RecordCreation, That_loses_its_power_leaves_no_record_or_a_whole_one_and_the_next_Start_works) {
    const Rounds rounds(240);
    const TempAppFolder folder;
    WriteFileBytes(folder / "db/Record1.mdb-journal", Journal());  // of a record that was deleted
    const FileCalls calls(folder / "db");
    ASSERT_EQ(Start(), 0);
    const int changes = calls.Changes();
    EXPECT_GE(changes, 5);
    for (const int round : rounds) {
        SCOPED_TRACE(rounds.Text(round));
        std::mt19937 chance = rounds.Chance(round);
        // Each moment in its turn, so that all are met.
        const int change = round % (changes + 1);
        const TempAppFolder after;
        calls.PowerCut(change, chance, after / "db");
        const Texts found = Entries(after / "db");
        const bool is_made = found == Texts{"Record1.mdb"};
        ASSERT_TRUE(is_made || change < changes);  // Start had returned
        ASSERT_EQ(Start(), 0) << "power cut before change " << change << ", with " << testing::PrintToString(found);
        ASSERT_EQ(Entries(after / "db"), Texts{"Record1.mdb"});
    }
    Tried(rounds.Count(), "power cuts");
}

TEST_F(RecordCreation, In_several_programs_at_once_makes_one_record_and_tells_the_others_that_it_exists) {
    constexpr int kPrograms = 4;
    for (int round = 0; round < 25; ++round) {
        const TempAppFolder folder;
        std::vector<std::unique_ptr<ChildProcess>> programs;
        for (int i = 0; i < kPrograms; ++i)
            programs.push_back(std::make_unique<ChildProcess>([](const ChildProcess::Contact& test) {
                test.Await();
                const int error = ErrorOf([] { CreateRecord(0); });
                if (error != 0 && error != kFileExists) throw std::runtime_error("unexpected end");
                if (error == 0) test.Send();
            }));
        for (const auto& program : programs) program->Talk().Send();
        int makers = 0;
        for (const auto& program : programs) {
            EXPECT_EQ(program->End(), 0);
            if (program->Talk().Await()) ++makers;  // or one that found it made
        }
        EXPECT_GE(makers, 1);
        EXPECT_EQ(Entries(folder / "db"), Texts{"Record1.mdb"});
        EXPECT_EQ(Start(), 0);
    }
}

TEST_F(RecordCreation, Works_for_the_longest_name) {
    const TempAppFolder folder;
    RecordName(0) = kRecord + std::string(243 - kRecord.size(), 'x');
    EXPECT_EQ(Start(), 0);
    EXPECT_EQ(Entries(folder / "db"), Texts{RecordName(0) + ".mdb"});
}

}  // namespace
}  // namespace vantrel
