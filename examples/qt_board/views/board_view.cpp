#include "views/board_view.h"

#include <QMouseEvent>
#include <QPainter>
#include <QWheelEvent>
#include <algorithm>
#include <cmath>

#include "views/board_painter.h"

namespace viewer {

namespace {

constexpr double kSmallestScale = 0.05;
constexpr double kLargestScale = 2000;
constexpr double kMargin = 1.06;

}  // namespace

BoardView::BoardView(Design& design, QWidget* parent) : QWidget(parent), design_(design) {
    setObjectName(QStringLiteral("boardView"));
    setFocusPolicy(Qt::StrongFocus);
    setMouseTracking(true);
    setMinimumSize(240, 180);
    connect(&design, &Design::boardChanged, this, qOverload<>(&QWidget::update));
    connect(&design, &Design::viewChanged, this, qOverload<>(&QWidget::update));
}

void BoardView::setSettings(const ViewSettings& settings) {
    settings_ = settings;
    update();
}

QTransform BoardView::toWidget() const {
    QTransform transform;
    transform.translate(width() / 2.0, height() / 2.0);
    transform.scale(flipped_ ? -scale_ : scale_, -scale_);
    transform.translate(-center_.x(), -center_.y());
    return transform;
}

QPointF BoardView::placeOf(QPointF point) const { return toWidget().map(point); }

void BoardView::showArea(QRectF area) {
    if (area.isEmpty() || width() == 0 || height() == 0) {
        return;
    }
    const double fitting = std::min(width() / (area.width() * kMargin), height() / (area.height() * kMargin));
    scale_ = std::clamp(fitting, kSmallestScale, kLargestScale);
    center_ = area.center();
    update();
}

void BoardView::zoomToFit() {
    fitted_ = true;
    showArea(design_.board().outline.boundingRect());
}

void BoardView::zoomToSelection() {
    const QRectF box = shapeOf(design_.board(), design_.selection()).boundingRect();
    if (!box.isEmpty()) {
        fitted_ = false;
        showArea(box.adjusted(-2, -2, 2, 2));
    }
}

void BoardView::flip() {
    flipped_ = !flipped_;
    update();
}

void BoardView::zoomAround(QPointF place, double factor) {
    const QPointF before = toWidget().inverted().map(place);
    scale_ = std::clamp(scale_ * factor, kSmallestScale, kLargestScale);
    center_ += before - toWidget().inverted().map(place);
    fitted_ = false;
    update();
}

Item BoardView::itemAt(QPointF place) const {
    const QPointF point = toWidget().inverted().map(place);
    const Board& board = design_.board();
    for (int i = static_cast<int>(board.pads.size()) - 1; i >= 0; --i) {
        if (shapeOf(board, {Item::Kind::Pad, i}).contains(point)) {
            return {Item::Kind::Pad, i};
        }
    }
    for (int i = static_cast<int>(board.tracks.size()) - 1; i >= 0; --i) {
        if (shapeOf(board, {Item::Kind::Track, i}).contains(point)) {
            return {Item::Kind::Track, i};
        }
    }
    return {};
}

void BoardView::paintEvent(QPaintEvent* /*event*/) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing, settings_.antialiasing);
    painter.fillRect(rect(), settings_.background);
    painter.setTransform(toWidget());
    const BoardPainter board(painter, design_, settings_);
    QPainterPath inside;
    inside.addPolygon(design_.board().outline);
    inside.closeSubpath();
    painter.fillPath(inside, settings_.board);
    if (settings_.gridVisible) {
        board.drawGrid(toWidget().inverted().mapRect(QRectF(rect())));
    }
    board.drawBoard();
    board.drawSelection();
    painter.resetTransform();
    if (settings_.padNames) {
        painter.setPen(settings_.background);
        drawPadNames(painter, design_, toWidget());
    }
}

void BoardView::resizeEvent(QResizeEvent* /*event*/) {
    if (fitted_) {
        zoomToFit();
    }
}

void BoardView::wheelEvent(QWheelEvent* event) {
    const double steps = event->angleDelta().y() / 120.0;
    zoomAround(event->position(), std::pow(settings_.zoomFactor, steps));
}

void BoardView::mousePressEvent(QMouseEvent* event) {
    dragged_ = event->position();
    if (event->button() != Qt::MiddleButton) {
        design_.select(itemAt(event->position()));
    }
}

void BoardView::mouseMoveEvent(QMouseEvent* event) {
    if ((event->buttons() & Qt::MiddleButton) != 0) {
        const QTransform toBoard = toWidget().inverted();
        center_ -= toBoard.map(event->position()) - toBoard.map(dragged_);
        dragged_ = event->position();
        fitted_ = false;
        update();
    }
    emit pointed(toWidget().inverted().map(event->position()));
}

}  // namespace viewer
