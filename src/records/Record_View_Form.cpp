#include "windows/Record_View_Form.h"

#include "platform/files.h"
#include "platform/text.h"
#include "platform/toolkit/desktop.h"
#include "platform/toolkit/dialogs.h"
#include "records/record_store.h"
#include "records/scan_grid.h"
#include "state/shared.h"

#include <algorithm>
#include <cstdint>

namespace vantrel {

namespace {

constexpr double kPage = 1000;  // rows, and the size from which a record has pages
constexpr int kHeadings = 2;    // rows of the grid

}  // namespace

Record_View_Form::Record_View_Form() : Window("Record_View_Form", "Record View", {10935, 8295}) {
    prev_DB.SetEnabled(false);
    next_DB.SetEnabled(false);
    Command1.OnClick = [this] { Command1_Click(); };
    Command2.OnClick = [this] { Command2_Click(); };
    Command3.OnClick = [this] { Command3_Click(); };
    Command4.OnClick = [this] { Command4_Click(); };
    Command5.OnClick = [this] { Command5_Click(); };
    prev_DB.OnClick = [this] { prev_DB_Click(); };
    next_DB.OnClick = [this] { next_DB_Click(); };
}

void Record_View_Form::Form_Load() {
    LayOutScanGrid(MSFlexGrid1, kChannels);
    MSFlexGrid1.SetToolTipText("Select a record above and press Open.");
    Command1_Click();
}

void Record_View_Form::Command1_Click() {
    List1.Clear();
    for (const std::string& entry : DbEntries()) List1.AddItem(entry);  // Kept: K-mdb
    List1.SetToolTipText(List1.ListCount() > 0
                             ? ""
                             : "There is no record yet: the first Start with a record from Set Record "
                               "makes one.");
}

void Record_View_Form::Command2_Click() {
    RowFrom = 1;
    RowTo = -1;  // Kept: K-pages
    const std::string entry = List1.Text();
    if (!Contains(entry, "mdb")) {
        MsgBox("Please select a Record.");
        return;
    }
    LoadRecord(DbEntryPath(entry));
    RecordFile = DbEntryPath(entry);  // Kept: K-row-total
    Command1_Click();                 // Kept: K-list-again
}

void Record_View_Form::LoadRecord(const std::string& path) {
    const BusyCursor busy;
    Database database = TheDBEngine().OpenDatabase(path);  // Kept: K-no-record
    Recordset rows = database.OpenRecordset("select * from data");
    MSFlexGrid1.SetRows(kHeadings);
    if (rows.RecordCount() != 0) {
        RequireRecordColumns(rows);
        Database::Transaction walk(database);
        Renumber<std::int32_t>(rows);
        walk.Commit();
    }
    if (rows.RecordCount() == 0) {
        MsgBox("The Record is NULL");
        database.Close();
        return;
    }
    rows.MoveLast();
    RowTotal = static_cast<double>(rows.RecordCount());
    MSFlexGrid1.SetToolTipText("");
    // Kept: K-pages
    if (RowTotal >= kPage) {
        if (RowTo == -1) {
            RowTo = kPage;
            next_DB.SetEnabled(true);  // Kept: K-pages
        }
        // A page that lies behind the end of a record that has become shorter has no rows.
        MSFlexGrid1.SetRows(static_cast<int>(std::max(RowTo - RowFrom + 1, 0.0)) + kHeadings);
    } else {
        RowTo = RowTotal;
        MSFlexGrid1.SetRows(static_cast<int>(RowTotal) + kHeadings);
        prev_DB.SetEnabled(false);
        next_DB.SetEnabled(false);
    }
    ShowRows(database);
    database.Close();
}

void Record_View_Form::ShowRows(Database& database) {
    const auto first = static_cast<std::int64_t>(RowFrom);
    const auto last = static_cast<std::int64_t>(RowTo);
    for (std::int64_t i = first; i <= last; ++i) {
        const int row = static_cast<int>(i + kHeadings - first);
        if (row >= MSFlexGrid1.Rows()) return;  // a record that has become shorter than its page
        const Recordset found = database.OpenRecordset("select * from data  where NUM='" + std::to_string(i) + "'");
        if (found.Bof()) continue;
        MSFlexGrid1.SetTextMatrix(row, 0, found.Text("num"));
        MSFlexGrid1.SetTextMatrix(row, 1, found.Text("Time"));
        for (int k = 1; k <= kChannels; ++k) MSFlexGrid1.SetTextMatrix(row, k + 1, found.Text("CH" + Str(k)));
    }
}

void Record_View_Form::next_DB_Click() {
    RowFrom = RowTo + 1;
    prev_DB.SetEnabled(RowFrom != 1);
    if (RowTo + kPage < RowTotal) {
        RowTo += kPage;
        next_DB.SetEnabled(true);
    } else {
        RowTo = RowTotal;  // Kept: K-row-total
        next_DB.SetEnabled(false);
    }
    LoadRecord(RecordFile);
}

void Record_View_Form::prev_DB_Click() {
    RowTo = RowFrom - 1;
    next_DB.SetEnabled(RowTo != RowTotal);
    if (RowFrom - kPage == 1) {
        RowFrom = 1;
        prev_DB.SetEnabled(false);
    } else {
        RowFrom -= kPage;
        prev_DB.SetEnabled(true);
    }
    LoadRecord(RecordFile);
}

void Record_View_Form::Command3_Click() {
    const std::string entry = List1.Text();
    if (!Contains(entry, "Record")) return;  // Kept: K-delete-word
    DeleteRecord(DbEntryPath(entry));
    Command1_Click();
}

void Record_View_Form::DeleteRecord(const std::string& path) {
    Beep();
    const std::string entry = "\"" + List1.Text() + "\"";
    if (AskYesNo("Will you delete the " + entry + "?") != kYes) return;
    if (FileExists(path))
        Kill(path);  // Kept: K-deleted
    else             // a folder, or gone meanwhile
        MsgBox("There is no file " + entry + " to delete.");
}

void Record_View_Form::Command4_Click() { Unload<Record_View_Form>(); }

}  // namespace vantrel
