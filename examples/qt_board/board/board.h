#ifndef QT_BOARD_BOARD_BOARD_H
#define QT_BOARD_BOARD_BOARD_H

#include <QPointF>
#include <QPolygonF>
#include <QSizeF>
#include <QString>
#include <vector>

/// A board as its file describes it: plain values, lengths in millimetres, y upwards.
namespace viewer {

enum class LayerKind { TopCopper, InnerCopper, BottomCopper, TopSilkscreen, BottomSilkscreen };

struct Layer {
    QString name;
    LayerKind kind = LayerKind::TopCopper;
};

enum class PadShape { Round, Rectangle, Oval };

/// Stands for every copper layer: the layer of a pad whose hole goes through the board.
inline constexpr int kAllLayers = -1;

struct Pad {
    QString name;
    int layer = kAllLayers;
    PadShape shape = PadShape::Round;
    QPointF at;
    QSizeF size;
    double hole = 0;
    QString net;
};

struct Track {
    int layer = 0;
    double width = 0;
    QPolygonF points;
    QString net;
};

/// A component's body, which only the 3D view shows.
struct Part {
    QString name;
    bool onTop = true;
    QPointF at;
    QSizeF size;
    double height = 0;
};

struct Board {
    QString name;
    QPolygonF outline;
    std::vector<Layer> layers;
    std::vector<Pad> pads;
    std::vector<Track> tracks;
    std::vector<Part> parts;
};

/// Returns the name of the layer, "all" for `kAllLayers`.
QString layerName(const Board& board, int layer);

/// Returns the length of all segments of the track.
double lengthOf(const Track& track);

/// Returns whether the layer conducts, so that pads and tracks may lie on it.
bool isCopper(LayerKind kind);

}  // namespace viewer

#endif
