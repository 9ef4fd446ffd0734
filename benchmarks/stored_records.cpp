// Stored records: a row on its way to the disk, the walk that numbers the rows, a page, a CSV file, a plot and a slider
// step, each held against the bare database library at the same piece of work. With the argument "curves": the cost of
// walk, page and plot against the number of rows.
#include "ratio.h"
#include "records/record_store.h"
#include "state/shared.h"
#include "support/temp_folder.h"
#include "windows/Record_View_Draw.h"
#include "windows/Record_View_Form.h"
#include "with_windows.h"

#include <QCoreApplication>
#include <QLineEdit>
#include <QWidget>
#include <algorithm>
#include <array>
#include <chrono>
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <sqlite3.h>
#include <string>
#include <utility>
#include <vector>

namespace vantrel {
namespace {

constexpr int kPage = 1000;
constexpr int kPlotted = 25000;
constexpr int kColumns = 22;
constexpr int kChannels = 20;

std::string NameOf(int rows) { return "Record" + std::to_string(rows); }
std::string PathOf(int rows) { return DbEntryPath(NameOf(rows) + ".mdb"); }

std::string Reading(int row, int channel) {
    std::array<char, 32> text{};
    std::snprintf(text.data(), text.size(), "%+.8E", 4 * std::sin(0.003 * row) + 0.3 * std::sin(0.7 * (row + channel)));
    return text.data();
}

/// Gives the file a new time, as if someone had written to it: what the program knows of its content counts no longer.
void MakeUnknown(const std::string& path) {
    static auto time = std::filesystem::file_time_type::clock::now();
    time += std::chrono::seconds(1);
    std::filesystem::last_write_time(path, time);
}

/// The bare library on a file.
class Bare {
public:
    explicit Bare(const std::string& path) { sqlite3_open(path.c_str(), &database_); }
    ~Bare() { sqlite3_close(database_); }
    Bare(const Bare&) = delete;
    Bare& operator=(const Bare&) = delete;

    void Do(const std::string& sql) {
        if (sqlite3_exec(database_, sql.c_str(), nullptr, nullptr, nullptr) == SQLITE_OK) return;
        std::fprintf(stderr, "%s: %s\n", sql.c_str(), sqlite3_errmsg(database_));
        std::abort();
    }
    sqlite3_stmt* Prepare(const std::string& sql) {
        sqlite3_stmt* statement = nullptr;
        sqlite3_prepare_v2(database_, sql.c_str(), -1, &statement, nullptr);
        return statement;
    }
    sqlite3* Handle() const { return database_; }

