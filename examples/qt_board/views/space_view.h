#ifndef QT_BOARD_VIEWS_SPACE_VIEW_H
#define QT_BOARD_VIEWS_SPACE_VIEW_H

#include <QWidget>

#include "board/design.h"
#include "views/projection.h"
#include "views/view_settings.h"

namespace viewer {

/// The 3D-like editor: the board as a slab with its parts, in parallel projection.
class SpaceView : public QWidget {
    Q_OBJECT

public:
    explicit SpaceView(Design& design, QWidget* parent = nullptr);

    void setSettings(const ViewSettings& settings);

    void zoomIn() { zoomBy(settings_.zoomFactor); }
    void zoomOut() { zoomBy(1 / settings_.zoomFactor); }
    void zoomToFit();
    void look(double turn, double tilt);
    void turnBy(double degrees);
    void setPulledApart(bool pulledApart);
    bool isPulledApart() const { return pulledApart_; }
    double turn() const { return projection_.turn; }
    double tilt() const { return projection_.tilt; }

protected:
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;

private:
    void zoomBy(double factor);

    Design& design_;
    ViewSettings settings_;
    Projection projection_;
    bool pulledApart_ = false;
    bool fitted_ = true;
    QPointF dragged_;
};

}  // namespace viewer

#endif
