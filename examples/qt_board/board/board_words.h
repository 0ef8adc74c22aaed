#ifndef QT_BOARD_BOARD_BOARD_WORDS_H
#define QT_BOARD_BOARD_BOARD_WORDS_H

#include <QString>
#include <QStringList>
#include <optional>

#include "board/board.h"

/// The words of a board file, which its reader and its writer share.
namespace viewer {

QString wordOf(LayerKind kind);
std::optional<LayerKind> layerKindOf(const QString& word);
QStringList layerKindWords();

QString wordOf(PadShape shape);
std::optional<PadShape> padShapeOf(const QString& word);
QStringList padShapeWords();

}  // namespace viewer

#endif
