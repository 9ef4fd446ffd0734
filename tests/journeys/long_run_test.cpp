// A run of days: four instruments with 20 channels, See Value open, a record for each, and new ones before they are
// full. VANTREL_ROUNDS says how many hours it takes.
#include "platform/toolkit/events.h"
#include "state/shared.h"
#include "support/desk.h"
#include "support/rounds.h"
#include "support/run_desk.h"
#include "windows/Form4.h"

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <ranges>
#include <unistd.h>

namespace vantrel {
namespace {

constexpr int kDevices = 4;
constexpr int kPassesOfAnHour = 240;
constexpr int kFullRecord = 32'000;  // rows, and no more than fit into a page

/// What the process holds now.
struct Held {
    long pages = 0;  ///< of memory
    std::ptrdiff_t files = 0;
};

Held HeldNow() {
    Held held;
    long size = 0;
    std::ifstream("/proc/self/statm") >> size >> held.pages;
    held.files = std::ranges::distance(std::filesystem::directory_iterator("/proc/self/fd"));
    return held;
}

/// Has records in memory: nobody waits for a disk here.
struct DiskInMemory {
    DiskInMemory() {
        if (std::filesystem::is_directory("/dev/shm")) setenv("TMPDIR", "/dev/shm", 1);
    }
};

class LongRun : private DiskInMemory, public Desk {
protected:
    LongRun() {
        std::string lines;
        for (int place = 0; place < kDevices; ++place) lines += Scanner(place);
        Open(lines);
        Connect({0, 1, 2, 3});
        wire->bench.SetRecording(false);
        user.Click("Form1", "Command6");
    }
    /// A run of `passes` passes, one each 15 seconds, into the `group`th four records, which then have `rows` rows.
    void RunInto(int group, int passes, int rows) {
        std::vector<std::string> names;
        for (int dev = 0; dev < kDevices; ++dev) names.push_back("Record" + std::to_string(group * kDevices + dev + 1));
        Assign(names);
        Schedule([passes] {
            The<Form4>().per_scan_interval.SetValue(1);
            The<Form4>().PerSan.SetValue(FromLocalFields({2000, 1, 1, 0, 0, 15}));
            The<Form4>().stop_after_n_scan.SetValue(1);
            The<Form4>().N_SCAN.SetText(std::to_string(passes));
        });
        Run();
        EXPECT_EQ(user.Messages().back(), "End of Job.");
        for (const std::string& name : names) ExpectWhole(name, rows);
    }
    /// The record has that many rows, numbered from 1, each with its 20 readings, the times in order.
    void ExpectWhole(const std::string& name, int expected) const {
        Database database = TheDBEngine().OpenDatabase(Record(name));
        Recordset rows = database.OpenRecordset("select * from data");
        int number = 0;
        std::string time;
        for (; !rows.Eof(); rows.MoveNext()) {
            ASSERT_EQ(rows.Text("NUM"), std::to_string(++number)) << name;
            ASSERT_GT(rows.Text("Time"), time) << name;
            time = rows.Text("Time");
            for (const char* channel : {"Ch1", "Ch20"})
                ASSERT_NE(Trim(rows.Text(channel)), "") << name << ", row " << number;
        }
        EXPECT_EQ(number, expected) << name;
        database.Close();
    }
};

TEST_F(LongRun, Stores_every_scan_and_holds_no_more_from_the_first_hour_on) {
    const Rounds hours(2);
    int left = static_cast<int>(std::ranges::distance(hours)) * kPassesOfAnHour - kPassesOfAnHour;
    int group = 0;
    int rows = kPassesOfAnHour;
    RunInto(group, rows, rows);
    const Held first = HeldNow();
    while (left > 0) {
        // As the guide has it: other records before these have more rows than a page shows.
        if (rows == kFullRecord) {
            ++group;
            rows = 0;
        }
        const int passes = std::min(left, kFullRecord - rows);
        rows += passes;
        left -= passes;
        RunInto(group, passes, rows);
    }
    const Held last = HeldNow();
    EXPECT_EQ(last.files, first.files);
#ifndef __SANITIZE_ADDRESS__  // which keeps for a while what was freed
    EXPECT_LT((last.pages - first.pages) * sysconf(_SC_PAGESIZE), 16L << 20U);
#endif
    RecordProperty("bytes_more", std::to_string((last.pages - first.pages) * sysconf(_SC_PAGESIZE)));
}

}  // namespace
}  // namespace vantrel
