// The record plot on the screen, and records for it whose rows are as a test wants them.
#pragma once

#include "platform/toolkit/events.h"
#include "plot/expected_plot.h"
#include "support/desk.h"
#include "support/errors.h"
#include "support/records.h"
#include "windows/Record_View_Draw.h"

#include <QAbstractEventDispatcher>
#include <QApplication>
#include <QObject>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace vantrel {

/// What stands in one cell; nullopt is Null.
using Cell = std::optional<std::string>;

inline constexpr const char* kDialog = "Record_View_Draw";
inline constexpr Colour kYellow = RGB(255, 255, 0);
inline constexpr Colour kPink = RGB(255, 128, 192);
inline constexpr double kGap = ExpectedRecordPlot::kGap;

class RecordPlotDesk : public Desk {
protected:
    /// Puts rows into the record `name`, made if need be; `cell` says what is in a row's column, "NUM" or "CH1" ...
    /// "CH20".
    void AddRows(const std::string& name, int rows,
                 const std::function<Cell(int row, const std::string& column)>& cell) {
        if (!FileExists(Record(name))) MakeRecord(Record(name), 0);
        Database database = TheDBEngine().OpenDatabase(Record(name));
        Recordset data = database.OpenRecordset("select * from data");
        Database::Transaction all(database);
        for (int row = 1; row <= rows; ++row) {
            data.AddNew();
            const auto set = [&](const std::string& column) {
                if (const Cell text = cell(row, column)) data.Set(column, *text);
            };
            set("NUM");
            for (int k = 1; k <= 20; ++k) set("CH" + std::to_string(k));
            data.Update();
        }
        all.Commit();
        database.Close();
    }
    /// A record with these readings of CH1, numbered from 1; the other channels hold blanks.
    void MakeReadings(const std::string& name, const std::vector<Cell>& readings) {
        AddRows(name, static_cast<int>(readings.size()), [&](int row, const std::string& column) -> Cell {
            if (column == "NUM") return std::to_string(row);
            return column == "CH1" ? readings[static_cast<std::size_t>(row) - 1] : Cell(" ");
        });
    }
    /// A record with these row numbers, in which CH1 reads the place of the row, from 1.
    void MakeNumbers(const std::string& name, const std::vector<Cell>& numbers) {
        AddRows(name, static_cast<int>(numbers.size()), [&](int row, const std::string& column) -> Cell {
            if (column == "NUM") return numbers[static_cast<std::size_t>(row) - 1];
            return std::to_string(row);
        });
    }
    /// Column `column` of the record's rows; 0 is NUM, k is CHk. Null reads as "<Null>".
    std::vector<std::string> Column(const std::string& name, std::size_t column) const {
        std::vector<std::string> texts;
        for (const auto& row : RowsOf(Record(name))) texts.push_back(row[column == 0 ? 0 : column + 1]);
        return texts;
    }

    /// Shows the dialog, with record and channel chosen and traces in yellow.
    void Choose(const std::string& name, const std::string& channel = "CH1") {
        if (!user.Sees(kDialog)) {
            The<Record_View_Draw>().Show();
            DoEvents();
            SetColour(kYellow);
        }
        user.Pick(kDialog, "Combo_record", name + ".mdb");
        user.Pick(kDialog, "Combo_chan", channel);
    }
    void SetColour(Colour colour) {
        user.AnswerColor(colour);
        user.Click(kDialog, "color_box");
    }
    void SetRange(int from, int to) {
        user.Click(kDialog, "draw_limit");
        user.Type(kDialog, "draw_start", std::to_string(from));
        user.Type(kDialog, "draw_stop", std::to_string(to));
    }
    void Draw() { user.Click(kDialog, "Command1"); }

    /// Has `action` done in the yield behind row `row` of the next drawing that comes to it.
    void InYieldOf(double row, const User::Action& action) {
        const auto done = std::make_shared<bool>(false);
        EachDispatch([=] {
            if (*done || The<Record_View_Draw>().Row_Index != row) return;
            *done = true;
            QMetaObject::invokeMethod(qApp, action, Qt::QueuedConnection);
        });
        awaited_.push_back(done);
    }
    /// Runs `routine` whenever events are dispatched while a plot is being drawn.
    void EachDispatch(const std::function<void()>& routine) {
        QObject::connect(QAbstractEventDispatcher::instance(), &QAbstractEventDispatcher::awake, &watches_, [=] {
            if (IsLoaded<Record_View_Draw>() && !The<Record_View_Draw>().Slider1.Enabled()) routine();
        });
    }
    ~RecordPlotDesk() override {
        for (const auto& done : awaited_) EXPECT_TRUE(*done) << "no drawing came to that row";
    }

    static Picture Plot() { return The<Record_View_Draw>().draw_pic.Image(); }
    void ExpectShown(const std::string& row, const std::string& value) const {
        EXPECT_EQ(user.Text(kDialog, "Text1"), row);
        EXPECT_EQ(user.Text(kDialog, "show_value"), value);
    }
    void ExpectSlider(int min, int max, int value) const {
        const Slider& slider = The<Record_View_Draw>().Slider1;
        EXPECT_EQ(slider.Min(), min);
        EXPECT_EQ(slider.Max(), max);
        EXPECT_EQ(slider.Value(), value);
    }

private:
    QObject watches_;
    std::vector<std::shared_ptr<bool>> awaited_;
};

}  // namespace vantrel
