#include "board/design.h"

#include <utility>

namespace viewer {

namespace {

template <typename T>
void eraseAt(std::vector<T>& items, int index) {
    items.erase(items.begin() + index);
}

}  // namespace

void Design::open(const Board& board, const QString& path) {
    board_ = board;
    path_ = path;
    modified_ = false;
    selection_ = {};
    highlightedNet_.clear();
    activeLayer_ = 0;
    hiddenLayers_.clear();
    past_.clear();
    future_.clear();
    emit boardChanged();
}

void Design::setSaved(const QString& path) {
    path_ = path;
    modified_ = false;
    emit boardChanged();
}

void Design::select(Item item) {
    selection_ = item;
    emit viewChanged();
}

void Design::highlightNet(const QString& net) {
    highlightedNet_ = net;
    emit viewChanged();
}

void Design::setActiveLayer(int layer) {
    const int count = static_cast<int>(board_.layers.size());
    if (count > 0) {
        activeLayer_ = (layer % count + count) % count;
        emit viewChanged();
    }
}

void Design::setHidden(int layer, bool hidden) {
    if (hidden) {
        hiddenLayers_.insert(layer);
    } else {
        hiddenLayers_.erase(layer);
    }
    emit viewChanged();
}

bool Design::deleteSelection() {
    if (selection_.kind == Item::Kind::None) {
        return false;
    }
    past_.push_back(board_);
    forgetOldest();
    future_.clear();
    if (selection_.kind == Item::Kind::Pad) {
        eraseAt(board_.pads, selection_.index);
    } else {
        eraseAt(board_.tracks, selection_.index);
    }
    selection_ = {};
    modified_ = true;
    emit boardChanged();
    return true;
}

void Design::undo() { replaceBoard(past_, future_); }

void Design::redo() { replaceBoard(future_, past_); }

void Design::replaceBoard(std::vector<Board>& from, std::vector<Board>& to) {
    if (from.empty()) {
        return;
    }
    to.push_back(std::exchange(board_, from.back()));
    from.pop_back();
    selection_ = {};
    modified_ = true;
    emit boardChanged();
}

void Design::setUndoLevels(int levels) {
    undoLevels_ = static_cast<std::size_t>(levels);
    forgetOldest();
}

void Design::forgetOldest() {
    while (past_.size() > undoLevels_) {
        past_.erase(past_.begin());
    }
}

QString Design::netOf(Item item) const {
    const auto index = static_cast<std::size_t>(item.index);
    switch (item.kind) {
        case Item::Kind::Pad:
            return board_.pads[index].net;
        case Item::Kind::Track:
            return board_.tracks[index].net;
        case Item::Kind::None:
            break;
    }
    return {};
}

QString Design::describe(Item item) const {
    const QString net = netOf(item).isEmpty() ? tr("no net") : tr("net %1").arg(netOf(item));
    const auto index = static_cast<std::size_t>(item.index);
    switch (item.kind) {
        case Item::Kind::Pad:
            return tr("Pad %1, %2").arg(board_.pads[index].name, net);
        case Item::Kind::Track:
            return tr("Track on %1, %2").arg(layerName(board_, board_.tracks[index].layer), net);
        case Item::Kind::None:
            break;
    }
    return tr("Nothing is selected");
}

}  // namespace viewer
