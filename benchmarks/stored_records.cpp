// Looking at a stored record of 100,000 rows: a page of the browser, and a plot of 25,000 rows, against the bare
// database library and bare painting.
#include "against_limit.h"
#include "platform/toolkit/events.h"
#include "support/records.h"
#include "support/temp_folder.h"
#include "windows/Record_View_Draw.h"
#include "windows/Record_View_Form.h"

#include <QCoreApplication>
#include <QImage>
#include <QPainter>
#include <cmath>
#include <sqlite3.h>
#include <string>

namespace vantrel {
namespace {

constexpr int kRows = 100000;
constexpr int kPage = 1000;
constexpr int kPlotted = 25000;
constexpr int kColumns = 22;

std::string RecordPath() { return DbEntryPath("Record1.mdb"); }

std::string Reading(int row, int channel) {
    return Str(4 * std::sin(0.003 * row) + 0.3 * std::sin(0.7 * (row + channel)));
}

/// The bare library on the same file.
class Bare {
public:
    Bare() { sqlite3_open(RecordPath().c_str(), &database_); }
    ~Bare() { sqlite3_close(database_); }
    Bare(const Bare&) = delete;
    Bare& operator=(const Bare&) = delete;

    void ReadNumbers() {
        sqlite3_stmt* select = Prepare("SELECT NUM FROM data");
        while (sqlite3_step(select) == SQLITE_ROW) benchmark::DoNotOptimize(sqlite3_column_text(select, 0));
        sqlite3_finalize(select);
    }

    /// Rows 1 to `count`, each found by itself; hands column `column` of each over.
    template <class Use>
    void ReadRows(int count, const std::string& column, const Use& use) {
        sqlite3_stmt* select = Prepare("SELECT " + column + " FROM data WHERE rowid = ?");
        for (int row = 1; row <= count; ++row) {
            sqlite3_bind_int(select, 1, row);
            sqlite3_step(select);
            use(row, select);
            sqlite3_reset(select);
        }
        sqlite3_finalize(select);
    }

private:
    sqlite3_stmt* Prepare(const std::string& sql) {
        sqlite3_stmt* statement = nullptr;
        sqlite3_prepare_v2(database_, sql.c_str(), -1, &statement, nullptr);
        return statement;
    }
    sqlite3* database_ = nullptr;
};

/// A page on the screen, with the walk over the whole record that comes before it. The limit: reading every number
/// once, and the rows of the page one by one.
void OpenPage(benchmark::State& state) {
    Record_View_Form& browser = The<Record_View_Form>();
    browser.Show();
    DoEvents();
    AgainstLimit(
        state,
        [&] {
            browser.RowFrom = 1;
            browser.RowTo = -1;
            browser.LoadRecord(RecordPath());
            DoEvents();
        },
        [] {
            Bare bare;
            bare.ReadNumbers();
            bare.ReadRows(kPage, "*", [](int, sqlite3_stmt* row) {
                for (int i = 0; i < kColumns; ++i) benchmark::DoNotOptimize(sqlite3_column_text(row, i));
            });
        });
    Unload<Record_View_Form>();
}
BENCHMARK(OpenPage)->UseManualTime()->Unit(benchmark::kMicrosecond);

/// A plot on the screen, with a yield after every row. The limit: reading every number once, the rows one by one, and
/// nothing but their lines, with a yield after each.
void PlotRange(benchmark::State& state) {
    Record_View_Draw& plot = The<Record_View_Draw>();
    plot.Show();
    plot.Combo_record.SetText("Record1.mdb");
    plot.Combo_chan.SetText("CH1");
    plot.Combo_record_Click();
    plot.draw_start.SetText("1");
    plot.draw_stop.SetText(std::to_string(kPlotted));
    DoEvents();
    QImage image(583, 334, QImage::Format_RGB32);
    AgainstLimit(
        state,
        [&] {
            plot.Command2_Click();
            plot.Command1_Click();
        },
        [&] {
            Bare bare;
            bare.ReadNumbers();
            image.fill(Qt::black);
            QPainter painter(&image);
            painter.setPen(Qt::white);
            QPointF from(0, 167);
            bare.ReadRows(kPlotted, "Ch1", [&](int row, sqlite3_stmt* reading) {
                const QPointF to(row * 585.0 / kPlotted, 167 - sqlite3_column_double(reading, 0) * 33.4);
                painter.drawLine(from.toPoint(), to.toPoint());
                from = to;
                QCoreApplication::processEvents();
            });
        });
    Unload<Record_View_Draw>();
}
BENCHMARK(PlotRange)->UseManualTime()->Unit(benchmark::kMicrosecond);

}  // namespace
}  // namespace vantrel

int main(int argc, char** argv) {
    {
        const vantrel::TempAppFolder folder;
        vantrel::MakeRecord(vantrel::RecordPath(), vantrel::kRows, vantrel::Reading);
        vantrel::RunBenchmarksWithWindows(argc, argv);
    }
    vantrel::ExitNow(0);
}
