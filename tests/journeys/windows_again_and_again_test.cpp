// Each window opened and closed fifty times: none keeps anything of the times before.
#include "platform/toolkit/events.h"
#include "support/heap.h"
#include "support/records.h"
#include "support/rounds.h"
#include "support/run_desk.h"
#include "windows/DATA_Table.h"
#include "windows/DB_SET.h"
#include "windows/DCI_ACI_SET.h"
#include "windows/Record_View_Form.h"
#include "windows/about_form.h"

#include <QPixmapCache>
#include <ostream>

namespace vantrel {
namespace {

constexpr int kTimes = 50;
/// What lists and caches that still fill up may take in all. A window that stays is many times that, fifty times.
constexpr std::int64_t kSlackBytes = 64'000;

struct Opening {
    std::string window;
    std::function<void(User& user)> open;
    std::function<void(User& user)> steps = [](User&) {};  ///< while it is open
};

void PrintTo(const Opening& opening, std::ostream* out) { *out << opening.window; }

class Windows : public Desk, public testing::WithParamInterface<Opening> {
protected:
    /// Opens the window, works it, and closes it by its close box.
    void OpenAndClose() {
        const auto& [window, open, steps] = GetParam();
        bool has_come = false;
        user.WhenShown(window, [&] {
            has_come = true;
            steps(user);
            user.Close(window);
        });
        open(user);
        DoEvents();
        EXPECT_TRUE(has_come);
        EXPECT_FALSE(user.Sees(window));
    }
};

TEST_P(Windows, Opened_fifty_times_hold_no_more_than_after_ten) {
    QPixmapCache::setCacheLimit(0);  // of pictures of the toolkit's, which has a limit
    Open(Scanner(0));
    Connect({0});
    wire->bench.SetRecording(false);
    MakeRecord(Record("Record1"), 20, [](int row, int channel) { return std::to_string(row * channel); });
    for (int time = 0; time < 10; ++time) OpenAndClose();
    const std::int64_t before = AllocatedBytes();
    for (int time = 10; time < kTimes; ++time) OpenAndClose();
    Tried(kTimes, "windows opened and closed");
    EXPECT_LT(AllocatedBytes() - before, kSlackBytes);
}

void ShowRecord(User& user) {
    user.Choose("Record_View_Form", "List1", "Record1.mdb");
    user.Click("Record_View_Form", "Command2");
}

void DrawRecord(User& user) {
    user.Pick("Record_View_Draw", "Combo_record", "Record1.mdb");
    user.Pick("Record_View_Draw", "Combo_chan", "CH1");
    user.Click("Record_View_Draw", "Command1");
}

const std::vector<Opening> kOpenings = {
    {"Connect", [](User& user) { user.Menu("Connected_to_Instrument"); }},
    {"Set_Dev", [](User& user) { user.Menu("set_sc"); }},
    {"DCI_ACI_SET", [](User&) { The<DCI_ACI_SET>().ShowModal(); }},
    {"Form4", [](User& user) { user.Menu("set_read"); }},
    {"Form3", [](User& user) { user.Menu("set_draw"); }},
    {"Form2", [](User& user) { user.Click("Form1", "Command8"); }},
    {"DB_SET", [](User& user) { user.Click("Form1", "Command10"); }},
    {"DATA_Table", [](User& user) { user.Click("Form1", "Command6"); }},
    {"Record_View_Form", [](User& user) { user.Click("Form1", "Command7"); }, ShowRecord},
    {"Record_View_Draw", [](User& user) { user.Click("Form1", "Command9"); }, DrawRecord},
    {"about_form", [](User& user) { user.Menu("About"); }},
};

INSTANTIATE_TEST_SUITE_P(Each, Windows, testing::ValuesIn(kOpenings),
                         [](const auto& test) { return test.param.window; });

}  // namespace
}  // namespace vantrel
