#include "platform/qt/flex_grid.h"

#include "platform/errors.h"
#include "platform/qt/text.h"
#include "platform/toolkit/grid.h"

#include <QHeaderView>
#include <algorithm>
#include <cmath>
#include <numeric>

namespace vantrel {

namespace {

constexpr float kColWidth = 960;   // twips, as long as nobody gives another
constexpr float kRowHeight = 240;  // twips

std::size_t Index(int i) { return static_cast<std::size_t>(i); }

/// Gives the sections from `first` on the sizes of `sizes` in pixels. Edges are rounded, not sizes, so that a hundred
/// columns end where their sum ends.
void PlaceSections(QHeaderView& header, const std::vector<float>& sizes, int first) {
    double edge = std::accumulate(sizes.begin(), sizes.begin() + first, 0.0);
    for (int i = first; i < header.count(); ++i) {
        const int from = ToPixels(edge);
        edge += sizes[Index(i)];
        const int size = ToPixels(edge) - from;
        if (header.sectionSize(i) != size) header.resizeSection(i, size);
    }
}

/// Gives the last section what is left of `room` pixels beside it, if that is too little for a section of its own.
void FillRoom(QHeaderView& header, int room) {
    constexpr int kTooLittle = 16;
    const int last = header.count() - 1;
    const int spare = room - header.length();
    if (last >= 0 && spare > 0 && spare < kTooLittle) header.resizeSection(last, header.sectionSize(last) + spare);
}

GridView& ViewOf(QWidget* widget) { return *static_cast<GridView*>(widget); }
GridModel& CellsOf(QWidget* widget) { return ViewOf(widget).Cells(); }

}  // namespace

MSFlexGrid::MSFlexGrid(const Place& place, const std::string& name, const Box& box, int rows, int cols, int fixed_rows,
                       int fixed_cols)
    : Control(place, name, box, new GridView(new GridModel(rows, cols, nullptr))),
      widths_(Index(cols), kColWidth),
      heights_(Index(rows), kRowHeight),
      row_(std::min(fixed_rows, rows - 1)),
      col_(std::min(fixed_cols, cols - 1)) {
    GridView& view = ViewOf(widget_);
    view.horizontalHeader()->setDefaultSectionSize(ToPixels(kColWidth));
    view.verticalHeader()->setDefaultSectionSize(ToPixels(kRowHeight));
    view.setAccessibleName(ToQt(name));
    SetFixed(fixed_rows, fixed_cols);
    QObject::connect(view.selectionModel(), &QItemSelectionModel::currentChanged, life_, [this](const QModelIndex& to) {
        if (!to.isValid() || CellsOf(widget_).IsFixed(to.row(), to.column())) return;
        row_ = to.row();
        col_ = to.column();
    });
    QObject::connect(&view, &GridView::Clicked, life_, [this](int row, int col) {
        mouse_row_ = row;
        mouse_col_ = col;
        if (!CellsOf(widget_).IsFixed(row, col)) {
            row_ = row;
            col_ = col;
        }
        Raise(OnClick);
    });
}

void MSFlexGrid::CheckRow(int row) const {
    if (row < 0 || row >= Rows()) throw RunTimeError(kGridRow);
}

void MSFlexGrid::CheckCol(int col) const {
    if (col < 0 || col >= Cols()) throw RunTimeError(kGridCol);
}

int MSFlexGrid::Rows() const { return CellsOf(widget_).Rows(); }

void MSFlexGrid::SetRows(int rows) {
    if (rows < 0) throw RunTimeError(kGridRow);
    const int before = Rows();
    CellsOf(widget_).SetRows(rows);
    // A row that is dropped and comes back has the height that it had.
    heights_.resize(std::max(Index(rows), heights_.size()), kRowHeight);
    if (rows > before) PlaceRows(before);
    row_ = std::min(row_, rows - 1);
}

int MSFlexGrid::Cols() const { return CellsOf(widget_).Cols(); }

void MSFlexGrid::SetCols(int cols) {
    if (cols < 0) throw RunTimeError(kGridCol);
    CellsOf(widget_).SetCols(cols);
    widths_.resize(Index(cols), kColWidth);
    PlaceCols();
    col_ = std::min(col_, cols - 1);
}

int MSFlexGrid::FixedRows() const { return CellsOf(widget_).fixed_rows; }

int MSFlexGrid::FixedCols() const { return CellsOf(widget_).fixed_cols; }

void MSFlexGrid::SetFixed(int fixed_rows, int fixed_cols) {
    CellsOf(widget_).fixed_rows = fixed_rows;
    CellsOf(widget_).fixed_cols = fixed_cols;
    ViewOf(widget_).Refresh();
}

int MSFlexGrid::Row() const { return row_; }

void MSFlexGrid::SetRow(int row) {
    CheckRow(row);
    row_ = row;
}

int MSFlexGrid::Col() const { return col_; }

void MSFlexGrid::SetCol(int col) {
    CheckCol(col);
    col_ = col;
}

const std::string& MSFlexGrid::Text() const { return TextMatrix(row_, col_); }

void MSFlexGrid::SetText(const std::string& text) { SetTextMatrix(row_, col_, text); }

Colour MSFlexGrid::CellBackColor() const {
    CheckRow(row_);
    CheckCol(col_);
    const QPalette::ColorRole role = CellsOf(widget_).IsFixed(row_, col_) ? QPalette::Button : QPalette::Base;
    return CellsOf(widget_).BackColor(row_, col_).value_or(FromQt(ViewOf(widget_).palette().color(role)));
}

void MSFlexGrid::SetCellBackColor(Colour colour) {
    CheckRow(row_);
    CheckCol(col_);
    CellsOf(widget_).SetBackColor(row_, col_, colour);
}

const std::string& MSFlexGrid::TextMatrix(int row, int col) const {
    CheckRow(row);
    CheckCol(col);
    return CellsOf(widget_).Text(row, col);
}

void MSFlexGrid::SetTextMatrix(int row, int col, const std::string& text) {
    CheckRow(row);
    CheckCol(col);
    CellsOf(widget_).SetText(row, col, text);
}

void MSFlexGrid::Clear() { CellsOf(widget_).Clear(); }

void MSFlexGrid::SetRowPosition(int row, int to) {
    CheckRow(row);
    CheckRow(to);
    CellsOf(widget_).MoveRow(row, to);
    const float height = heights_[Index(row)];
    heights_.erase(heights_.begin() + row);
    heights_.insert(heights_.begin() + to, height);
    PlaceRows(std::min(row, to));
}

void MSFlexGrid::RollRow(int row) {
    CheckRow(row);
    const int last = Rows() - 1;
    GridView& view = ViewOf(widget_);
    if (!RowsAreAlike(row) || !view.CanRoll(row)) {
        SetRowPosition(row, last);
        SetRows(last);
        SetRows(last + 1);
        return;
    }
    view.Cells().RollRow(row);
    view.RollPicture(row);
    row_ = std::min(row_, last - 1);
}

bool MSFlexGrid::RowsAreAlike(int first) const {
    const float height = heights_[Index(first)];
    return std::fmod(height, kTwipsPerPixel) == 0 &&
           std::all_of(heights_.begin() + first, heights_.begin() + Rows(), [&](float h) { return h == height; });
}

void MSFlexGrid::SetColAlignmentLeft(int col) {
    CheckCol(col);
    CellsOf(widget_).left_cols.insert(col);
    ViewOf(widget_).Refresh();
}

void MSFlexGrid::SetMergeRow(int row, bool merge) {
    CheckRow(row);
    ViewOf(widget_).SetMergeRow(row, merge);
}

void MSFlexGrid::SetScrollBars(bool shown) { ViewOf(widget_).SetScrollBars(shown); }

float MSFlexGrid::ColWidth(int col) const {
    CheckCol(col);
    return widths_[Index(col)];
}

void MSFlexGrid::SetColWidth(int col, float width) {
    CheckCol(col);
    widths_[Index(col)] = width;
    PlaceCols();
}

float MSFlexGrid::RowHeight(int row) const {
    CheckRow(row);
    return heights_[Index(row)];
}

void MSFlexGrid::SetRowHeight(int row, float height) {
    CheckRow(row);
    heights_[Index(row)] = height;
    PlaceRows(row);
}

void MSFlexGrid::PlaceCols() {
    QHeaderView& header = *ViewOf(widget_).horizontalHeader();
    PlaceSections(header, widths_, 0);
    FillRoom(header, widget_->width());
    ViewOf(widget_).Refresh();
}

void MSFlexGrid::PlaceRows(int first) {
    PlaceSections(*ViewOf(widget_).verticalHeader(), heights_, first);
    ViewOf(widget_).Refresh();
}

}  // namespace vantrel
