#include "board/board_line.h"

#include <QLocale>
#include <cmath>

namespace viewer {

namespace {

constexpr double kFarthest = 10'000;

bool isBlank(QChar c) { return c == u' ' || c == u'\t' || c == u'\r'; }

QString quotedWord(const QString& text, qsizetype& at) {
    const qsizetype end = text.indexOf(u'"', at + 1);
    if (end < 0) {
        throw LineError(QStringLiteral("a quotation mark is not closed"));
    }
    const QString word = text.mid(at + 1, end - at - 1);
    at = end + 1;
    return word;
}

QString plainWord(const QString& text, qsizetype& at) {
    const qsizetype begin = at;
    while (at < text.size() && !isBlank(text[at])) {
        ++at;
    }
    return text.mid(begin, at - begin);
}

QStringList wordsOf(const QString& text) {
    QStringList words;
    qsizetype at = 0;
    while (at < text.size() && text[at] != u'#') {
        if (isBlank(text[at])) {
            ++at;
        } else {
            words << (text[at] == u'"' ? quotedWord(text, at) : plainWord(text, at));
        }
    }
    return words;
}

QString named(const char* meaning) { return QString::fromLatin1(meaning); }

}  // namespace

BoardLine::BoardLine(const QString& text) : words_(wordsOf(text)) {}

QString BoardLine::takeWord(const char* meaning) {
    if (atEnd()) {
        throw LineError(QStringLiteral("the line ends where %1 is expected").arg(named(meaning)));
    }
    return words_[next_++];
}

bool BoardLine::takeIf(const char* word) {
    const bool is = !atEnd() && words_[next_] == QLatin1String(word);
    next_ += is ? 1 : 0;
    return is;
}

double BoardLine::takeNumber(const char* meaning) {
    const QString word = takeWord(meaning);
    bool isNumber = false;
    const double number = QLocale::c().toDouble(word, &isNumber);
    if (!isNumber || !std::isfinite(number)) {
        throw LineError(QStringLiteral("\"%1\" is no number, where %2 is expected").arg(word, named(meaning)));
    }
    if (std::abs(number) > kFarthest) {
        throw LineError(QStringLiteral("%1 is farther out than 10,000 mm").arg(word));
    }
    return number;
}

double BoardLine::takeLength(const char* meaning) {
    const double length = takeNumber(meaning);
    if (length <= 0) {
        throw LineError(QStringLiteral("%1 is not above 0").arg(named(meaning)));
    }
    return length;
}

QPointF BoardLine::takePoint() {
    const double x = takeNumber("an x coordinate");
    return {x, takeNumber("a y coordinate")};
}

QSizeF BoardLine::takeSize() {
    const double width = takeLength("a width");
    return {width, takeLength("a height")};
}

bool BoardLine::isNumberNext() const {
    bool isNumber = false;
    if (!atEnd()) {
        QLocale::c().toDouble(words_[next_], &isNumber);
    }
    return isNumber;
}

QPolygonF BoardLine::takePoints(int fewest) {
    QPolygonF points;
    while (points.size() < fewest || isNumberNext()) {
        points << takePoint();
    }
    return points;
}

void BoardLine::takeEnd() const {
    if (!atEnd()) {
        throw LineError(QStringLiteral("\"%1\" is not expected here").arg(words_[next_]));
    }
}

}  // namespace viewer
