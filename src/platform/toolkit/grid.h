// The grid.
#pragma once

#include "platform/picture.h"
#include "platform/toolkit/control.h"

#include <string>
#include <vector>

namespace vantrel {

/// A grid of texts with fixed rows and columns at its top and left, which stay when it scrolls. Rows and columns count
/// from 0, fixed ones included. A row or column that is not there raises error 30009 or 30010.
class MSFlexGrid : public Control {
public:
    MSFlexGrid(const Place& place, const std::string& name, const Box& box, int rows, int cols, int fixed_rows,
               int fixed_cols);

    int Rows() const;
    /// Fewer rows drop rows at the end, more add empty ones.
    void SetRows(int rows);
    int Cols() const;
    void SetCols(int cols);
    int FixedRows() const;
    int FixedCols() const;
    void SetFixed(int fixed_rows, int fixed_cols);

    /// The current cell. A user's click on a cell that is not fixed makes it the current one.
    int Row() const;
    void SetRow(int row);
    int Col() const;
    void SetCol(int col);
    const std::string& Text() const;  ///< good until the grid is changed
    void SetText(const std::string& text);
    Colour CellBackColor() const;
    void SetCellBackColor(Colour colour);

    /// Good until the grid is changed.
    const std::string& TextMatrix(int row, int col) const;
    void SetTextMatrix(int row, int col, const std::string& text);
    /// Empties every cell's text; colours stay.
    void Clear();
    /// Moves row `row` to position `to`; the rows between move up or down by one.
    void SetRowPosition(int row, int to);
    /// Moves row `row` behind all others and empties it: its texts and its colours go.
    void RollRow(int row);
    /// Aligns column `col` left with its headings, which stand in the middle of their cells at first.
    void SetColAlignmentLeft(int col);
    /// Shows equal neighbours of row `row` as one band.
    void SetMergeRow(int row, bool merge);
    /// With scroll bars, as at first, where the cells need them; without, a grid that never scrolls.
    void SetScrollBars(bool shown);

    float ColWidth(int col) const;  ///< twips
    void SetColWidth(int col, float width);
    float RowHeight(int row) const;  ///< twips
    void SetRowHeight(int row, float height);

    /// The cell under the mouse at the last click.
    int MouseRow() const { return mouse_row_; }
    int MouseCol() const { return mouse_col_; }
    Handler OnClick;

private:
    void CheckRow(int row) const;
    void CheckCol(int col) const;
    /// True if all rows from `first` on have the same height, in whole pixels.
    bool RowsAreAlike(int first) const;
    /// Gives the columns (rows) from `first` on their places in pixels.
    void PlaceCols();
    void PlaceRows(int first);

    std::vector<float> widths_, heights_;  ///< twips
    int row_, col_;                        ///< the current cell
    int mouse_row_ = 0, mouse_col_ = 0;
};

}  // namespace vantrel
