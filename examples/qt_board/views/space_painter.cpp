#include "views/space_painter.h"

#include <QPainter>
#include <algorithm>
#include <cmath>

#include "views/board_painter.h"

namespace viewer {

namespace {

constexpr double kSheetThickness = 0.25;
constexpr int kSheetOpacity = 110;

bool isOnTop(LayerKind kind) { return kind == LayerKind::TopCopper || kind == LayerKind::TopSilkscreen; }

struct Side {
    QPointF from;
    QPointF to;
};

QPolygonF boxOf(const Part& part) {
    return QPolygonF(QRectF(part.at - QPointF(part.size.width() / 2, part.size.height() / 2), part.size));
}

/// A wall is the darker the more it faces sideways.
QColor wallColor(const QColor& color, const Side& side) {
    const QPointF along = side.to - side.from;
    const double slope = std::abs(std::atan2(along.y(), along.x()));
    return color.darker(125 + static_cast<int>(35 * std::abs(std::sin(slope))));
}

}  // namespace

void SpacePainter::draw() const { pulledApart_ ? drawApart() : drawWhole(); }

void SpacePainter::drawWhole() const {
    drawParts(false, 0);
    drawPrism(design_.board().outline, 0, settings_.boardThickness, settings_.substrate);
    const int count = static_cast<int>(design_.board().layers.size());
    for (int layer = count - 1; layer >= 0; --layer) {
        if (isOnTop(design_.board().layers[static_cast<std::size_t>(layer)].kind)) {
            drawLayer(layer, settings_.boardThickness);
        }
    }
    drawThroughPads(settings_.boardThickness);
    drawParts(true, settings_.boardThickness);
}

/// Draws each layer for itself, the highest last, copper on sheets that one can see through.
void SpacePainter::drawApart() const {
    const std::vector<Layer>& layers = design_.board().layers;
    const int count = static_cast<int>(layers.size());
    double height = -settings_.layerGap * count;
    drawParts(false, height);
    QColor sheet = settings_.substrate;
    sheet.setAlpha(kSheetOpacity);
    for (int layer = count - 1; layer >= 0; --layer) {
        if (isCopper(layers[static_cast<std::size_t>(layer)].kind)) {
            drawPrism(design_.board().outline, height, height + kSheetThickness, sheet);
            drawThroughPads(height + kSheetThickness);
        }
        drawLayer(layer, height + kSheetThickness);
        height += settings_.layerGap;
    }
    drawParts(true, height - settings_.layerGap);
}

void SpacePainter::drawPrism(const QPolygonF& base, double bottom, double top, const QColor& color) const {
    painter_.resetTransform();
    painter_.setPen(Qt::NoPen);
    std::vector<Side> sides;
    for (int i = 0; i < base.size(); ++i) {
        sides.push_back({base[i], base[(i + 1) % base.size()]});
    }
    std::stable_sort(sides.begin(), sides.end(), [this](const Side& one, const Side& other) {
        return projection_.depth(one.from + one.to) > projection_.depth(other.from + other.to);
    });
    for (const Side& side : sides) {
        const QPointF wall[] = {projection_.map(side.from, bottom), projection_.map(side.to, bottom),
                                projection_.map(side.to, top), projection_.map(side.from, top)};
        painter_.setBrush(wallColor(color, side));
        painter_.drawPolygon(wall, 4);
    }
    painter_.setTransform(projection_.plane(top));
    painter_.setBrush(color);
    painter_.drawPolygon(base);
    painter_.setBrush(Qt::NoBrush);
}

QColor SpacePainter::shade(const QColor& color, const QString& net) const {
    const bool isHighlighted = !net.isEmpty() && net == design_.highlightedNet();
    return isHighlighted ? settings_.highlight : color;
}

void SpacePainter::drawLayer(int layer, double height) const {
    const Layer& shown = design_.board().layers[static_cast<std::size_t>(layer)];
    if (design_.isHidden(layer) || (isCopper(shown.kind) && !settings_.spaceCopper)) {
        return;
    }
    const QColor& color = settings_.colorOf(shown);
    painter_.setTransform(projection_.plane(height));
    for (const Track& track : design_.board().tracks) {
        if (track.layer == layer) {
            painter_.setPen(QPen(shade(color, track.net), track.width, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
            painter_.drawPolyline(track.points);
        }
    }
    for (const Pad& pad : design_.board().pads) {
        if (pad.layer == layer) {
            painter_.fillPath(shapeOf(pad), shade(color, pad.net));
        }
    }
}

void SpacePainter::drawThroughPads(double height) const {
    if (!settings_.spaceCopper) {
        return;
    }
    painter_.setTransform(projection_.plane(height));
    painter_.setPen(Qt::NoPen);
    for (const Pad& pad : design_.board().pads) {
        if (pad.layer == kAllLayers) {
            painter_.fillPath(shapeOf(pad), shade(settings_.throughPad, pad.net));
            painter_.setBrush(settings_.hole);
            painter_.drawEllipse(pad.at, pad.hole / 2, pad.hole / 2);
        }
    }
    painter_.setBrush(Qt::NoBrush);
}

void SpacePainter::drawParts(bool onTop, double height) const {
    if (!settings_.spaceParts) {
        return;
    }
    std::vector<Part> parts = design_.board().parts;
    std::stable_sort(parts.begin(), parts.end(), [this](const Part& one, const Part& other) {
        return projection_.depth(one.at) > projection_.depth(other.at);
    });
    for (const Part& part : parts) {
        if (part.onTop == onTop) {
            const double bottom = onTop ? height : height - part.height;
            drawPrism(boxOf(part), bottom, bottom + part.height, settings_.part);
        }
    }
}

}  // namespace viewer
