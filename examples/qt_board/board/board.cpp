#include "board/board.h"

#include <cmath>

namespace viewer {

QString layerName(const Board& board, int layer) {
    return layer == kAllLayers ? QStringLiteral("all") : board.layers[static_cast<std::size_t>(layer)].name;
}

double lengthOf(const Track& track) {
    double length = 0;
    for (int i = 1; i < track.points.size(); ++i) {
        const QPointF step = track.points[i] - track.points[i - 1];
        length += std::hypot(step.x(), step.y());
    }
    return length;
}

bool isCopper(LayerKind kind) {
    return kind == LayerKind::TopCopper || kind == LayerKind::InnerCopper || kind == LayerKind::BottomCopper;
}

}  // namespace viewer
