#include "views/projection.h"

#include <QtMath>

namespace viewer {

QTransform Projection::plane(double height) const {
    const double sine = qSin(qDegreesToRadians(turn));
    const double cosine = qCos(qDegreesToRadians(turn));
    const double flat = qSin(qDegreesToRadians(tilt));
    const double steep = qCos(qDegreesToRadians(tilt));
    const QTransform rotation(cosine * scale, -sine * flat * scale, -sine * scale, -cosine * flat * scale, 0, 0);
    const QPointF origin = place - rotation.map(target) - QPointF(0, (height - targetHeight) * steep * scale);
    return rotation * QTransform::fromTranslate(origin.x(), origin.y());
}

double Projection::depth(QPointF point) const {
    const QPointF away = point - target;
    const double angle = qDegreesToRadians(turn);
    return away.x() * qSin(angle) + away.y() * qCos(angle);
}

}  // namespace viewer
