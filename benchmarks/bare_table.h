// The least that cells of a table can cost: a fill, two grid lines and the glyphs of a text whose width is known.
#pragma once

#include "ratio.h"

#include <QFont>
#include <QGlyphRun>
#include <QImage>
#include <QPainter>
#include <QRawFont>
#include <string>
#include <vector>

namespace vantrel {

/// A table of `rows` by `cols` cells of the same size in pixels.
class BareTable {
public:
    BareTable(int rows, int cols, int width, int height, const QFont& font)
        : rows_(rows),
          cols_(cols),
          width_(width),
          height_(height),
          font_(QRawFont::fromFont(font)),
          image_(cols * width, rows * height, QImage::Format_RGB32),
          texts_(static_cast<std::size_t>(rows) * static_cast<std::size_t>(cols)) {}

    void SetText(int row, int col, const QString& text) {
        const QList<quint32> glyphs = font_.glyphIndexesForString(text);
        QList<QPointF> places;
        QPointF at(0, 0);
        for (const QPointF& advance : font_.advancesForGlyphIndexes(glyphs)) {
            places << at;
            at += advance;
        }
        QGlyphRun& run = Text(row, col);
        run.setRawFont(font_);
        run.setGlyphIndexes(glyphs);
        run.setPositions(places);
    }

    /// Moves all rows below the headings up by one. The last one keeps its texts.
    void Roll(int headings) {
        for (int row = headings; row + 1 < rows_; ++row)
            for (int col = 0; col < cols_; ++col) Text(row, col) = Text(row + 1, col);
    }

    void Paint() {
        QPainter painter(&image_);
        for (int row = 0; row < rows_; ++row) {
            for (int col = 0; col < cols_; ++col) {
                const QRect cell(col * width_, row * height_, width_, height_);
                painter.fillRect(cell, Qt::white);
                painter.fillRect(cell.right(), cell.top(), 1, height_, Qt::lightGray);
                painter.fillRect(cell.left(), cell.bottom(), width_, 1, Qt::lightGray);
                painter.drawGlyphRun(QPointF(cell.left() + 2, cell.bottom() - 4), Text(row, col));
            }
        }
    }

private:
    QGlyphRun& Text(int row, int col) {
        return texts_[static_cast<std::size_t>(row) * static_cast<std::size_t>(cols_) + static_cast<std::size_t>(col)];
    }

    int rows_, cols_, width_, height_;
    QRawFont font_;
    QImage image_;
    std::vector<QGlyphRun> texts_;
};

}  // namespace vantrel
