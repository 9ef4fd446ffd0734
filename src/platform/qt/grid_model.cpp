#include "platform/qt/flex_grid.h"
#include "platform/qt/text.h"

#include <algorithm>

namespace vantrel {

GridModel::GridModel(int rows, int cols, QObject* parent)
    : QAbstractTableModel(parent), rows_(std::size_t(rows), Row(std::size_t(cols))), cols_(cols) {}

int GridModel::rowCount(const QModelIndex& parent) const { return parent.isValid() ? 0 : Rows(); }

int GridModel::columnCount(const QModelIndex& parent) const { return parent.isValid() ? 0 : cols_; }

QVariant GridModel::data(const QModelIndex& index, int role) const {
    if (!index.isValid()) return {};
    const Cell& cell = At(index.row(), index.column());
    if (role == Qt::DisplayRole) return ToQt(cell.text);
    if (role == Qt::ToolTipRole) return ToToolTip(cell.text);
    if (role == Qt::TextAlignmentRole) return QVariant(Alignment(index.row(), index.column()) | Qt::AlignVCenter);
    if (role == Qt::BackgroundRole && cell.back_color) return ToQt(*cell.back_color);
    if (role == Qt::ForegroundRole && cell.back_color) return QColor(InkOn(ToQt(*cell.back_color)));
    return {};
}

void GridModel::SetRows(int rows) {
    const int now = rowCount();
    if (rows > now) {
        beginInsertRows({}, now, rows - 1);
        rows_.resize(std::size_t(rows), Row(std::size_t(cols_)));
        endInsertRows();
    } else if (rows < now) {
        beginRemoveRows({}, rows, now - 1);
        rows_.resize(std::size_t(rows));
        endRemoveRows();
    }
}

void GridModel::SetCols(int cols) {
    if (cols == cols_) return;
    const auto resize = [&] {
        for (Row& row : rows_) row.resize(std::size_t(cols));
    };
    if (cols > cols_) {
        beginInsertColumns({}, cols_, cols - 1);
        resize();
        cols_ = cols;
        endInsertColumns();
    } else {
        beginRemoveColumns({}, cols, cols_ - 1);
        resize();
        cols_ = cols;
        endRemoveColumns();
    }
}

void GridModel::SetText(int row, int col, const std::string& text) {
    Cell& cell = At(row, col);
    if (cell.text == text) return;
    cell.text = text;
    emit dataChanged(index(row, col), index(row, col), {Qt::DisplayRole});
}

void GridModel::SetBackColor(int row, int col, Colour colour) {
    Cell& cell = At(row, col);
    if (cell.back_color == colour) return;
    cell.back_color = colour;
    emit dataChanged(index(row, col), index(row, col), {Qt::BackgroundRole, Qt::ForegroundRole});
}

void GridModel::Clear() {
    if (rows_.empty() || cols_ == 0) return;
    for (Row& row : rows_)
        for (Cell& cell : row) cell.text.clear();
    emit dataChanged(index(0, 0), index(rowCount() - 1, cols_ - 1), {Qt::DisplayRole});
}

void GridModel::MoveRow(int row, int to) {
    if (row == to) return;
    beginMoveRows({}, row, row, {}, to > row ? to + 1 : to);
    const auto at = rows_.begin() + row;
    if (to > row)
        std::rotate(at, at + 1, rows_.begin() + to + 1);
    else
        std::rotate(rows_.begin() + to, at, at + 1);
    endMoveRows();
}

void GridModel::RollRow(int row) {
    std::rotate(rows_.begin() + row, rows_.begin() + row + 1, rows_.end());
    rows_.back().assign(std::size_t(cols_), {});
    // Marks go up with their rows.
    for (const QModelIndex& mark : persistentIndexList())
        if (mark.row() > row) changePersistentIndex(mark, index(mark.row() - 1, mark.column()));
}

}  // namespace vantrel
