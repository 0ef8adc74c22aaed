#include "views/space_view.h"

#include <QMouseEvent>
#include <QPainter>
#include <QWheelEvent>
#include <algorithm>
#include <cmath>

#include "views/space_painter.h"

namespace viewer {

namespace {

constexpr double kSmallestScale = 0.2;
constexpr double kLargestScale = 200;
constexpr double kMargin = 1.15;
constexpr double kDegreesPerPixel = 0.4;
constexpr double kLowestTilt = 8;
constexpr double kSteepestTilt = 90;

}  // namespace

SpaceView::SpaceView(Design& design, QWidget* parent) : QWidget(parent), design_(design) {
    setObjectName(QStringLiteral("spaceView"));
    setFocusPolicy(Qt::StrongFocus);
    setMinimumSize(240, 180);
    connect(&design, &Design::boardChanged, this, qOverload<>(&QWidget::update));
    connect(&design, &Design::viewChanged, this, qOverload<>(&QWidget::update));
}

void SpaceView::setSettings(const ViewSettings& settings) {
    settings_ = settings;
    update();
}

void SpaceView::zoomBy(double factor) {
    projection_.scale = std::clamp(projection_.scale * factor, kSmallestScale, kLargestScale);
    fitted_ = false;
    update();
}

void SpaceView::zoomToFit() {
    fitted_ = true;
    const QPolygonF& outline = design_.board().outline;
    if (outline.isEmpty()) {
        return;
    }
    projection_.target = outline.boundingRect().center();
    projection_.scale = 1;
    const QRectF box = projection_.plane(0).map(outline).boundingRect();
    const double layers = pulledApart_ ? settings_.layerGap * static_cast<double>(design_.board().layers.size()) : 0;
    projection_.targetHeight = -layers / 2;
    const double fitting = std::min(width() / box.width(), height() / (box.height() + layers + 4)) / kMargin;
    projection_.scale = std::clamp(fitting, kSmallestScale, kLargestScale);
    update();
}

void SpaceView::look(double turn, double tilt) {
    projection_.turn = std::remainder(turn, 360);
    projection_.tilt = std::clamp(tilt, kLowestTilt, kSteepestTilt);
    if (fitted_) {
        zoomToFit();
    }
    update();
}

void SpaceView::turnBy(double degrees) { look(projection_.turn + degrees, projection_.tilt); }

void SpaceView::setPulledApart(bool pulledApart) {
    pulledApart_ = pulledApart;
    if (fitted_) {
        zoomToFit();
    }
    update();
}

void SpaceView::paintEvent(QPaintEvent* /*event*/) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing, settings_.antialiasing);
    painter.fillRect(rect(), settings_.spaceBackground);
    projection_.place = QRectF(rect()).center();
    SpacePainter(painter, design_, settings_, projection_, pulledApart_).draw();
}

void SpaceView::resizeEvent(QResizeEvent* /*event*/) {
    if (fitted_) {
        zoomToFit();
    }
}

void SpaceView::wheelEvent(QWheelEvent* event) {
    zoomBy(std::pow(settings_.zoomFactor, event->angleDelta().y() / 120.0));
}

void SpaceView::mousePressEvent(QMouseEvent* event) { dragged_ = event->position(); }

void SpaceView::mouseMoveEvent(QMouseEvent* event) {
    if ((event->buttons() & Qt::LeftButton) != 0) {
        const QPointF step = (event->position() - dragged_) * kDegreesPerPixel;
        dragged_ = event->position();
        look(projection_.turn + step.x(), projection_.tilt + step.y());
    }
}

}  // namespace viewer
