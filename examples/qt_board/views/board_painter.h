#ifndef QT_BOARD_VIEWS_BOARD_PAINTER_H
#define QT_BOARD_VIEWS_BOARD_PAINTER_H

#include <QPainterPath>
#include <QRectF>

#include "board/design.h"
#include "views/view_settings.h"

class QPainter;

namespace viewer {

/// Draws a design with a painter whose coordinates are millimetres of the board.
class BoardPainter {
public:
    BoardPainter(QPainter& painter, const Design& design, const ViewSettings& settings)
        : painter_(painter), design_(design), settings_(settings) {}

    /// Draws the grid over that area, coarser where its lines would be too near to each other.
    void drawGrid(QRectF area) const;

    /// Draws board, tracks and pads, the active layer last.
    void drawBoard() const;

    /// Draws the frame around the selected item.
    void drawSelection() const;

private:
    void drawLayer(int layer) const;
    void drawPads(int layer) const;
    void drawPad(const Pad& pad, const QColor& color) const;
    void drawTrack(const Track& track, const QColor& color) const;
    QColor shade(const QColor& color, const QString& net) const;
    double pixels(double count) const;

    QPainter& painter_;
    const Design& design_;
    const ViewSettings& settings_;
};

/// Returns the outline of the pad's copper, of the track's, and of the item.
QPainterPath shapeOf(const Pad& pad);
QPainterPath shapeOf(const Track& track);
QPainterPath shapeOf(const Board& board, Item item);

/// Draws the names of pads where there is room for them. The painter's coordinates are pixels.
void drawPadNames(QPainter& painter, const Design& design, const QTransform& toWidget);

}  // namespace viewer

#endif
