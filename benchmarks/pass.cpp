// A pass of a run over four instruments of 20 channels with its trend of 80 traces, in the main window on the screen,
// without and with See Value. The waits are jumped over, and the instruments take no time.
#include "bare_plot.h"
#include "bare_table.h"
#include "instant_wire.h"
#include "platform/qt/style.h"
#include "ratio.h"
#include "support/virtual_clock.h"
#include "windows/DATA_Table.h"
#include "windows/Form1.h"
#include "with_windows.h"

#include <QApplication>
#include <cstdio>
#include <unistd.h>

namespace vantrel {
namespace {

constexpr int kPassesMeasured = 200;

/// Kilobytes of memory that the process has in use.
double MemoryInUse() {
    long size = 0;
    long resident = 0;
    std::FILE* file = std::fopen("/proc/self/statm", "r");
    if (std::fscanf(file, "%ld %ld", &size, &resident) != 2) std::abort();
    std::fclose(file);
    return static_cast<double>(resident * (sysconf(_SC_PAGESIZE) / 1024));
}

std::string Kilobytes(double memory) { return std::to_string(static_cast<int>(memory)) + " kB"; }

std::string Reading(int dev, int ch, int pass) {
    char text[32];
    std::snprintf(text, sizeof text, "%+.8E", TrendReading(dev, ch, -pass));
    return text;
}

/// One run, which goes from stage to stage as its passes begin.
class Passes {
public:
    void Run() {
        for (const Integer dev : Each(kDevices)) {
            SlotOf(dev) = dev;
            FoundSession(dev) = dev;
            InstrSession(dev) = static_cast<ViSession>(dev + 1);
            ChannelCount(dev) = kChannels;
            ScanModeWord(dev) = "SCAN";
            The<Form1>().Combo1.AddItem("Device " + Str(dev + 1));
        }
        DeviceCount = kDevices;
        The<Form1>().Show();
        The<Form1>().Command6_Click();
        InstantWire::channels = std::to_string(kChannels) + "\n";
        InstantWire::begin_pass = [this] { BeginPass(); };
        InstantWire::Use();
        The<Form1>().Command3_Click();
    }

private:
    void Report() const {
        Print({1, "a pass of 4 x 20 channels with its 80 traces of 162 points, on the screen",
               "the same segments by a bare Bresenham, one copy of the plot, the 20 changed cells painted once", 2},
              alone_);
        Print({2, "the same with See Value open", "the same, and its page painted once", 2}, with_see_value_);
        Print({14, "memory at pass 1000", "at pass 160", 1.02}, memory_, Kilobytes);
    }

    static constexpr int kFull = 163;                            // the pass from which plot and tables are full
    static constexpr int kClosed = kFull + kPassesMeasured + 2;  // See Value is closed
    static constexpr int kEnd = kClosed + kPassesMeasured + 2;   // and open again
    static constexpr int kMemoryFrom = 160;
    static constexpr int kMemoryTo = 1000;
    static constexpr int kMemorySamples = 10;

    /// The pass before ends here.
    void BeginPass() {
        const double now = CpuTime();
        const int done = pass_;
        if (done > kFull && done < kClosed) with_see_value_.Add(now - start_, LimitOf(done, true));
        if (done > kClosed && done < kEnd) alone_.Add(now - start_, LimitOf(done, false));
        if (done == 1) LimitOf(done, true);  // its memory is in use from the beginning
        if (done == kClosed) The<DATA_Table>().Hide();
        if (done == kEnd) The<Form1>().Command6_Click();
        if (done >= kMemoryFrom && done < kMemoryFrom + kMemorySamples) memory_.limit.push_back(MemoryInUse());
        if (done >= kMemoryTo) memory_.work.push_back(MemoryInUse());
        if (done == kMemoryTo + kMemorySamples - 1) {
            Report();
            ExitNow(0);  // the run would end with a message that waits for the user
        }
        ++pass_;
        for (int dev = 0; dev < kDevices; ++dev) {
            std::string& readings = InstantWire::readings[dev];
            readings.clear();
            for (int ch = 0; ch < kChannels; ++ch) readings += (ch == 0 ? "" : ",") + Reading(dev, ch, pass_);
            readings += '\n';
        }
        start_ = CpuTime();
    }

    double LimitOf(int pass, bool with_see_value) {
        plot_.Prepare(kDevices, kChannels, pass);
        std::vector<QString> texts;
        for (int ch = 0; ch < kChannels; ++ch) texts.push_back(QString::fromStdString(Reading(0, ch, pass)));
        const double start = CpuTime();
        plot_.Paint();
        plot_.Blit();
        for (int ch = 0; ch < kChannels; ++ch) live_table_.SetText(ch / 10, ch % 10, texts[std::size_t(ch)]);
        live_table_.Paint();
        if (with_see_value) {
            see_value_.Roll(2);
            for (int col = 0; col < kSeenColumns; ++col)
                see_value_.SetText(kSeenRows - 1, col, texts[std::size_t(col)]);
            see_value_.Paint();
        }
        return CpuTime() - start;
    }

    // What can be seen of a table of See Value.
    static constexpr int kSeenRows = 42;
    static constexpr int kSeenColumns = 6;

    int pass_ = 0;
    double start_ = 0;
    Pairs alone_;
    Pairs with_see_value_;
    Pairs memory_;
    BarePlot plot_;
    BareTable live_table_{2, 10, 92, 20, FittingFont(QApplication::font(), "+1.25009179E+00", 88)};
    BareTable see_value_{kSeenRows, kSeenColumns, 99, 16, QApplication::font()};
};

}  // namespace
}  // namespace vantrel

int main() {
    vantrel::SetUpHiddenScreen();
    vantrel::VirtualClock clock;
    vantrel::Passes().Run();
}
