// The CSV file of the record browser: the grid as it stands, captions first.

#include "platform/files.h"
#include "windows/Record_View_Form.h"

namespace vantrel {

namespace {

constexpr int kFileNumber = 1;

void WriteGrid(MSFlexGrid& grid) {
    const Integer last_row = grid.Rows() - 1;
    const int last_col = grid.Cols() - 1;
    grid.SetCol(last_col);
    std::string line;
    for (Integer r = 1; r <= last_row; ++r) {
        grid.SetRow(r);
        line.clear();
        for (int c = 0; c <= last_col; ++c) {
            line += '"';
            line += grid.TextMatrix(r, c);  // Kept: K-csv-cells
            line += c < last_col ? "\"," : "\"\r\n";
        }
        Print(kFileNumber, line);  // Kept: K-csv-letters
    }
}

}  // namespace

void Record_View_Form::WritePage(const std::string& path) {
    OpenForOutput(path, kFileNumber);
    WriteGrid(MSFlexGrid1);
    CloseFile(kFileNumber);
}

void Record_View_Form::Command5_Click() {
    try {
        CommonDialog1.DefaultExt = "csv";
        CommonDialog1.Filter = "*.csv";
        CommonDialog1.ShowSave();
        WritePage(CommonDialog1.FileName);
    } catch (const RunTimeError&) {
        // Whatever goes wrong, a cancelled dialog included, ends the export without a word. What an error while writing
        // leaves open keeps the number, so that later exports fail at the opening.
        // Kept: K-csv-silent
    }
}

}  // namespace vantrel
