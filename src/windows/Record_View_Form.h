// The record browser: the records of the folder, and the rows of one of them, a page of 1000 at a time.
#pragma once

#include "platform/dbengine.h"
#include "platform/toolkit/controls.h"
#include "platform/toolkit/dialogs.h"
#include "platform/toolkit/grid.h"
#include "platform/toolkit/window.h"

namespace vantrel {

struct Record_View_Form : Window {
    Record_View_Form();

    ListBox List1{*this, "List1", {120, 120, 8535, 2205}};
    CommandButton Command1{*this, "Command1", {8760, 120, 2055, 375}, "Fresh", "", "Read the list of records again"};
    CommandButton Command2{*this, "Command2", {8760, 600, 2055, 375}, "Open", "", "Show the selected record"};
    CommandButton Command3{*this, "Command3", {8760, 1080, 2055, 375}, "Deleted", "", "Delete the selected record"};
    CommandButton Command5{*this, "Command5", {8760, 1560, 2055, 375},
                           "CSV", "",         "Save the table as it stands in a CSV file"};
    CommandButton Command4{*this, "Command4", {8760, 2040, 2055, 375}, "Exit", "", "Close this window"};
    MSFlexGrid MSFlexGrid1{*this, "MSFlexGrid1", {120, 2520, 10695, 5175}, 3, 22, 2, 2};
    CommandButton prev_DB{*this, "prev_DB", {2400, 7800, 2895, 375}, "Previous", "", "Show the 1000 rows before"};
    CommandButton next_DB{*this, "next_DB", {5400, 7800, 2415, 375}, "Next", "", "Show the next 1000 rows"};
    CommonDialog CommonDialog1;

    double RowFrom = 0;      ///< NUM of the first row of the page
    double RowTo = 0;        ///< NUM of the last row of the page; -1: none is chosen yet
    double RowTotal = 0;     ///< rows of the record at the last load
    std::string RecordFile;  ///< full path of the record on show

    // Defined in records/Record_View_Form.cpp:
    void Form_Load() override;
    void Command1_Click();  ///< Fresh: lists the records
    void Command2_Click();  ///< Open
    void Command3_Click();  ///< Deleted
    void Command4_Click();  ///< Exit
    void prev_DB_Click();
    void next_DB_Click();

    /// Renumbers the record at `path`, which writes to its file, and shows the page from RowFrom to RowTo. What cannot
    /// be read is a run-time error.
    void LoadRecord(const std::string& path);
    /// Deletes the record at `path`, if the user agrees. A file in use: error 70.
    void DeleteRecord(const std::string& path);

    // Defined in records/csv_export.cpp:
    void Command5_Click();  ///< CSV: the grid as it stands goes into a file
    /// Writes the grid as it stands into the file at `path`, captions first. What cannot be written is a run-time error
    /// and leaves the file open.
    void WritePage(const std::string& path);

private:
    // Defined in records/Record_View_Form.cpp:
    void ShowRows(Database& database);
};

}  // namespace vantrel
