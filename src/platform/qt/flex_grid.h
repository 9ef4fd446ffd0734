// The parts of a grid: the cells, and the view of them.
#pragma once

#include "platform/picture.h"

#include <QAbstractTableModel>
#include <QCache>
#include <QFont>
#include <QStaticText>
#include <QTableView>
#include <optional>
#include <set>
#include <string>
#include <utility>
#include <vector>

namespace vantrel {

/// White on a dark cell, black on any other.
inline Qt::GlobalColor InkOn(const QColor& back) { return qGray(back.rgb()) < 110 ? Qt::white : Qt::black; }

/// The cells of a grid, row by row.
class GridModel : public QAbstractTableModel {
    Q_OBJECT

public:
    GridModel(int rows, int cols, QObject* parent);

    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;

    int Rows() const { return static_cast<int>(rows_.size()); }
    void SetRows(int rows);
    int Cols() const { return cols_; }
    void SetCols(int cols);
    const std::string& Text(int row, int col) const { return At(row, col).text; }
    void SetText(int row, int col, const std::string& text);
    std::optional<Colour> BackColor(int row, int col) const { return At(row, col).back_color; }
    void SetBackColor(int row, int col, Colour colour);
    void Clear();
    void MoveRow(int row, int to);
    /// Moves row `row` behind all others and empties it. No view is told: they roll their pictures.
    void RollRow(int row);

    int fixed_rows = 0;
    int fixed_cols = 0;
    bool IsFixed(int row, int col) const { return row < fixed_rows || col < fixed_cols; }
    std::set<int> left_cols;  ///< columns whose headings are aligned left as their texts are
    Qt::Alignment Alignment(int row, int col) const {
        return IsFixed(row, col) && !left_cols.contains(col) ? Qt::AlignHCenter : Qt::AlignLeft;
    }

private:
    struct Cell {
        std::string text;
        std::optional<Colour> back_color;
    };
    using Row = std::vector<Cell>;

    const Cell& At(int row, int col) const { return rows_[std::size_t(row)][std::size_t(col)]; }
    Cell& At(int row, int col) { return rows_[std::size_t(row)][std::size_t(col)]; }

    std::vector<Row> rows_;
    int cols_;
};

/// Shows the cells. Its fixed rows and columns are drawn over the scrolled ones, as headings.
class GridView : public QTableView {
    Q_OBJECT

public:
    explicit GridView(GridModel* model);
    GridModel& Cells() const { return *cells_; }

    /// The cell at a point of the viewport, fixed ones first; (-1, -1) beside the cells.
    QPoint CellAt(const QPoint& point) const;  ///< x: column, y: row
    void SetMergeRow(int row, bool merge);
    void SetScrollBars(bool shown);
    /// Row and column sizes in pixels have changed, or the fixed cells.
    void Refresh();
    /// True if row `row` can go round and the picture of all below it move up: it is neither marked, as the current row
    /// or a selected one, nor a heading, and no row from it on is merged.
    bool CanRoll(int row) const;
    QRect visualRect(const QModelIndex& index) const override;
    /// Moves the picture of all rows below row `row` up by its height, and paints what comes into sight.
    void RollPicture(int row);

signals:
    void Clicked(int row, int col);

public slots:
    void dataChanged(const QModelIndex& top_left, const QModelIndex& bottom_right,
                     const QList<int>& roles = QList<int>()) override;

protected:
    void paintEvent(QPaintEvent* event) override;
    void updateGeometries() override;
    void rowsInserted(const QModelIndex& parent, int first, int last) override;
    void scrollContentsBy(int dx, int dy) override;
    void scrollTo(const QModelIndex& index, ScrollHint hint) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    QModelIndex moveCursor(CursorAction action, Qt::KeyboardModifiers modifiers) override;
    void contextMenuEvent(QContextMenuEvent* event) override;

private:
    bool IsMerged(int row) const;
    int FixedWidth() const;
    int FixedHeight() const;
    /// Where a column stands on the screen; a fixed one does not scroll.
    int ColumnAt(int col) const;
    int RowAt(int row) const;
    /// The scrolled cells of `region`, without those that lie below headings.
    void DrawScrolled(QPainter& painter, const QRegion& region) const;
    void DrawScrolledCell(QPainter& painter, const QRect& box, const QModelIndex& cell) const;
    /// The cells from `first_col` to `last_col` of a row of headings, or of a merged row, that lie in `part`.
    void DrawRow(QPainter& painter, const QRegion& part, int row, int first_col, int last_col) const;
    /// The place of a cell on the screen, up to column `end_col`.
    QRect BoxOf(int row, int col, int end_col) const;
    void DrawCell(QPainter& painter, const QRect& box, int row, int col) const;
    /// Draws `text` narrower where it would not fit; what does not fit even so ends in an ellipsis, not in a shorter
    /// number.
    void DrawFitting(QPainter& painter, const QRect& cell, Qt::Alignment alignment, const QString& text) const;
    void CopySelection() const;

    /// A text as it is drawn in a room of a certain width.
    struct Fitted {
        QFont font;
        QString text;
        QStaticText laid_out;
    };
    const Fitted& Fit(const QString& text, int width) const;

    GridModel* cells_;
    std::vector<bool> merged_;
    bool scrolls_ = true;
    static constexpr int kTextsKept = 500;  // more than are in sight at a time
    mutable QCache<std::pair<QString, int>, Fitted> fitted_{kTextsKept};
};

}  // namespace vantrel