    /// Every number once, in stored order.
    void ReadNumbers() {
        sqlite3_stmt* select = Prepare("select NUM from data order by _rowid_");
        while (sqlite3_step(select) == SQLITE_ROW) Keep(sqlite3_column_text(select, 0));
        sqlite3_finalize(select);
    }
    /// Rows `first` to `last`, each found by itself; `use(row, statement)` has `columns` of each.
    template <class Use>
    void ReadRows(int first, int last, const std::string& columns, const Use& use) {
        sqlite3_stmt* select = Prepare("select " + columns + " from data where _rowid_=?");
        for (int row = first; row <= last; ++row) {
            sqlite3_bind_int(select, 1, row);
            sqlite3_step(select);
            use(row, select);
            sqlite3_reset(select);
        }
        sqlite3_finalize(select);
    }
    void ReadPage(int first) {
        ReadRows(first, first + kPage - 1, "*", [](int, sqlite3_stmt* row) {
            for (int i = 0; i < kColumns; ++i) Keep(sqlite3_column_text(row, i));
        });
    }

private:
    sqlite3* database_ = nullptr;
};

void MakeRecordFile(int rows) {
    Bare bare(PathOf(rows));
    std::string columns = "NUM TEXT,Time TEXT";
    std::string places = "?,?";
    for (int k = 1; k <= kChannels; ++k) {
        columns += ",Ch" + std::to_string(k) + " TEXT";
        places += ",?";
    }
    bare.Do("pragma synchronous=off; create table DATA(" + columns + "); begin");
    sqlite3_stmt* insert = bare.Prepare("insert into DATA values(" + places + ")");
    const auto bind = [&](int place, const std::string& text) {
        sqlite3_bind_text(insert, place, text.c_str(), static_cast<int>(text.size()), SQLITE_TRANSIENT);
    };
    constexpr int kReadings = 5000;
    std::vector<std::string> readings;
    for (int i = 0; i < kReadings; ++i) readings.push_back(Reading(i, 1));
    const auto start = CDate("2026-03-01 08:00:00").ms;
    for (int row = 1; row <= rows; ++row) {
        bind(1, std::to_string(row));
        bind(2, DateText({start + 1000 * static_cast<std::int64_t>(row)}));
        for (int k = 0; k < kChannels; ++k) bind(k + 3, readings[static_cast<std::size_t>((row + 17 * k) % kReadings)]);
        sqlite3_step(insert);
        sqlite3_reset(insert);
    }
    sqlite3_finalize(insert);
    bare.Do("commit");
}

// ---- Durable row

void DurableRow() {
    for (const char* name : {"Record1.mdb", "Bare.mdb"}) std::filesystem::copy_file(PathOf(1000), DbEntryPath(name));
    Bare bare(DbEntryPath("Bare.mdb"));
    bare.Do("pragma journal_mode=delete; pragma synchronous=extra");
    std::string places = "?";
    for (int i = 1; i < kColumns; ++i) places += ",?";
    sqlite3_stmt* insert = bare.Prepare("insert into DATA values(" + places + ")");
    const std::string reading = Reading(1, 1);
    RecordName(0) = "Record1";
    CreateRecord(0);
    OpenRecord(0);
    int number = 1000;
    int bare_number = number;
    Print({4, "durable row", "bare library, same settings", 1.15},
          InTurn(
              300,
              [&] {
                  Recordset& rows = RecordRs(0);
                  rows.AddNew();
                  rows.Set("num", static_cast<double>(++number));
                  rows.Set("Time", Now());
                  for (int k = 1; k <= kChannels; ++k) rows.Set("CH" + Str(k), reading);
                  rows.Update();
              },
              [&] {
                  const std::string text = std::to_string(++bare_number);
                  const std::string time = DateText(Now());
                  sqlite3_bind_text(insert, 1, text.c_str(), -1, SQLITE_STATIC);
                  sqlite3_bind_text(insert, 2, time.c_str(), -1, SQLITE_STATIC);
                  for (int i = 3; i <= kColumns; ++i) sqlite3_bind_text(insert, i, reading.c_str(), -1, SQLITE_STATIC);
                  sqlite3_step(insert);
                  sqlite3_reset(insert);
              }));
    sqlite3_finalize(insert);
    CloseRecord(0);
}

// ---- Walk

/// What the browser does to number a record.
void Walk(int rows) {
    Database database = TheDBEngine().OpenDatabase(PathOf(rows));
    Recordset all = database.OpenRecordset("select * from data");
    Database::Transaction walk(database);
    Renumber<std::int32_t>(all);
    walk.Commit();
    all.MoveLast();
    Keep(all.RecordCount());
    database.Close();
}

Pairs WalkOverRight(int rows, int rounds) {
    return InTurn(
        rounds, [&] { MakeUnknown(PathOf(rows)); }, [&] { Walk(rows); }, [] {},
        [&] { Bare(PathOf(rows)).ReadNumbers(); });
}

void WalkAtStart() {
    constexpr int kRows = 32767;
    RecordName(0) = NameOf(kRows);
    CreateRecord(0);
    Print({5, "walk of 32,767 right rows at Start, at first sight", "one ordered scan of NUM", 1.5},
          InTurn(
              20, [&] { MakeUnknown(PathOf(kRows)); },
              [] {
                  OpenRecord(0);
                  CloseRecord(0);
              },
              [] {}, [&] { Bare(PathOf(kRows)).ReadNumbers(); }));
}

void Count(sqlite3_context* context, int, sqlite3_value**) {
    auto& number = *static_cast<std::int64_t*>(sqlite3_user_data(context));
    const std::string text = std::to_string(++number);
    sqlite3_result_text(context, text.data(), static_cast<int>(text.size()), SQLITE_TRANSIENT);
}

Pairs WalkOverWrong(int rows, int rounds) {
    const auto spoil = [&] { Bare(PathOf(rows)).Do("pragma synchronous=off; update data set NUM=_rowid_+1"); };
    return InTurn(
        rounds, spoil, [&] { Walk(rows); }, spoil,
        [&] {
            Bare bare(PathOf(rows));
            std::int64_t number = 0;
            sqlite3_create_function(bare.Handle(), "counted", 0, SQLITE_UTF8, &number, Count, nullptr, nullptr);
            bare.Do("pragma journal_mode=delete; pragma synchronous=extra; update data set NUM=counted()");
        });
}

// ---- Browser

/// With what of the page can be seen on the screen.
void ShowFirstPage(int rows) {
    Record_View_Form& browser = The<Record_View_Form>();
    browser.RowFrom = 1;
    browser.RowTo = -1;
    browser.RecordFile = PathOf(rows);
    browser.LoadRecord(browser.RecordFile);
    DoEvents();
}

Pairs FirstPage(int rows, int rounds) {
    return InTurn(
        rounds, [&] { MakeUnknown(PathOf(rows)); }, [&] { ShowFirstPage(rows); }, [] {},
        [&] {
            Bare bare(PathOf(rows));
            bare.ReadNumbers();
            bare.ReadPage(1);
        });
}

Pairs NextPage(int rows, int rounds) {
    return InTurn(
        rounds, [&] { ShowFirstPage(rows); },
        [] {
            The<Record_View_Form>().next_DB_Click();
            DoEvents();
        },
        [] {}, [&] { Bare(PathOf(rows)).ReadPage(kPage + 1); });
}

Pairs Csv() {
    Record_View_Form& browser = The<Record_View_Form>();
    ShowFirstPage(10000);
    const std::string path = AppPath() + "/page.csv";
    browser.WritePage(path);
    const std::string text = FileBytes(path);
    return InTurn(
        100, [&] { browser.WritePage(path); },
        [&] {
            std::FILE* file = std::fopen(path.c_str(), "wb");
            std::fwrite(text.data(), 1, text.size(), file);
            std::fclose(file);
        });
}

void BrowserLines() {
    The<Record_View_Form>().Show();
    DoEvents();
    const char* first = "the scan of NUM plus 1000 reads";
    Print({7, "page 1 of 100,000 rows, first time", first, 2}, FirstPage(100000, 9));
    Print({7, "page 1 of 1,000,000 rows, first time", first, 2}, FirstPage(1000000, 5));
    for (const auto& [rows, text] : {std::pair{10000, "10,000"}, {100000, "100,000"}, {1000000, "1,000,000"}})
        Print({8, std::string("Next page of ") + text + " rows", "1000 reads", 3}, NextPage(rows, 15));
    Print({13, "CSV of a page", "the same text in one write", 3}, Csv());
    Unload<Record_View_Form>();
}

// ---- Plot

/// The plot's picture in bare memory.
class BareImage {
public:
    void Clear() { pixels_.assign(std::size_t{kWidth} * kHeight, 0); }
    /// Bresenham's line.
    void Line(int x, int y, int to_x, int to_y) {
        const int dx = std::abs(to_x - x);
        const int dy = std::abs(to_y - y);
        const int right = x < to_x ? 1 : -1;
        const int down = y < to_y ? 1 : -1;
        for (int error = dx - dy;;) {
            if (x >= 0 && x < kWidth && y >= 0 && y < kHeight) pixels_[std::size_t(y * kWidth + x)] = 0xffffff;
            if (x == to_x && y == to_y) return;
            const int twice = 2 * error;
            if (twice > -dy) {
                error -= dy;
                x += right;
            }
            if (twice < dx) {
                error += dx;
                y += down;
            }
        }
    }
    static constexpr int kWidth = 585;
    static constexpr int kHeight = 334;

private:
    std::vector<std::uint32_t> pixels_;
};

/// The last rows of a record, drawn at first sight. `with_scan`: the limit reads every number once before.
Pairs Plot(int rows, bool with_scan, int rounds) {
    const int plotted = std::min(rows, kPlotted);
    const int first = rows - plotted + 1;
    Record_View_Draw& plot = The<Record_View_Draw>();
    plot.Combo_record.SetText(NameOf(rows) + ".mdb");
    plot.Combo_chan.SetText("CH1");
    plot.Combo_record_Click();
    plot.draw_limit.SetValue(true);
    plot.draw_start.SetText(std::to_string(first));
    plot.draw_stop.SetText(std::to_string(rows));
    DoEvents();
    BareImage image;
    return InTurn(
        rounds,
        [&] {
            plot.Command2_Click();
            DoEvents();
            MakeUnknown(PathOf(rows));
        },
        [&] { plot.Command1_Click(); }, [] {},
        [&] {
            Bare bare(PathOf(rows));
            if (with_scan) bare.ReadNumbers();
            image.Clear();
            int x = 0;
            int y = BareImage::kHeight / 2;
            bare.ReadRows(first, rows, "Ch1", [&](int row, sqlite3_stmt* reading) {
                const int to_x = static_cast<int>(std::int64_t{row - first} * BareImage::kWidth / plotted);
                const int to_y = BareImage::kHeight / 2 - static_cast<int>(33.4 * sqlite3_column_double(reading, 0));
                image.Line(x, y, to_x, to_y);
                x = to_x;
                y = to_y;
                QCoreApplication::processEvents();
            });
            Keep(image);
        });
}

void PlotLines() {
    The<Record_View_Draw>().Show();
    DoEvents();
    const char* reads = "25,000 reads with a yield after each, and their lines";
    Print({9, "plot of 25,000 rows out of 25,000", reads, 2}, Plot(25000, false, 5));
    Print({9, "plot of 25,000 rows out of 100,000", reads, 2}, Plot(100000, false, 5));
    Print({9, "plot of 25,000 rows out of 1,000,000", "the same plus one scan of NUM", 2}, Plot(1000000, true, 5));
    Unload<Record_View_Draw>();
}

// ---- Slider

Pairs SliderStep(int rows, bool is_appended_to, int rounds) {
    Record_View_Draw& plot = The<Record_View_Draw>();
    plot.Show();
    plot.Record_Path = PathOf(rows);
    plot.Record_Channel = "CH1";
    plot.Slider1.SetMax(rows);
    plot.Slider1.SetMin(1);
    plot.Slider1.SetValue(rows / 2);
    DoEvents();
    Database writing = TheDBEngine().OpenDatabase(PathOf(is_appended_to ? rows : 1000));
    Recordset all = writing.OpenRecordset("select * from data");
    double number = rows;
    const auto append = [&] {
        if (!is_appended_to) return;
        all.AddNew();
        all.Set("num", ++number);
        all.Set("Time", Now());
        for (int k = 1; k <= kChannels; ++k) all.Set("CH" + Str(k), " ");
        all.Update();
    };
    QWidget window;
    QLineEdit row_field(&window);
    QLineEdit value_field(&window);
    window.show();
    DoEvents();
    int shown = rows / 2;
    int row = rows / 4;  // other pages of the file than those that were just read
    const Pairs pairs = InTurn(
        rounds,
        [&] {
            append();
            plot.Slider1.SetValue(++shown);
        },
        [&] { plot.Slider1_Click(); }, append,
        [&] {
            Bare bare(PathOf(rows));
            ++row;
            bare.ReadRows(row, row, "Ch1", [&](int, sqlite3_stmt* found) {
                row_field.setText(QString::number(row));
                value_field.setText(reinterpret_cast<const char*>(sqlite3_column_text(found, 0)));
            });
        });
    writing.Close();
    Unload<Record_View_Draw>();
    return pairs;
}

// ---- All

void PrintTable() {
    for (const int rows : {1000, 10000, 25000, 32767, 100000, 1000000}) MakeRecordFile(rows);
    DurableRow();
    WalkAtStart();
    Print({5, "walk of 1,000,000 right rows, at first sight", "one ordered scan of NUM", 1.5},
          WalkOverRight(1000000, 5));
    BrowserLines();
    PlotLines();
    const char* read = "opening the file, reading one row into two bare fields";
    Print({10, "slider step at 1,000,000 rows, repeated", read, 2}, SliderStep(1000000, false, 300));
    Print({11, "the same while a run appends to the record", read, 3}, SliderStep(1000000, true, 60));
    Print({6, "walk that renumbers 1,000,000 rows", "one UPDATE with a counting function", 1.5},
          WalkOverWrong(1000000, 5));
}

void PrintCurves() {
    The<Record_View_Form>().Show();
    The<Record_View_Draw>().Show();
    DoEvents();
    for (const int rows : {1000, 3000, 10000, 30000, 100000, 300000, 1000000}) {
        MakeRecordFile(rows);
        const int rounds = rows <= 100000 ? 7 : 3;
        PrintPoint("walk of right rows", rows, WalkOverRight(rows, rounds));
        PrintPoint("page 1", rows, FirstPage(rows, rounds));
        if (rows > kPage) PrintPoint("Next page", rows, NextPage(rows, rounds));
        PrintPoint("plot", rows, Plot(rows, true, 3));
        PrintPoint("walk that renumbers", rows, WalkOverWrong(rows, rows <= 100000 ? 5 : 2));
        std::filesystem::remove(PathOf(rows));
    }
}

}  // namespace
}  // namespace vantrel

int main(int argc, char** argv) {
    {
        vantrel::SetUpHiddenScreen();
        const vantrel::TempAppFolder folder;
        if (argc > 1 && std::string(argv[1]) == "curves")
            vantrel::PrintCurves();
        else
            vantrel::PrintTable();
    }
    vantrel::ExitNow(0);
}
