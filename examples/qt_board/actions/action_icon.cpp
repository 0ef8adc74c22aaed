#include "actions/action_icon.h"

#include <QGuiApplication>
#include <QPainter>
#include <QPainterPath>
#include <QPalette>
#include <QPixmap>

namespace viewer {

namespace {

// Pictures are drawn on a square of 20 by 20.
constexpr int kSize = 20;
constexpr int kPixels = 40;

void drawLens(QPainter& painter) {
    painter.drawEllipse(QPointF(8.5, 8.5), 5.5, 5.5);
    painter.drawLine(QPointF(12.6, 12.6), QPointF(17.5, 17.5));
}

void drawOpen(QPainter& painter) {
    const QPointF folder[] = {{2.5, 16.5}, {2.5, 4.5}, {8, 4.5}, {10, 7}, {17.5, 7}, {17.5, 16.5}};
    painter.drawPolygon(folder, 6);
    painter.drawLine(QPointF(2.5, 10), QPointF(17.5, 10));
}

void drawSave(QPainter& painter) {
    painter.drawRect(QRectF(3, 3, 14, 14));
    painter.drawRect(QRectF(6.5, 3, 7, 4.5));
    painter.drawRect(QRectF(6, 11, 8, 6));
}

void drawBack(QPainter& painter) {
    QPainterPath arrow(QPointF(4, 8));
    arrow.lineTo(12, 8);
    arrow.arcTo(QRectF(8, 8, 8, 8), 90, -180);
    arrow.lineTo(7, 16);
    painter.drawPath(arrow);
    painter.drawLine(QPointF(4, 8), QPointF(8, 4.5));
    painter.drawLine(QPointF(4, 8), QPointF(8, 11.5));
}

void drawForth(QPainter& painter) {
    painter.translate(kSize, 0);
    painter.scale(-1, 1);
    drawBack(painter);
}

void drawZoomIn(QPainter& painter) {
    drawLens(painter);
    painter.drawLine(QPointF(6, 8.5), QPointF(11, 8.5));
    painter.drawLine(QPointF(8.5, 6), QPointF(8.5, 11));
}

void drawZoomOut(QPainter& painter) {
    drawLens(painter);
    painter.drawLine(QPointF(6, 8.5), QPointF(11, 8.5));
}

void drawZoomFit(QPainter& painter) {
    painter.drawRect(QRectF(6.5, 6.5, 7, 7));
    for (int corner = 0; corner < 4; ++corner) {
        painter.translate(kSize / 2.0, kSize / 2.0);
        painter.rotate(90);
        painter.translate(-kSize / 2.0, -kSize / 2.0);
        painter.drawLine(QPointF(2.5, 2.5), QPointF(6, 2.5));
        painter.drawLine(QPointF(2.5, 2.5), QPointF(2.5, 6));
    }
}

void drawGrid(QPainter& painter) {
    for (const double at : {4.0, 10.0, 16.0}) {
        painter.drawLine(QPointF(at, 2.5), QPointF(at, 17.5));
        painter.drawLine(QPointF(2.5, at), QPointF(17.5, at));
    }
}

void drawFlip(QPainter& painter) {
    const QPointF left[] = {{8, 4}, {8, 16}, {2.5, 16}};
    const QPointF right[] = {{12, 4}, {12, 16}, {17.5, 16}};
    painter.drawPolygon(left, 3);
    painter.setBrush(painter.pen().color());
    painter.drawPolygon(right, 3);
}

void drawBoard(QPainter& painter) {
    painter.drawRect(QRectF(3, 4, 14, 12));
    painter.drawLine(QPointF(6, 13), QPointF(10, 13));
    painter.drawLine(QPointF(10, 13), QPointF(14, 8));
    painter.drawEllipse(QPointF(6, 8), 1.5, 1.5);
}

void drawSlab(QPainter& painter, double height, bool isFilled) {
    const QPointF slab[] = {{10, height - 4}, {18, height}, {10, height + 4}, {2, height}};
    painter.setBrush(isFilled ? QBrush(painter.pen().color()) : QBrush());
    painter.drawPolygon(slab, 4);
}

void drawSpace(QPainter& painter) {
    const QPointF cube[] = {{10, 2.5}, {16.5, 6}, {16.5, 14}, {10, 17.5}, {3.5, 14}, {3.5, 6}};
    painter.drawPolygon(cube, 6);
    painter.drawLine(QPointF(10, 9.5), QPointF(10, 17.5));
    painter.drawLine(QPointF(10, 9.5), QPointF(3.5, 6));
    painter.drawLine(QPointF(10, 9.5), QPointF(16.5, 6));
}

void drawLayerTop(QPainter& painter) {
    drawSlab(painter, 13.5, false);
    drawSlab(painter, 7, true);
}

void drawLayerBottom(QPainter& painter) {
    drawSlab(painter, 13.5, true);
    drawSlab(painter, 7, false);
}

void drawFromTop(QPainter& painter) {
    painter.drawRect(QRectF(3.5, 3.5, 13, 13));
    painter.drawRect(QRectF(7.5, 7.5, 5, 5));
}

void drawPullApart(QPainter& painter) {
    drawSlab(painter, 5.5, false);
    drawSlab(painter, 14.5, false);
    painter.drawLine(QPointF(10, 8), QPointF(10, 12));
}

void drawSquare(QPainter& painter) { painter.drawRect(QRectF(5, 5, 10, 10)); }

struct Picture {
    const char* name;
    void (*draw)(QPainter& painter);
};

constexpr Picture kPictures[] = {
    {"open", drawOpen},
    {"save", drawSave},
    {"undo", drawBack},
    {"redo", drawForth},
    {"zoom_in", drawZoomIn},
    {"zoom_out", drawZoomOut},
    {"zoom_fit", drawZoomFit},
    {"grid", drawGrid},
    {"flip", drawFlip},
    {"board", drawBoard},
    {"space", drawSpace},
    {"layer_top", drawLayerTop},
    {"layer_bottom", drawLayerBottom},
    {"camera_top", drawFromTop},
    {"camera_isometric", drawSpace},
    {"pull_apart", drawPullApart},
};

const Picture* pictureNamed(const QString& name) {
    for (const Picture& picture : kPictures) {
        if (name == QLatin1String(picture.name)) {
            return &picture;
        }
    }
    return nullptr;
}

}  // namespace

QIcon iconNamed(const QString& name) {
    if (name.isEmpty()) {
        return {};
    }
    QPixmap pixmap(kPixels, kPixels);
    pixmap.fill(Qt::transparent);
    QPainter painter(&pixmap);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.scale(kPixels / double{kSize}, kPixels / double{kSize});
    painter.setPen(QPen(QGuiApplication::palette().color(QPalette::ButtonText), 1.4));
    const Picture* const picture = pictureNamed(name);
    (picture == nullptr ? drawSquare : picture->draw)(painter);
    return QIcon(pixmap);
}

}  // namespace viewer
