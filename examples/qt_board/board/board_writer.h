#ifndef QT_BOARD_BOARD_BOARD_WRITER_H
#define QT_BOARD_BOARD_BOARD_WRITER_H

#include <QString>

#include "board/board.h"

namespace viewer {

/// Returns the text of a board file, which `readBoard` reads back as the same board.
QString boardText(const Board& board);

/// Replaces the file in one step. Returns why it could not be written, or an empty text.
QString writeBoardFile(const Board& board, const QString& path);

}  // namespace viewer

#endif
