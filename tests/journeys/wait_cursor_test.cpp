// The pointer while a long record is numbered.
#include "records/browser_desk.h"
#include "support/engine_steps.h"
#include "windows/Record_View_Draw.h"

#include <QApplication>
#include <QCursor>
#include <QGuiApplication>
#include <optional>

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
