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
#include <ctime>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <optional>
#include <ranges>
#include <span>
#include <unistd.h>
#include <vector>

namespace vantrel {
namespace {

constexpr int kDevices = 4;
constexpr int kPassesOfAnHour = 240;
constexpr int kFullRecord = 32'000;  // rows, and no more than fit into a page

/// What the process holds, and what it has used so far.
struct Usage {
    std::int64_t bytes = 0;    ///< of memory
    std::ptrdiff_t files = 0;  ///< open
    std::int64_t calls = 0;    ///< that read or write
    double seconds = 0;        ///< of processor time
};

Usage UsageNow() {
    Usage usage;
    std::int64_t size = 0;
    std::ifstream("/proc/self/statm") >> size >> usage.bytes;
    usage.bytes *= sysconf(_SC_PAGESIZE);
    usage.files = std::ranges::distance(std::filesystem::directory_iterator("/proc/self/fd"));
    std::ifstream counts("/proc/self/io");
    for (std::string name, number; counts >> name >> number;)
        if (name == "syscr:" || name == "syscw:") usage.calls += std::stoll(number);
    timespec time{};
    clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &time);
    usage.seconds = static_cast<double>(time.tv_sec) + 1e-9 * static_cast<double>(time.tv_nsec);
    return usage;
}

/// A quarter of an hour in a run: 60 passes.
struct Quarter {
    int number;  ///< in its run, from 0
    Usage begin, end;
    double Seconds() const { return end.seconds - begin.seconds; }
    std::int64_t Calls() const { return end.calls - begin.calls; }
};

using Quarters = std::span<const Quarter>;

constexpr int kQuartersOfAnHour = 4;
constexpr std::size_t kQuartersOfADay = 96;

/// Whether the trend and See Value are full, with 162 and 160 scans: until then a pass costs less.
bool IsFull(const Quarter& quarter) { return quarter.number >= kQuartersOfAnHour; }

/// The processor time of the fastest full one, which is the one that other programs have disturbed least.
double Fastest(Quarters quarters) {
    return std::ranges::min(quarters | std::views::filter(IsFull) | std::views::transform(&Quarter::Seconds));
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
        NoteQuarters(++run_, 0, std::nullopt);
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

    std::vector<Quarter> quarters;  ///< whole ones, of all runs

private:
    /// Notes each quarter of an hour of run number `run`, from the `number`th on; the one before ended with `last`.
    void NoteQuarters(int run, int number, const std::optional<Usage>& last) {
        constexpr int kStartMs = 30'000;
        constexpr int kQuarterMs = 900'000;
        clock.At(static_cast<int>(clock.Elapsed()) + (last ? kQuarterMs : kStartMs), [=, this] {
            if (run != run_) return;
            const Usage now = UsageNow();
            if (last) quarters.push_back({number, *last, now});
            NoteQuarters(run, last ? number + 1 : 0, now);
        });
    }
    int run_ = 0;
};

TEST_F(LongRun, Stores_every_scan_holds_no_more_from_the_first_hour_on_and_gets_no_slower) {
    const int passes = Rounds(2).Count() * kPassesOfAnHour;
    int left = passes - kPassesOfAnHour;
    int group = 0;
    int rows = kPassesOfAnHour;
    RunInto(group, rows, rows);
    const std::size_t first_hour = quarters.size();
    while (left > 0) {
        // As the guide has it: other records before these have more rows than a page shows.
        if (rows == kFullRecord) {
            ++group;
            rows = 0;
        }
        const int next = std::min(left, kFullRecord - rows);
        rows += next;
        left -= next;
        RunInto(group, next, rows);
    }

    const Quarter& first = quarters[first_hour - 1];
    std::int64_t most = first.end.bytes;
    for (const Quarter& quarter : Quarters(quarters).subspan(first_hour)) {
        EXPECT_EQ(quarter.end.files, first.end.files);
        EXPECT_LT(quarter.Calls(), 2 * first.Calls());
        most = std::max(most, quarter.end.bytes);
    }
#ifndef __SANITIZE_ADDRESS__  // which keeps for a while what was freed
    EXPECT_LT(most - first.end.bytes, 16L << 20U);
#endif
    Tried(passes, "passes");
    Tried(kDevices * passes, "rows");
    std::cout << most - first.end.bytes << " bytes more than after the first hour\n";
    // What other programs take of the machine is in the times too, so that these are for long runs.
    if (quarters.size() < 2 * kQuartersOfADay) return;
    for (std::size_t day = 0; day + kQuartersOfADay <= quarters.size(); day += kQuartersOfADay) {
        const Quarters all = Quarters(quarters).subspan(day, kQuartersOfADay);
        std::cout << Fastest(all) / 60 * 1000 << " ms a pass, " << all.back().end.bytes << " bytes\n";
    }
    EXPECT_LT(Fastest(Quarters(quarters).last(kQuartersOfADay)),
              1.5 * Fastest(Quarters(quarters).first(kQuartersOfADay)));
}

}  // namespace
}  // namespace vantrel
