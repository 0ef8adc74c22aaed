#ifndef QT_BOARD_WINDOW_PICTURES_H
#define QT_BOARD_WINDOW_PICTURES_H

#include <QString>

namespace viewer {

class MainWindow;

/// Writes a picture of each thing that the viewer shows to the folder, which is made. Returns whether all were written.
bool takePictures(MainWindow& window, const QString& folder);

}  // namespace viewer

#endif
