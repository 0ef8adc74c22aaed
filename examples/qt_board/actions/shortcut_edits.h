#ifndef QT_BOARD_ACTIONS_SHORTCUT_EDITS_H
#define QT_BOARD_ACTIONS_SHORTCUT_EDITS_H

#include <QString>
#include <map>

namespace viewer {

/// Edits of the catalogue that can be taken back as long as they are not saved. An action that follows another one is
/// changed through that one.
class ShortcutEdits {
public:
    /// Remembers the catalogue as it is.
    ShortcutEdits() { remember(); }

    /// Forgets how it was: what is now stays.
    void remember();

    /// Brings back what was remembered.
    void takeBack();

    /// Returns whether anything differs from what was remembered.
    bool areThere() const;

    /// Gives the shortcut, the empty one for none. Returns false, with nothing changed, when somebody holds it.
    bool assign(int id, const QString& shortcut);

    /// Takes the shortcut from all that hold it and gives it. Returns false, with nothing changed, when that fails.
    bool take(int id, const QString& shortcut);

    /// Gives the shipped shortcut and menu flag. Returns false when somebody holds the shortcut.
    bool resetToShipped(int id);

    void setInMenu(int id, bool inMenu);

private:
    struct State {
        std::string shortcut;
        bool inMenu = false;

        bool operator==(const State& other) const { return shortcut == other.shortcut && inMenu == other.inMenu; }
    };
    using States = std::map<int, State>;

    static States current();
    static void restore(const States& states);

    States before_;
};

}  // namespace viewer

#endif
