#ifndef QT_BOARD_KEYS_KEY_HOLDERS_H
#define QT_BOARD_KEYS_KEY_HOLDERS_H

#include <QString>
#include <QStringList>
#include <vector>

namespace viewer {

/// An action that stands in the way of a shortcut.
struct KeyHolder {
    enum class Place { SameContext, LinkedContext, ChildsContext };

    int id = 0;
    Place place = Place::SameContext;
    /// The shortcut as the holder has it, which may spell the key otherwise.
    QString shortcut;
    /// One sentence: who holds it, and where.
    QString text;
};

/// Returns who holds the shortcut where action `id` would need it: in its own context, in the one that is linked with
/// it, and in those of the actions that follow it. Two texts that make one key count as one.
std::vector<KeyHolder> holdersOf(int id, const QString& shortcut);

/// Returns the id of the action whose shortcut action `id` follows, through all parents; `id` itself without one.
int topOf(int id);

/// Returns the action's name for people, with its context.
QString titleOf(int id);

}  // namespace viewer

#endif
