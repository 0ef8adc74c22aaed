#ifndef QT_BOARD_BOARD_DESIGN_H
#define QT_BOARD_BOARD_DESIGN_H

#include <QObject>
#include <QString>
#include <set>
#include <vector>

#include "board/board.h"

namespace viewer {

/// One thing of a board that can be selected.
struct Item {
    enum class Kind { None, Pad, Track };

    Kind kind = Kind::None;
    int index = 0;

    bool operator==(const Item& other) const { return kind == other.kind && index == other.index; }
    bool operator!=(const Item& other) const { return !(*this == other); }
};

/// The board that is open, what of it is selected, highlighted and visible, and how it was before: all views show the
/// one design.
class Design : public QObject {
    Q_OBJECT

public:
    const Board& board() const { return board_; }
    const QString& path() const { return path_; }
    bool isModified() const { return modified_; }
    Item selection() const { return selection_; }
    const QString& highlightedNet() const { return highlightedNet_; }
    int activeLayer() const { return activeLayer_; }
    bool isHidden(int layer) const { return hiddenLayers_.count(layer) > 0; }
    bool canUndo() const { return !past_.empty(); }
    bool canRedo() const { return !future_.empty(); }

    /// Shows another board; nothing of the one before is left.
    void open(const Board& board, const QString& path);

    /// Has the board saved under that path.
    void setSaved(const QString& path);

    void select(Item item);
    void highlightNet(const QString& net);
    void setActiveLayer(int layer);
    void setHidden(int layer, bool hidden);

    /// Takes the selected item off the board. Returns whether there was one.
    bool deleteSelection();
    void undo();
    void redo();

    /// Has at most so many edits undone.
    void setUndoLevels(int levels);

    /// Returns the net of the item; empty for none.
    QString netOf(Item item) const;

    /// Returns one line that tells what the item is.
    QString describe(Item item) const;

signals:
    /// The board is another one, or its contents have changed.
    void boardChanged();
    /// Selection, highlight, active layer or visibility have changed.
    void viewChanged();

private:
    void replaceBoard(std::vector<Board>& from, std::vector<Board>& to);
    void forgetOldest();

    Board board_;
    QString path_;
    bool modified_ = false;
    Item selection_;
    QString highlightedNet_;
    int activeLayer_ = 0;
    std::set<int> hiddenLayers_;
    std::vector<Board> past_;
    std::vector<Board> future_;
    std::size_t undoLevels_ = 50;
};

}  // namespace viewer

#endif
