#ifndef QT_BOARD_VIEWS_VIEW_SETTINGS_H
#define QT_BOARD_VIEWS_VIEW_SETTINGS_H

#include <QColor>
#include <QString>
#include <QStringList>

#include "board/board.h"

namespace viewer {

enum class GridStyle { Dots, Lines, Crosses };
enum class Unit { Millimetre, Mil, Inch };

/// Holds the values that the views take from the preferences.
struct ViewSettings {
    Unit unit = Unit::Millimetre;
    int decimals = 3;
    bool antialiasing = true;
    bool padNames = true;
    double zoomFactor = 1.25;
    double grid = 1.27;
    bool gridVisible = true;
    GridStyle gridStyle = GridStyle::Dots;
    int gridMultiple = 5;
    int undoLevels = 50;

    QColor background;
    QColor board;
    QColor outline;
    QColor gridColor;
    QColor layers[5];  ///< By `LayerKind`.
    QColor throughPad;
    QColor hole;
    QColor highlight;
    QColor selection;

    QColor spaceBackground;
    QColor substrate;
    QColor part;
    double boardThickness = 1.6;
    double layerGap = 6;
    bool spaceParts = true;
    bool spaceCopper = true;
    bool numbersAsNumbers = true;

    const QColor& colorOf(const Layer& layer) const { return layers[static_cast<int>(layer.kind)]; }
};

/// Returns the settings in force. A value that makes no sense counts as the shipped default, and `complaints` gets a
/// sentence that says so.
ViewSettings readViewSettings(QStringList* complaints);

/// Returns the length as the settings want it shown, without or with its unit.
QString lengthText(double millimetres, const ViewSettings& settings);
QString lengthTextWithUnit(double millimetres, const ViewSettings& settings);

}  // namespace viewer

#endif
