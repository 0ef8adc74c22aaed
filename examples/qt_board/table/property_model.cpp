#include "table/property_model.h"

#include <QMap>

namespace viewer {

namespace {

Cell text(const QString& value) { return {Cell::Kind::Text, value, 0}; }
Cell length(double value) { return {Cell::Kind::Length, {}, value}; }
Cell count(double value) { return {Cell::Kind::Count, {}, value}; }

struct NetCounts {
    int pads = 0;
    int tracks = 0;
    double length = 0;
};

QMap<QString, NetCounts> countNets(const Board& board) {
    QMap<QString, NetCounts> nets;
    for (const Pad& pad : board.pads) {
        ++nets[pad.net].pads;
    }
    for (const Track& track : board.tracks) {
        ++nets[track.net].tracks;
        nets[track.net].length += lengthOf(track);
    }
    nets.remove(QString());
    return nets;
}

}  // namespace

PropertyModel::PropertyModel(Design& design, QObject* parent) : QAbstractTableModel(parent), design_(design) {
    connect(&design, &Design::boardChanged, this, &PropertyModel::rebuild);
    rebuild();
}

void PropertyModel::setKind(ObjectKind kind) {
    kind_ = kind;
    rebuild();
}

void PropertyModel::setSettings(const ViewSettings& settings) {
    settings_ = settings;
    rebuild();
}

QString PropertyModel::header() const {
    switch (kind_) {
        case ObjectKind::Pad:
            return QStringLiteral("Pad");
        case ObjectKind::Track:
            return QStringLiteral("Track");
        case ObjectKind::Net:
            break;
    }
    return QStringLiteral("Net");
}

void PropertyModel::rebuild() {
    beginResetModel();
    rows_.clear();
    switch (kind_) {
        case ObjectKind::Pad:
            addPads();
            break;
        case ObjectKind::Track:
            addTracks();
            break;
        case ObjectKind::Net:
            addNets();
            break;
    }
    endResetModel();
}

void PropertyModel::addPads() {
    columns_ = QStringList{"Name", "Net", "Layer", "X", "Y", "Width", "Height", "Hole"};
    for (const Pad& pad : design_.board().pads) {
        rows_.push_back({text(pad.name), text(pad.net), text(layerName(design_.board(), pad.layer)), length(pad.at.x()),
                         length(pad.at.y()), length(pad.size.width()), length(pad.size.height()), length(pad.hole)});
    }
}

void PropertyModel::addTracks() {
    columns_ = QStringList{"Net", "Layer", "Width", "Length", "Segments"};
    for (const Track& track : design_.board().tracks) {
        rows_.push_back({text(track.net), text(layerName(design_.board(), track.layer)), length(track.width),
                         length(lengthOf(track)), count(static_cast<double>(track.points.size() - 1))});
    }
}

void PropertyModel::addNets() {
    columns_ = QStringList{"Name", "Pads", "Tracks", "Length"};
    const QMap<QString, NetCounts> nets = countNets(design_.board());
    for (auto net = nets.begin(); net != nets.end(); ++net) {
        rows_.push_back({text(net.key()), count(net->pads), count(net->tracks), length(net->length)});
    }
}

const Cell& PropertyModel::cell(int row, int column) const {
    return rows_[static_cast<std::size_t>(row)][static_cast<std::size_t>(column)];
}

QString PropertyModel::cellText(int row, int column) const {
    const Cell& shown = cell(row, column);
    switch (shown.kind) {
        case Cell::Kind::Length:
            return lengthText(shown.number, settings_);
        case Cell::Kind::Count:
            return QString::number(shown.number);
        case Cell::Kind::Text:
            break;
    }
    return shown.text;
}

Item PropertyModel::itemOf(int row) const {
    switch (kind_) {
        case ObjectKind::Pad:
            return {Item::Kind::Pad, row};
        case ObjectKind::Track:
            return {Item::Kind::Track, row};
        case ObjectKind::Net:
            break;
    }
    return {};
}

QString PropertyModel::netOf(int row) const {
    return kind_ == ObjectKind::Net ? cell(row, 0).text : design_.netOf(itemOf(row));
}

int PropertyModel::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : static_cast<int>(rows_.size());
}

int PropertyModel::columnCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : static_cast<int>(columns_.size());
}

QVariant PropertyModel::data(const QModelIndex& index, int role) const {
    if (role == Qt::DisplayRole) {
        return cellText(index.row(), index.column());
    }
    if (role == Qt::TextAlignmentRole && cell(index.row(), index.column()).kind != Cell::Kind::Text) {
        return QVariant(Qt::AlignRight | Qt::AlignVCenter);
    }
    return {};
}

QVariant PropertyModel::headerData(int section, Qt::Orientation orientation, int role) const {
    if (orientation == Qt::Horizontal && role == Qt::DisplayRole) {
        return columns_[section];
    }
    return {};
}

}  // namespace viewer
