#ifndef QT_BOARD_VIEWS_BOARD_VIEW_H
#define QT_BOARD_VIEWS_BOARD_VIEW_H

#include <QWidget>

#include "board/design.h"
#include "views/view_settings.h"

namespace viewer {

/// The flat editor: the board from above, layer by layer.
class BoardView : public QWidget {
    Q_OBJECT

public:
    explicit BoardView(Design& design, QWidget* parent = nullptr);

    void setSettings(const ViewSettings& settings);

    void zoomIn() { zoomBy(settings_.zoomFactor); }
    void zoomOut() { zoomBy(1 / settings_.zoomFactor); }
    void zoomToFit();
    void zoomToSelection();
    void flip();
    bool isFlipped() const { return flipped_; }
    double pixelsPerMillimetre() const { return scale_; }

    /// Returns the item under that place of the widget, the topmost first.
    Item itemAt(QPointF place) const;

    /// Returns the place of the widget where that point of the board is.
    QPointF placeOf(QPointF point) const;

signals:
    /// The mouse is over that point of the board.
    void pointed(QPointF point);

protected:
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;

private:
    void zoomBy(double factor) { zoomAround(rect().center(), factor); }
    void zoomAround(QPointF place, double factor);
    void showArea(QRectF area);
    QTransform toWidget() const;

    Design& design_;
    ViewSettings settings_;
    double scale_ = 10;
    QPointF center_;
    bool flipped_ = false;
    bool fitted_ = true;
    QPointF dragged_;
};

}  // namespace viewer

#endif
