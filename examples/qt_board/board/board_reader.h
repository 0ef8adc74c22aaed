#ifndef QT_BOARD_BOARD_BOARD_READER_H
#define QT_BOARD_BOARD_BOARD_READER_H

#include <QString>
#include <QStringList>
#include <optional>

#include "board/board.h"

namespace viewer {

/// A board, or else why there is none: the board is there exactly when there are no errors.
struct ReadBoard {
    std::optional<Board> board;
    /// A sentence each, which begins with the line's number where one line is to blame. At most `kMostErrors`.
    QStringList errors;
};

inline constexpr int kMostErrors = 20;

/// Reads the text of a board file. A line each, in any order but that layers come before what lies on them:
///
///     board NAME
///     outline X Y X Y X Y ...
///     layer NAME top_copper|inner_copper|bottom_copper|top_silkscreen|bottom_silkscreen
///     pad NAME LAYER|all round|rect|oval X Y WIDTH HEIGHT [hole DIAMETER] [net NAME]
///     track LAYER WIDTH X Y X Y ... [net NAME]
///     part NAME top|bottom X Y WIDTH HEIGHT THICKNESS
///
/// A board needs its outline and a layer; everything else may be missing.
ReadBoard readBoard(const QString& text);

/// Reads a board file in UTF-8 of at most 16 MiB.
ReadBoard readBoardFile(const QString& path);

}  // namespace viewer

#endif
