#ifndef QT_BOARD_VIEWS_PROJECTION_H
#define QT_BOARD_VIEWS_PROJECTION_H

#include <QPointF>
#include <QTransform>

namespace viewer {

/// A parallel projection of the space above the board onto a widget.
struct Projection {
    /// Degrees around the vertical axis, and above the horizon: 90 looks straight down.
    double turn = -35;
    double tilt = 38;
    double scale = 8;
    /// The point of the space that is shown at `place`.
    QPointF target;
    double targetHeight = 0;
    QPointF place;

    /// Returns the projection of the plane at that height, which is a transform of the plane.
    QTransform plane(double height) const;

    QPointF map(QPointF point, double height) const { return plane(height).map(point); }

    /// Returns how far behind the target the point is, as the viewer sees it.
    double depth(QPointF point) const;
};

}  // namespace viewer

#endif
