#include "views/board_painter.h"

#include <QPainter>
#include <QPainterPathStroker>
#include <algorithm>
#include <cmath>

namespace viewer {

namespace {

/// Nearer grid lines than this are left out.
constexpr double kNarrowestGrid = 7;
constexpr int kOpacity = 215;

QColor translucent(QColor color) {
    color.setAlpha(kOpacity);
    return color;
}

}  // namespace

QPainterPath shapeOf(const Pad& pad) {
    const QRectF box(pad.at - QPointF(pad.size.width() / 2, pad.size.height() / 2), pad.size);
    const double radius = std::min(pad.size.width(), pad.size.height()) / 2;
    QPainterPath path;
    switch (pad.shape) {
        case PadShape::Round:
            path.addEllipse(box);
            break;
        case PadShape::Rectangle:
            path.addRect(box);
            break;
        case PadShape::Oval:
            path.addRoundedRect(box, radius, radius);
            break;
    }
    return path;
}

QPainterPath shapeOf(const Track& track) {
    QPainterPath line;
    line.addPolygon(track.points);
    QPainterPathStroker stroker;
    stroker.setWidth(track.width);
    stroker.setCapStyle(Qt::RoundCap);
    stroker.setJoinStyle(Qt::RoundJoin);
    return stroker.createStroke(line);
}

QPainterPath shapeOf(const Board& board, Item item) {
    const auto index = static_cast<std::size_t>(item.index);
    switch (item.kind) {
        case Item::Kind::Pad:
            return shapeOf(board.pads[index]);
        case Item::Kind::Track:
            return shapeOf(board.tracks[index]);
        case Item::Kind::None:
            break;
    }
    return {};
}

double BoardPainter::pixels(double count) const { return count / std::abs(painter_.transform().m11()); }

void BoardPainter::drawGrid(QRectF area) const {
    double step = settings_.grid;
    while (step < pixels(kNarrowestGrid)) {
        step *= std::max(settings_.gridMultiple, 2);
    }
    const double left = std::floor(area.left() / step) * step;
    const double top = std::floor(area.top() / step) * step;
    QPen pen(settings_.gridColor, settings_.gridStyle == GridStyle::Dots ? 1.6 : 1);
    pen.setCosmetic(true);
    painter_.setPen(pen);
    if (settings_.gridStyle == GridStyle::Lines) {
        for (double x = left; x <= area.right(); x += step) {
            painter_.drawLine(QPointF(x, area.top()), QPointF(x, area.bottom()));
        }
        for (double y = top; y <= area.bottom(); y += step) {
            painter_.drawLine(QPointF(area.left(), y), QPointF(area.right(), y));
        }
        return;
    }
    const double arm = settings_.gridStyle == GridStyle::Crosses ? pixels(2) : 0;
    for (double x = left; x <= area.right(); x += step) {
        for (double y = top; y <= area.bottom(); y += step) {
            if (arm > 0) {
                painter_.drawLine(QPointF(x - arm, y), QPointF(x + arm, y));
                painter_.drawLine(QPointF(x, y - arm), QPointF(x, y + arm));
            } else {
                painter_.drawPoint(QPointF(x, y));
            }
        }
    }
}

void BoardPainter::drawBoard() const {
    const Board& board = design_.board();
    QPen pen(settings_.outline, 1.5);
    pen.setCosmetic(true);
    painter_.setPen(pen);
    painter_.drawPolygon(board.outline);
    const int count = static_cast<int>(board.layers.size());
    for (int layer = count - 1; layer >= 0; --layer) {
        if (layer != design_.activeLayer()) {
            drawLayer(layer);
        }
    }
    if (count > 0) {
        drawLayer(design_.activeLayer());
    }
    drawPads(kAllLayers);
}

void BoardPainter::drawLayer(int layer) const {
    if (design_.isHidden(layer)) {
        return;
    }
    const QColor& color = settings_.colorOf(design_.board().layers[static_cast<std::size_t>(layer)]);
    for (const Track& track : design_.board().tracks) {
        if (track.layer == layer) {
            drawTrack(track, color);
        }
    }
    drawPads(layer);
}

void BoardPainter::drawPads(int layer) const {
    for (const Pad& pad : design_.board().pads) {
        if (pad.layer == layer) {
            drawPad(pad, layer == kAllLayers
                             ? settings_.throughPad
                             : settings_.colorOf(design_.board().layers[static_cast<std::size_t>(layer)]));
        }
    }
}

QColor BoardPainter::shade(const QColor& color, const QString& net) const {
    const bool isHighlighted = !net.isEmpty() && net == design_.highlightedNet();
    return isHighlighted ? settings_.highlight : color;
}

void BoardPainter::drawPad(const Pad& pad, const QColor& color) const {
    painter_.fillPath(shapeOf(pad), shade(color, pad.net));
    if (pad.hole > 0) {
        painter_.setPen(Qt::NoPen);
        painter_.setBrush(settings_.hole);
        painter_.drawEllipse(pad.at, pad.hole / 2, pad.hole / 2);
        painter_.setBrush(Qt::NoBrush);
    }
}

void BoardPainter::drawTrack(const Track& track, const QColor& color) const {
    painter_.setPen(
        QPen(translucent(shade(color, track.net)), track.width, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    painter_.drawPolyline(track.points);
}

void BoardPainter::drawSelection() const {
    QPen pen(settings_.selection, 2);
    pen.setCosmetic(true);
    painter_.setPen(pen);
    painter_.drawPath(shapeOf(design_.board(), design_.selection()));
}

void drawPadNames(QPainter& painter, const Design& design, const QTransform& toWidget) {
    QFont font = painter.font();
    font.setPixelSize(11);
    painter.setFont(font);
    const QFontMetricsF metrics(font);
    for (const Pad& pad : design.board().pads) {
        const QRectF box = toWidget.mapRect(shapeOf(pad).boundingRect());
        const QString name = pad.name.section(u'.', -1);
        if (metrics.horizontalAdvance(name) + 2 < box.width() && metrics.height() < box.height() + 2 && pad.hole <= 0) {
            painter.drawText(box, Qt::AlignCenter, name);
        }
    }
}

}  // namespace viewer
