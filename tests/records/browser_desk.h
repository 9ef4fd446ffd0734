// A desk at which records are browsed: record files of all kinds in the folder, and the browser over them.
#pragma once

#include "platform/dbengine.h"
#include "records/record_desk.h"
#include "support/records.h"
#include "support/texts.h"
#include "windows/Record_View_Form.h"

#include <filesystem>
#include <map>
#include <string>
#include <vector>

namespace vantrel {

/// What channel `channel` of row `row` holds in the records of these tests.
inline std::string RowAndChannel(int row, int channel) { return std::to_string(row) + "/" + std::to_string(channel); }

/// The 22 columns of a record.
inline Texts RecordColumns() {
    Texts columns = {"NUM", "Time"};
    for (const std::string& channel : Counting(1, 20)) columns.push_back("Ch" + channel);
    return columns;
}

/// A row's columns by name; one that is not there is Null.
using Row = std::map<std::string, std::string>;

inline Row RowNumbered(const std::string& number) {
    Row row;
    for (const std::string& column : RecordColumns()) row[column] = " ";
    row["NUM"] = number;
    return row;
}

class BrowserDesk : public RecordDesk {
protected:
    inline static const std::string kBrowser = "Record_View_Form";

    /// Any entry of the folder `db`.
    std::string Entry(const std::string& name) const { return folder / ("db/" + name); }
    /// Makes a database with one table, whatever is asked for.
    void MakeTable(const std::string& entry, const std::string& name, const Texts& columns,
                   const std::vector<Row>& rows) const {
        Database database = TheDBEngine().CreateDatabase(Entry(entry), "", 0);
        TableDef table;
        table.Name = name;
        for (const std::string& column : columns) table.Fields.Append({column});
        database.AppendTableDef(table);
        Recordset data = database.OpenRecordset("select * from " + name);
        for (const Row& row : rows) {
            data.AddNew();
            for (const auto& [column, text] : row) data.Set(column, text);
            data.Update();
        }
        database.Close();
    }
    /// Makes a record whose rows bear these numbers.
    void MakeNumbered(const std::string& entry, const Texts& numbers) const {
        std::vector<Row> rows;
        for (const std::string& number : numbers) rows.push_back(RowNumbered(number));
        MakeTable(entry, "DATA", RecordColumns(), rows);
    }
    /// Takes the rows from place `first` to place `last`, from 1, out of a record and leaves the numbers of the rest.
    void TakeOut(const std::string& entry, int first, int last) const {
        Database database = TheDBEngine().OpenDatabase(Entry(entry));
        Database::Transaction all(database);
        Recordset rows = database.OpenRecordset("select * from data");
        for (int place = 1; place <= last; ++place) {
            if (place >= first) rows.Delete();
            rows.MoveNext();
        }
        all.Commit();
        database.Close();
    }

    /// Opens the browser beside the main window, which comes first if it is not there.
    void OpenBrowser() {
        if (!user.Sees("Form1")) Open("");
        user.Click("Form1", "Command7");
    }
    void Choose(const std::string& entry) { user.Choose(kBrowser, "List1", entry); }
    /// Chooses an entry and presses Open.
    void OpenEntry(const std::string& entry) {
        Choose(entry);
        user.Click(kBrowser, "Command2");
    }
    /// Chooses an entry and presses Deleted.
    void DeleteEntry(const std::string& entry) {
        Choose(entry);
        user.Click(kBrowser, "Command3");
    }
    void Fresh() { user.Click(kBrowser, "Command1"); }
    void Next() { user.Click(kBrowser, "next_DB"); }
    void Previous() { user.Click(kBrowser, "prev_DB"); }
    Texts Listed() const { return user.Entries(kBrowser, "List1"); }

    std::string Cell(int row, int col) const { return user.CellText(kBrowser, "MSFlexGrid1", row, col); }
    /// The rows of the grid, the two of headings included.
    int GridRows() const { return user.RowCount(kBrowser, "MSFlexGrid1"); }
    /// Column 0 below the headings.
    Texts ShownNumbers() const {
        Texts numbers;
        for (int row = 2; row < GridRows(); ++row) numbers.push_back(Cell(row, 0));
        return numbers;
    }
    Texts ShownRow(int row) const {
        Texts cells;
        for (int col = 0; col < 22; ++col) cells.push_back(Cell(row, col));
        return cells;
    }
    /// Expects these paging buttons to be enabled, and no other.
    void ExpectButtons(bool previous, bool next) const {
        EXPECT_EQ(user.Enabled(kBrowser, "prev_DB"), previous) << "Previous";
        EXPECT_EQ(user.Enabled(kBrowser, "next_DB"), next) << "Next";
    }
};

}  // namespace vantrel
