#ifndef QT_BOARD_ACTIONS_ACTION_ICON_H
#define QT_BOARD_ACTIONS_ACTION_ICON_H

#include <QIcon>
#include <QString>

namespace viewer {

/// Returns the picture that the catalogue calls so, drawn in the colors of the desktop; an empty one for no name, a
/// plain square for a name that has no picture.
QIcon iconNamed(const QString& name);

}  // namespace viewer

#endif
