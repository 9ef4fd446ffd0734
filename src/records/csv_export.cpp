// The CSV file of the record browser: the grid as it stands, captions first.

#include "platform/files.h"
#include "windows/Record_View_Form.h"

namespace vantrel {

namespace {

constexpr int kFileNumber = 1;

void Write_Grid(MSFlexGrid& grid) {
    const Integer last_row = grid.Rows() - 1;
    for (Integer r = 1; r <= last_row; ++r) {
        grid.SetRow(r);
        for (int c = 0; c < grid.Cols(); ++c) {
            grid.SetCol(c);
            const bool is_last = c == grid.Cols() - 1;
            // Kept: K-csv-cells, K-csv-letters
            Print(kFileNumber, "\"" + grid.Text() + "\"" + (is_last ? "\r\n" : ","));
        }
    }
}

}  // namespace

void Record_View_Form::Command5_Click() {
    try {
        CommonDialog1.DefaultExt = "csv";
        CommonDialog1.Filter = "*.csv";
        CommonDialog1.ShowSave();
        OpenForOutput(CommonDialog1.FileName, kFileNumber);
        Write_Grid(MSFlexGrid1);
        CloseFile(kFileNumber);
    } catch (const RunTimeError&) {
        // Whatever goes wrong, a cancelled dialog included, ends the export without a word. What an error while writing
        // leaves open keeps the number, so that later exports fail at the opening.
        // Kept: K-csv-silent
    }
}

}  // namespace vantrel
