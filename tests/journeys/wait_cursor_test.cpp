// The pointer while a long record is numbered, and while another program keeps one locked.
#include "platform/errors.h"
#include "records/browser_desk.h"
#include "support/engine_steps.h"
#include "windows/Record_View_Draw.h"

#include <QApplication>
#include <QCursor>
#include <QGuiApplication>
#include <optional>
#include <sqlite3.h>

namespace vantrel {
namespace {

bool Waits() {
    const QCursor* cursor = QGuiApplication::overrideCursor();
    return cursor != nullptr && cursor->shape() == Qt::WaitCursor;
}

/// A record of 3000 rows whose numbers are wrong from the second on.
class WaitCursor : public BrowserDesk {
protected:
    void SetUp() override {
        OpenConnected(1);
        MakeRecord(Entry("Record1.mdb"), 3001);
        TakeOut("Record1.mdb", 2, 2);
    }
    void Watch() {
        steps_.emplace([this] { ++(Waits() ? with_it_ : without_it_); });
    }
    void ExpectWaiting() {
        steps_.reset();
        EXPECT_GT(with_it_, 50);
        EXPECT_EQ(without_it_, 0);
        EXPECT_FALSE(Waits()) << "at the end";
    }

private:
    std::optional<EngineSteps> steps_;
    int with_it_ = 0;
    int without_it_ = 0;
};

TEST_F(WaitCursor, Shows_while_the_browser_numbers_a_long_record_and_its_pages_are_turned) {
    OpenBrowser();
    Watch();
    OpenEntry("Record1.mdb");
    Next();
    ExpectWaiting();
    EXPECT_EQ(ShownNumbers(), Counting(1001, 2000));
}

TEST_F(WaitCursor, Shows_while_the_record_plot_numbers_a_long_record) {
    The<Record_View_Draw>().Show();
    DoEvents();
    Watch();
    user.Pick("Record_View_Draw", "Combo_record", "Record1.mdb");
    user.Pick("Record_View_Draw", "Combo_chan", "CH1");
    // Its first yield comes with the first row that it draws.
    QMetaObject::invokeMethod(
        qApp, [this] { ExpectWaiting(); }, Qt::QueuedConnection);
    The<Record_View_Draw>().Command1_Click();
}

/// The clock of a desk; looks at the pointer in every sleep.
class WatchedClock : public Clock {
public:
    explicit WatchedClock(Clock& clock) : clock_(clock) { UseClock(this); }
    ~WatchedClock() override { UseClock(&clock_); }
    WatchedClock(const WatchedClock&) = delete;
    WatchedClock& operator=(const WatchedClock&) = delete;

    DateTime Now() override { return clock_.Now(); }
    void Sleep(int milliseconds) override {
        ++(Waits() ? with_it : without_it);
        clock_.Sleep(milliseconds);
    }

    int with_it = 0;
    int without_it = 0;

private:
    Clock& clock_;
};

TEST_F(WaitCursor, Shows_while_Draw_waits_for_a_record_that_is_locked) {
    The<Record_View_Draw>().Show();
    DoEvents();
    user.Pick("Record_View_Draw", "Combo_record", "Record1.mdb");
    user.Pick("Record_View_Draw", "Combo_chan", "CH1");
    sqlite3* other = nullptr;
    sqlite3_open(Entry("Record1.mdb").c_str(), &other);
    ASSERT_EQ(sqlite3_exec(other, "begin exclusive", nullptr, nullptr, nullptr), SQLITE_OK);
    {
        const WatchedClock watched(clock);
        The<Record_View_Draw>().Command1_Click();
        EXPECT_EQ(watched.with_it, 200);
        EXPECT_EQ(watched.without_it, 0);
    }
    sqlite3_close(other);
    EXPECT_EQ(user.Messages(), (Texts{"The record cannot be drawn.\n\n" + ErrorText(kLockedByOther)}));
    EXPECT_FALSE(Waits()) << "at the end";
}

TEST_F(WaitCursor, Shows_while_Start_numbers_a_long_record_and_not_in_the_run) {
    Assign({"Record1"});
    bool waits_in_run = false;
    AfterScans(1, [&] { waits_in_run = Waits(); });
    Watch();
    AfterScans(0, [&] { ExpectWaiting(); });
    RunScans(2);
    EXPECT_FALSE(waits_in_run);
}

}  // namespace
}  // namespace vantrel
