#include "platform/qt/flex_grid.h"
#include "platform/qt/style.h"
#include "platform/qt/text.h"

#include <QAccessible>
#include <QApplication>
#include <QClipboard>
#include <QContextMenuEvent>
#include <QHeaderView>
#include <QKeyEvent>
#include <QMenu>
#include <QMouseEvent>
#include <QPainter>
#include <QScrollBar>
#include <QStyleOptionViewItem>
#include <algorithm>
#include <cmath>

namespace vantrel {

namespace {

constexpr int kCellMargin = 2;
const QColor kGridLine(208, 208, 208);

/// A cell's text without what would break the line of its row: the last reading of a scan ends in a line feed.
QString OnOneLine(QString text) { return text.remove('\r').remove('\n').replace('\t', ' '); }

}  // namespace

GridView::GridView(GridModel* model) : cells_(model) {
    setFrameShape(QFrame::NoFrame);
    setShowGrid(true);
    setEditTriggers(NoEditTriggers);
    setSelectionMode(ExtendedSelection);
    setTabKeyNavigation(false);
    setWordWrap(false);
    setHorizontalScrollMode(ScrollPerPixel);
    setVerticalScrollMode(ScrollPerPixel);
    setCornerButtonEnabled(false);
    setStyleSheet({});
    for (QHeaderView* header : {horizontalHeader(), verticalHeader()}) {
        header->hide();
        header->setMinimumSectionSize(0);
        header->setSectionResizeMode(QHeaderView::Fixed);
    }
    horizontalScrollBar()->setSingleStep(24);
    verticalScrollBar()->setSingleStep(16);
    // Last, so that headings that are never shown are not measured.
    model->setParent(this);
    setModel(model);
}

void GridView::Refresh() { viewport()->update(); }

const GridView::Fitted& GridView::Fit(const QString& text, int width) const {
    const std::pair key(text, width);
    if (const Fitted* known = fitted_.object(key)) return *known;
    QString line = QString(text).replace('\r', ' ').replace('\n', ' ').replace('\t', ' ');
    while (line.endsWith(' ')) line.chop(1);  // the line feed of the last reading takes no room
    auto* fitted = new Fitted{FittingFont(font(), line, width), line, {}};
    if (fitted->font.stretch() == kNarrowest)
        fitted->text = QFontMetrics(fitted->font).elidedText(line, Qt::ElideRight, width);
    fitted->laid_out.setTextFormat(Qt::PlainText);
    fitted->laid_out.setText(fitted->text);
    if (!fitted->text.isEmpty()) fitted->laid_out.prepare({}, fitted->font);
    fitted_.insert(key, fitted);
    return *fitted;
}

void GridView::DrawFitting(QPainter& painter, const QRect& cell, Qt::Alignment alignment, const QString& text) const {
    if (text.isEmpty()) return;
    const Fitted& fitted = Fit(text, cell.width());
    if (fitted.text.isEmpty()) return;  // blanks alone
    painter.setFont(fitted.font);
    const QSizeF needed = fitted.laid_out.size();
    const double spare = cell.width() - needed.width();
    if (spare >= 0 && needed.height() <= cell.height()) {
        // A text that needs the margins takes them.
        const bool centred = alignment & Qt::AlignHCenter || spare < 2 * kCellMargin;
        const double indent = centred ? spare / 2 : kCellMargin;
        painter.drawStaticText(QPointF(cell.left() + indent, cell.top() + (cell.height() - needed.height()) / 2),
                               fitted.laid_out);
    } else {
        painter.drawText(cell, int(alignment | Qt::AlignVCenter) | Qt::TextSingleLine, fitted.text);
    }
}

bool GridView::CanRoll(int row) const {
    const bool is_marked = currentIndex().row() == row || selectionModel()->rowIntersectsSelection(row);
    return !is_marked && row >= cells_->fixed_rows && merged_.size() <= std::size_t(row);
}

void GridView::RollPicture(int row) {
    const int last = cells_->rowCount() - 1;
    const int top = std::max(RowAt(row), FixedHeight());
    const int frame = viewport()->height() - 1;
    const int end = std::min(RowAt(last) + rowHeight(last), frame);
    const double scale = devicePixelRatioF();
    if (scale == std::floor(scale))
        viewport()->scroll(0, -rowHeight(row), QRect(0, top, viewport()->width(), end - top));
    else
        viewport()->update();  // rows begin between two pixels of the screen
#if QT_CONFIG(accessibility)
    if (!QAccessible::isActive()) return;
    QAccessibleTableModelChangeEvent changed(this, QAccessibleTableModelChangeEvent::ModelReset);
    QAccessible::updateAccessibility(&changed);
#endif
}

void GridView::SetMergeRow(int row, bool merge) {
    const auto at = static_cast<std::size_t>(row);
    if (merged_.size() <= at) merged_.resize(at + 1);
    merged_[at] = merge;
    viewport()->update();
}

bool GridView::IsMerged(int row) const {
    const auto at = static_cast<std::size_t>(row);
    return at < merged_.size() && merged_[at];
}

void GridView::SetScrollBars(bool shown) {
    scrolls_ = shown;
    setHorizontalScrollBarPolicy(shown ? Qt::ScrollBarAsNeeded : Qt::ScrollBarAlwaysOff);
    setVerticalScrollBarPolicy(shown ? Qt::ScrollBarAsNeeded : Qt::ScrollBarAlwaysOff);
    updateGeometries();
}

void GridView::updateGeometries() {
    QTableView::updateGeometries();
    if (scrolls_) return;
    // Qt scrolls by wheel and to a clicked cell without a bar, too.
    horizontalScrollBar()->setRange(0, 0);
    verticalScrollBar()->setRange(0, 0);
}

int GridView::FixedWidth() const {
    int width = 0;
    for (int col = 0; col < std::min(cells_->fixed_cols, cells_->columnCount()); ++col) width += columnWidth(col);
    return width;
}

int GridView::FixedHeight() const {
    int height = 0;
    for (int row = 0; row < std::min(cells_->fixed_rows, cells_->rowCount()); ++row) height += rowHeight(row);
    return height;
}

int GridView::ColumnAt(int col) const {
    return columnViewportPosition(col) + (col < cells_->fixed_cols ? horizontalOffset() : 0);
}

int GridView::RowAt(int row) const {
    return rowViewportPosition(row) + (row < cells_->fixed_rows ? verticalOffset() : 0);
}

QPoint GridView::CellAt(const QPoint& point) const {
    const int x = point.x() < FixedWidth() ? point.x() - horizontalOffset() : point.x();
    const int y = point.y() < FixedHeight() ? point.y() - verticalOffset() : point.y();
    const QPoint cell(columnAt(x), rowAt(y));
    return cell.x() < 0 || cell.y() < 0 ? QPoint(-1, -1) : cell;
}

void GridView::paintEvent(QPaintEvent* event) {
    QPainter painter(viewport());
    DrawScrolled(painter, event->region());
    const int last_col = cells_->columnCount() - 1;
    const int bottom = rowAt(viewport()->height() - 1);
    const int last_row = bottom < 0 ? cells_->rowCount() - 1 : bottom;
    const QRect all = viewport()->rect();
    const int right_of_fixed = FixedWidth();
    const int below_fixed = FixedHeight();
    const int first_row = std::max(cells_->fixed_rows, rowAt(below_fixed));
    const auto rows_in = [&](const QRect& part, int from, int to, int col_from, int col_to, bool fixed) {
        painter.setClipRect(part);
        for (int row = std::max(from, 0); row <= to; ++row)
            if (fixed || IsMerged(row)) DrawRow(painter, event->region() & part, row, col_from, col_to);
    };
    const int fixed_rows = std::min(cells_->fixed_rows, cells_->rowCount());
    const int fixed_cols = std::min(cells_->fixed_cols, cells_->columnCount());
    rows_in(all.adjusted(right_of_fixed, below_fixed, 0, 0), first_row, last_row, fixed_cols, last_col, false);
    rows_in(all.adjusted(0, below_fixed, 0, 0), first_row, last_row, 0, fixed_cols - 1, true);
    rows_in(all.adjusted(right_of_fixed, 0, 0, 0), 0, fixed_rows - 1, fixed_cols, last_col, true);
    rows_in(all, 0, fixed_rows - 1, 0, fixed_cols - 1, true);
    painter.setClipping(false);
    painter.setPen(palette().color(QPalette::Mid));
    painter.drawRect(all.adjusted(0, 0, -1, -1));
}

void GridView::DrawScrolled(QPainter& painter, const QRegion& region) const {
    const int end_x = ColumnAt(cells_->columnCount() - 1) + columnWidth(cells_->columnCount() - 1);
    const int end_y = RowAt(cells_->rowCount() - 1) + rowHeight(cells_->rowCount() - 1);
    const QRect scrolled(QPoint(FixedWidth(), FixedHeight()), QPoint(end_x - 1, end_y - 1));
    const QRect all = region.boundingRect() & scrolled;
    if (all.isEmpty()) return;
    const int last_row = rowAt(all.bottom());
    const int last_col = columnAt(all.right());
    for (int row = rowAt(all.top()); row <= last_row; ++row) {
        for (int col = columnAt(all.left()); col <= last_col; ++col) {
            const QRect box = BoxOf(row, col, col).adjusted(0, 0, -1, -1);
            if (region.intersects(box)) DrawScrolledCell(painter, box, cells_->index(row, col));
        }
    }
    // Their lines, right of each and below it.
    QStyleOptionViewItem option;
    initViewItemOption(&option);
    const QColor line = QColor::fromRgba(QRgb(style()->styleHint(QStyle::SH_Table_GridLineColor, &option, this)));
    for (const QRect& part : region& scrolled) {
        for (int row = rowAt(part.top()); row <= rowAt(part.bottom()); ++row)
            painter.fillRect(QRect(part.left(), RowAt(row) + rowHeight(row) - 1, part.width(), 1) & part, line);
        for (int col = columnAt(part.left()); col <= columnAt(part.right()); ++col)
            painter.fillRect(QRect(ColumnAt(col) + columnWidth(col) - 1, part.top(), 1, part.height()) & part, line);
    }
}

void GridView::DrawScrolledCell(QPainter& painter, const QRect& box, const QModelIndex& cell) const {
    QPalette colours = palette();
    if (isEnabled()) colours.setCurrentColorGroup(QPalette::Active);
    // A cell with a colour keeps it when it is selected.
    const std::optional<Colour> own = cells_->BackColor(cell.row(), cell.column());
    const bool is_selected = !own && selectionModel()->isSelected(cell);
    if (is_selected) painter.fillRect(box, colours.highlight());
    if (own) painter.fillRect(box, ToQt(*own));
    const QColor ink =
        own ? QColor(InkOn(ToQt(*own))) : colours.color(is_selected ? QPalette::HighlightedText : QPalette::Text);
    painter.setPen(ink);
    DrawFitting(painter, box, Qt::AlignLeft, ToQt(cells_->Text(cell.row(), cell.column())));
    const bool has_focus = cell == currentIndex() && (hasFocus() || viewport()->hasFocus());
    if (!has_focus) return;
    painter.setPen(QPen(ink, 1, Qt::DotLine));
    painter.drawRect(box.adjusted(0, 0, -1, -1));
}

void GridView::DrawRow(QPainter& painter, const QRegion& part, int row, int first_col, int last_col) const {
    for (int col = first_col; col <= last_col;) {
        int end = col;
        if (IsMerged(row))
            while (end < last_col && cells_->Text(row, end + 1) == cells_->Text(row, col)) ++end;
        const QRect box = BoxOf(row, col, end);
        if (part.intersects(box)) DrawCell(painter, box, row, col);
        col = end + 1;
    }
}

QRect GridView::BoxOf(int row, int col, int end_col) const {
    const int left = ColumnAt(col);
    return {left, RowAt(row), ColumnAt(end_col) + columnWidth(end_col) - left, rowHeight(row)};
}

void GridView::DrawCell(QPainter& painter, const QRect& box, int row, int col) const {
    const bool fixed = cells_->IsFixed(row, col);
    const std::optional<Colour> own = cells_->BackColor(row, col);
    const QColor back = own ? ToQt(*own) : palette().color(fixed ? QPalette::Button : QPalette::Base);
    painter.fillRect(box, back);
    painter.setPen(fixed ? palette().color(QPalette::Mid) : kGridLine);
    painter.drawLine(box.topRight(), box.bottomRight());
    painter.drawLine(box.bottomLeft(), box.bottomRight());
    // The text of a wide band stays in sight when the band is scrolled.
    const QRect inside = box.adjusted(0, 0, -1, -1);
    const QRect seen = inside & painter.clipBoundingRect().toRect();
    painter.setPen(qGray(back.rgb()) < 110 ? Qt::white : palette().color(QPalette::Text));
    DrawFitting(painter, IsMerged(row) ? seen : inside, cells_->Alignment(row, col), ToQt(cells_->Text(row, col)));
}

void GridView::dataChanged(const QModelIndex& top_left, const QModelIndex& bottom_right, const QList<int>& roles) {
    QTableView::dataChanged(top_left, bottom_right, roles);
    if (top_left != bottom_right || IsMerged(top_left.row())) viewport()->update();
}

// With its lines, so that cells beside each other are one rectangle to paint.
QRect GridView::visualRect(const QModelIndex& index) const {
    if (cells_->IsFixed(index.row(), index.column())) return BoxOf(index.row(), index.column(), index.column());
    return QTableView::visualRect(index).adjusted(0, 0, 1, 1);
}

// Whoever looks at the end of a growing list goes on looking at its end.
void GridView::rowsInserted(const QModelIndex& parent, int first, int last) {
    const QScrollBar* bar = verticalScrollBar();
    const bool follows = first == last && bar->value() == bar->maximum();
    QTableView::rowsInserted(parent, first, last);
    if (follows) scrollToBottom();
}

void GridView::scrollContentsBy(int dx, int dy) {
    QTableView::scrollContentsBy(dx, dy);
    viewport()->update();  // what was moved along with the rest of the picture are fixed cells
}

void GridView::scrollTo(const QModelIndex& index, ScrollHint hint) {
    QTableView::scrollTo(index, hint);
    const QRect cell = visualRect(index);
    if (!cells_->IsFixed(index.row(), 0) && cell.top() < FixedHeight())
        verticalScrollBar()->setValue(verticalScrollBar()->value() - (FixedHeight() - cell.top()));
    if (!cells_->IsFixed(cells_->fixed_rows, index.column()) && cell.left() < FixedWidth())
        horizontalScrollBar()->setValue(horizontalScrollBar()->value() - (FixedWidth() - cell.left()));
}

void GridView::mousePressEvent(QMouseEvent* event) {
    const QPoint cell = CellAt(event->position().toPoint());
    if (cell.x() < 0 || cells_->IsFixed(cell.y(), cell.x()))
        event->accept();  // headings are never selected and never the current cell
    else
        QTableView::mousePressEvent(event);
}

void GridView::mouseReleaseEvent(QMouseEvent* event) {
    const QPoint at = event->position().toPoint();
    QTableView::mouseReleaseEvent(event);
    const QPoint cell = CellAt(at);
    if (event->button() == Qt::LeftButton && cell.x() >= 0 && viewport()->rect().contains(at))
        emit Clicked(cell.y(), cell.x());
}

void GridView::keyPressEvent(QKeyEvent* event) {
    const bool click = event->key() == Qt::Key_Space || event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
    if (event->matches(QKeySequence::Copy))
        CopySelection();
    else if (click && currentIndex().isValid())
        emit Clicked(currentIndex().row(), currentIndex().column());
    else
        QTableView::keyPressEvent(event);
}

// The focus alone moves nothing: an item view would make its first cell the current one.
void GridView::focusInEvent(QFocusEvent* event) {
    QAbstractScrollArea::focusInEvent(event);  // NOLINT(bugprone-parent-virtual-call): past that of an item view
    viewport()->update();
}

// The first key leads to the first cell in sight, and none leads into the headings.
QModelIndex GridView::moveCursor(CursorAction action, Qt::KeyboardModifiers modifiers) {
    const QModelIndex to = currentIndex().isValid()
                               ? QTableView::moveCursor(action, modifiers)
                               : cells_->index(std::max(rowAt(FixedHeight()), 0), std::max(columnAt(FixedWidth()), 0));
    return cells_->index(std::max(to.row(), cells_->fixed_rows), std::max(to.column(), cells_->fixed_cols));
}

void GridView::contextMenuEvent(QContextMenuEvent* event) {
    QMenu menu;
    menu.addAction("Copy", QKeySequence::Copy, this, [this] { CopySelection(); });
    menu.exec(event->globalPos());
}

void GridView::CopySelection() const {
    const QItemSelection selection = selectionModel()->selection();
    if (selection.isEmpty()) return;
    QRect box;
    for (const QItemSelectionRange& range : selection)
        box |= QRect(QPoint(range.left(), range.top()), QPoint(range.right(), range.bottom()));
    QStringList lines;
    for (int row = box.top(); row <= box.bottom(); ++row) {
        QStringList cells;
        for (int col = box.left(); col <= box.right(); ++col) {
            const QModelIndex index = cells_->index(row, col);
            cells << (selectionModel()->isSelected(index) ? OnOneLine(index.data().toString()) : QString());
        }
        lines << cells.join('\t');
    }
    QApplication::clipboard()->setText(lines.join('\n'));
}

}  // namespace vantrel
