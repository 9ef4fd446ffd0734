// A desk with records: instruments whose readings are known, and runs of a given number of scans.
#pragma once

#include "state/shared.h"
#include "support/desk.h"
#include "support/texts.h"
#include "windows/Form1.h"

#include <algorithm>
#include <cstdio>
#include <filesystem>
#include <string>
#include <vector>

namespace vantrel {

/// What EXPECT_EXIT finds on the error output of a process that ended with run-time error `number`.
inline std::string EndedBy(int number) {
    return "Run-time error '" + std::to_string(number) + "':\n\n" + ErrorText(number);
}

class RecordDesk : public Desk {
protected:
    /// Bench lines of one scanner with three channels on: each fetch gives +1.5E+00, +2.5E+00 and +3.5E+00.
    static std::string Scanner(const std::string& serial, int card = 2) {
        return "instrument USB0::" + serial + "::INSTR\nidentity \"Orlane,SB-20,1,1\"\nserial \"" + serial +
               "\"\ncard " + std::to_string(card) +
               "\nchannel 1-3 VOLT\nreply \"fetch?\" \"+1.5E+00,+2.5E+00,+3.5E+00\\n\"\n";
    }
    /// Shows the main window with `count` such scanners, A, B, C and D, all connected.
    void OpenConnected(int count, int card = 2) {
        std::string bench;
        std::vector<int> rows;
        for (int i = 0; i < count; ++i) {
            bench += Scanner(std::string(1, static_cast<char>('A' + i)), card);
            rows.push_back(i);
        }
        Open(bench);
        Connect(rows);
    }
    /// Types a record's name for device `dev` in the assignment dialog.
    void AssignTyped(int dev, const std::string& name) {
        user.Click("Form1", "Command10");
        user.Type("DB_SET", "Combo1(" + std::to_string(dev) + ")", name);
        user.Click("DB_SET", "OK");
    }
    /// A run of `count` scans without a pause.
    void RunScans(int count) {
        Schedule([&] {
            for (const char* box : {"per_scan_interval", "stop_after_n_scan"})
                if (!user.Checked("Form4", box)) user.Click("Form4", box);
            user.Type("Form4", "N_SCAN", std::to_string(count));
        });
        Run();
    }
    /// Does `action` in the run that is to come, once device 0 has taken `count` scans.
    void AfterScans(int count, const User::Action& action) {
        clock.At(static_cast<int>(clock.Elapsed()) + 100, [this, count, action] {
            if (ScanCount(0) >= count)
                action();
            else
                AfterScans(count, action);
        });
    }
    /// In a process that is to end by a run-time error: tells the error's message on the error output.
    void TellRunTimeError() {
        user.WhenMessage("Run-time error", [this] { std::fputs(user.Messages().back().c_str(), stderr); });
    }
    static Texts Column(const std::vector<Texts>& rows, std::size_t column) {
        Texts texts;
        for (const Texts& row : rows) texts.push_back(row[column]);
        return texts;
    }
    /// The entries of the folder `db`.
    Texts RecordFiles() const {
        Texts names;
        for (const auto& entry : std::filesystem::directory_iterator(folder / "db"))
            names.push_back(entry.path().filename().string());
        std::ranges::sort(names);
        return names;
    }
};

}  // namespace vantrel
