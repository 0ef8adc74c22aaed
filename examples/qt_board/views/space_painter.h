#ifndef QT_BOARD_VIEWS_SPACE_PAINTER_H
#define QT_BOARD_VIEWS_SPACE_PAINTER_H

#include <QColor>
#include <QPolygonF>

#include "board/design.h"
#include "views/projection.h"
#include "views/view_settings.h"

class QPainter;

namespace viewer {

/// Draws a design as a body seen from above, from what is farthest to what is nearest.
class SpacePainter {
public:
    SpacePainter(QPainter& painter, const Design& design, const ViewSettings& settings, const Projection& projection,
                 bool pulledApart)
        : painter_(painter), design_(design), settings_(settings), projection_(projection), pulledApart_(pulledApart) {}

    void draw() const;

private:
    void drawWhole() const;
    void drawApart() const;
    void drawPrism(const QPolygonF& base, double bottom, double top, const QColor& color) const;
    void drawLayer(int layer, double height) const;
    void drawThroughPads(double height) const;
    void drawParts(bool onTop, double height) const;
    QColor shade(const QColor& color, const QString& net) const;

    QPainter& painter_;
    const Design& design_;
    const ViewSettings& settings_;
    const Projection& projection_;
    bool pulledApart_;
};

}  // namespace viewer

#endif
