#include "board/board_reader.h"

#include <QFile>
#include <QStringDecoder>

#include "board/board_line.h"
#include "board/board_words.h"

namespace viewer {

namespace {

constexpr qint64 kLargestFile = qint64{16} << 20;

int layerNamed(const Board& board, const QString& name) {
    for (std::size_t i = 0; i < board.layers.size(); ++i) {
        if (board.layers[i].name == name) {
            return static_cast<int>(i);
        }
    }
    return kAllLayers;
}

int takeLayer(BoardLine& line, const Board& board) {
    const QString name = line.takeWord("a layer");
    const int layer = layerNamed(board, name);
    if (layer == kAllLayers) {
        throw LineError(QStringLiteral("no line above names a layer \"%1\"").arg(name));
    }
    return layer;
}

template <typename T>
T known(std::optional<T> value, const QString& word, const QStringList& allowed) {
    if (!value) {
        throw LineError(QStringLiteral("\"%1\" is none of %2").arg(word, allowed.join(QStringLiteral(", "))));
    }
    return *value;
}

void readName(BoardLine& line, Board& board) { board.name = line.takeWord("a name"); }

void readOutline(BoardLine& line, Board& board) {
    if (!board.outline.isEmpty()) {
        throw LineError(QStringLiteral("the board has an outline already"));
    }
    board.outline = line.takePoints(3);
}

void readLayer(BoardLine& line, Board& board) {
    Layer layer;
    layer.name = line.takeWord("a name");
    if (layer.name == QLatin1String("all") || layerNamed(board, layer.name) != kAllLayers) {
        throw LineError(QStringLiteral("the name \"%1\" is taken").arg(layer.name));
    }
    const QString kind = line.takeWord("a kind of layer");
    layer.kind = known(layerKindOf(kind), kind, layerKindWords());
    board.layers.push_back(layer);
}

void readPad(BoardLine& line, Board& board) {
    Pad pad;
    pad.name = line.takeWord("a name");
    pad.layer = line.takeIf("all") ? kAllLayers : takeLayer(line, board);
    const QString shape = line.takeWord("a shape");
    pad.shape = known(padShapeOf(shape), shape, padShapeWords());
    pad.at = line.takePoint();
    pad.size = line.takeSize();
    if (line.takeIf("hole")) {
        pad.hole = line.takeLength("the hole's diameter");
    }
    if (line.takeIf("net")) {
        pad.net = line.takeWord("a net");
    }
    board.pads.push_back(pad);
}

void readTrack(BoardLine& line, Board& board) {
    Track track;
    track.layer = takeLayer(line, board);
    track.width = line.takeLength("the track's width");
    track.points = line.takePoints(2);
    if (line.takeIf("net")) {
        track.net = line.takeWord("a net");
    }
    board.tracks.push_back(track);
}

void readPart(BoardLine& line, Board& board) {
    Part part;
    part.name = line.takeWord("a name");
    part.onTop = line.takeIf("top");
    if (!part.onTop && !line.takeIf("bottom")) {
        throw LineError(QStringLiteral("\"top\" or \"bottom\" is expected after the part's name"));
    }
    part.at = line.takePoint();
    part.size = line.takeSize();
    part.height = line.takeLength("the part's thickness");
    board.parts.push_back(part);
}

struct Keyword {
    const char* word;
    void (*read)(BoardLine& line, Board& board);
};

constexpr Keyword kKeywords[] = {
    {"board", readName}, {"outline", readOutline}, {"layer", readLayer},
    {"pad", readPad},    {"track", readTrack},     {"part", readPart},
};

void readLine(const QString& text, Board& board) {
    BoardLine line(text);
    if (line.atEnd()) {
        return;
    }
    for (const Keyword& keyword : kKeywords) {
        if (line.takeIf(keyword.word)) {
            keyword.read(line, board);
            line.takeEnd();
            return;
        }
    }
    throw LineError(QStringLiteral("\"%1\" begins no line of a board file").arg(line.takeWord("a word")));
}

QStringList missingIn(const Board& board) {
    QStringList missing;
    if (board.outline.isEmpty()) {
        missing << QStringLiteral("The file has no line \"outline\".");
    }
    if (board.layers.empty()) {
        missing << QStringLiteral("The file has no line \"layer\".");
    }
    return missing;
}

ReadBoard failed(const QString& error) { return {{}, {error}}; }

}  // namespace

ReadBoard readBoard(const QString& text) {
    Board board;
    QStringList errors;
    int number = 0;
    for (const QString& line : text.split(u'\n')) {
        ++number;
        try {
            readLine(line, board);
        } catch (const LineError& error) {
            errors << QStringLiteral("Line %1: %2.").arg(number).arg(QString::fromStdString(error.what()));
        }
        if (errors.size() == kMostErrors) {
            break;
        }
    }
    if (errors.isEmpty()) {
        errors = missingIn(board);
    }
    if (!errors.isEmpty()) {
        return {{}, errors};
    }
    return {board, {}};
}

ReadBoard readBoardFile(const QString& path) {
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) {
        return failed(QStringLiteral("The file cannot be opened: %1.").arg(file.errorString()));
    }
    const QByteArray bytes = file.read(kLargestFile + 1);
    if (bytes.size() > kLargestFile) {
        return failed(QStringLiteral("The file is larger than 16 MiB."));
    }
    QStringDecoder decoder(QStringDecoder::Utf8);
    const QString text = decoder(bytes);
    if (decoder.hasError()) {
        return failed(QStringLiteral("The file is no text in UTF-8."));
    }
    return readBoard(text);
}

}  // namespace viewer
