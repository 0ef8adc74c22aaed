#ifndef QT_BOARD_BOARD_BOARD_LINE_H
#define QT_BOARD_BOARD_BOARD_LINE_H

#include <QPointF>
#include <QPolygonF>
#include <QSizeF>
#include <QString>
#include <QStringList>
#include <stdexcept>

namespace viewer {

/// Says, for people, why a line of a board file makes no sense.
class LineError : public std::runtime_error {
public:
    explicit LineError(const QString& text) : std::runtime_error(text.toStdString()) {}
};

/// One line of a board file, taken word by word from the left. What is not as asked for throws `LineError`.
class BoardLine {
public:
    /// Splits at blanks and tabs. A word in double quotes may hold blanks; "#" outside of quotes begins a comment.
    explicit BoardLine(const QString& text);

    bool atEnd() const { return next_ == words_.size(); }

    /// Takes the next word; `meaning` names it in an error.
    QString takeWord(const char* meaning);

    /// Takes the next word when it is this one.
    bool takeIf(const char* word);

    /// Takes a number between -10,000 and 10,000, which no board leaves.
    double takeNumber(const char* meaning);

    /// Takes a number above 0.
    double takeLength(const char* meaning);

    QPointF takePoint();
    QSizeF takeSize();

    /// Takes points for as long as numbers follow, at least `fewest`.
    QPolygonF takePoints(int fewest);

    /// Throws unless every word has been taken.
    void takeEnd() const;

private:
    bool isNumberNext() const;

    QStringList words_;
    qsizetype next_ = 0;
};

}  // namespace viewer

#endif
