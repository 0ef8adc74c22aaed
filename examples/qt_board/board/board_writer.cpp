#include "board/board_writer.h"

#include <QLocale>
#include <QSaveFile>
#include <QStringList>

#include "board/board_words.h"

namespace viewer {

namespace {

QString quoted(const QString& name) {
    const bool isPlain = !name.isEmpty() && !name.contains(u' ') && !name.contains(u'\t') && !name.startsWith(u'#');
    return isPlain ? name : u'"' + name + u'"';
}

QString number(double value) { return QLocale::c().toString(value, 'g', QLocale::FloatingPointShortest); }

QString pointText(QPointF point) { return number(point.x()) + u' ' + number(point.y()); }

QString sizeText(QSizeF size) { return number(size.width()) + u' ' + number(size.height()); }

QString pointsText(const QPolygonF& points) {
    QStringList texts;
    for (const QPointF point : points) {
        texts << pointText(point);
    }
    return texts.join(u' ');
}

QString netText(const QString& net) { return net.isEmpty() ? QString() : QStringLiteral(" net ") + quoted(net); }

QString lineOf(const Layer& layer) {
    return QStringLiteral("layer ") + quoted(layer.name) + u' ' + wordOf(layer.kind) + u'\n';
}

QString lineOf(const Board& board, const Pad& pad) {
    QString line = QStringLiteral("pad ") + quoted(pad.name) + u' ' + quoted(layerName(board, pad.layer)) + u' ' +
                   wordOf(pad.shape) + u' ' + pointText(pad.at) + u' ' + sizeText(pad.size);
    if (pad.hole > 0) {
        line += QStringLiteral(" hole ") + number(pad.hole);
    }
    return line + netText(pad.net) + u'\n';
}

QString lineOf(const Board& board, const Track& track) {
    return QStringLiteral("track ") + quoted(layerName(board, track.layer)) + u' ' + number(track.width) + u' ' +
           pointsText(track.points) + netText(track.net) + u'\n';
}

QString lineOf(const Part& part) {
    return QStringLiteral("part ") + quoted(part.name) +
           (part.onTop ? QStringLiteral(" top ") : QStringLiteral(" bottom ")) + pointText(part.at) + u' ' +
           sizeText(part.size) + u' ' + number(part.height) + u'\n';
}

}  // namespace

QString boardText(const Board& board) {
    QString text = QStringLiteral("board ") + quoted(board.name) + u'\n';
    text += QStringLiteral("outline ") + pointsText(board.outline) + u'\n';
    for (const Layer& layer : board.layers) {
        text += lineOf(layer);
    }
    for (const Pad& pad : board.pads) {
        text += lineOf(board, pad);
    }
    for (const Track& track : board.tracks) {
        text += lineOf(board, track);
    }
    for (const Part& part : board.parts) {
        text += lineOf(part);
    }
    return text;
}

QString writeBoardFile(const Board& board, const QString& path) {
    QSaveFile file(path);
    const QByteArray bytes = boardText(board).toUtf8();
    const bool isWritten = file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size() && file.commit();
    return isWritten ? QString() : file.errorString();
}

}  // namespace viewer
