// The program on a bench of its own, with a person before it: what most tests start from.
#pragma once

#include "support/bench_on_the_wire.h"
#include "support/temp_folder.h"
#include "support/user.h"
#include "support/virtual_clock.h"

#include <gtest/gtest.h>
#include <optional>
#include <string>
#include <vector>

namespace vantrel {

/// Every row of the record at `path`, oldest first, its 22 columns in order. Null reads as "<Null>".
std::vector<std::vector<std::string>> RowsOf(const std::string& path);

/// A test with the program's windows on the screen, instruments on the wire, and time that passes only when it is slept
/// through.
class Desk : public testing::Test {
protected:
    /// Puts `description` on the wire and shows the main window.
    void Open(const bench::BenchDescription& description = bench::DefaultBench());
    /// The same, with a bench file's text.
    void Open(const std::string& bench_file) { Open(bench::ParseBench(bench_file)); }

    /// Works the Connect dialog: ticks exactly these rows (from 0), EXIT.
    void Connect(const std::vector<int>& rows);
    /// Assigns records in the assignment dialog: entry i to device i.
    void Assign(const std::vector<std::string>& records);
    /// Works the read schedule: opens it, runs `steps`, OK.
    void Schedule(const User::Action& steps);
    /// Starts a run and returns when it has ended ("End of Job." confirmed).
    void Run();
    /// Starts a run in which Stop is pressed `ms` after now.
    void RunAndStopAfter(int ms);
    /// Presses Stop `ms` after now, in the program's next yield.
    void StopAfter(int ms);

    VirtualClock clock;
    /// The file of record `name`.
    std::string Record(const std::string& name) const { return folder / ("db/" + name + ".mdb"); }

    TempAppFolder folder;
    User user;
    std::optional<BenchOnTheWire> wire;
};

}  // namespace vantrel
