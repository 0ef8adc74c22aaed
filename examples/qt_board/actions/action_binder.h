#ifndef QT_BOARD_ACTIONS_ACTION_BINDER_H
#define QT_BOARD_ACTIONS_ACTION_BINDER_H

#include <zelutil/host/observers.h>

#include <QMap>
#include <QObject>
#include <QString>
#include <vector>

#include "actions/reachable_actions.h"

class QAction;
class QMenu;
class QMenuBar;
class QToolBar;
class QWidget;

namespace viewer {

/// Makes a QAction of each action of the catalogue that the active editor offers, and menus, tool bar and context menu
/// of these. Follows the catalogue: an edit of a shortcut or of a menu flag shows at once.
class ActionBinder : public QObject {
    Q_OBJECT

public:
    /// The shortcuts hold in `window`.
    explicit ActionBinder(QWidget* window);

    /// Offers the actions of an editor of that context from now on.
    void setContext(const QString& context);

    /// Fills the bars, now and whenever another context is set.
    void fill(QMenuBar* menuBar, QToolBar* toolBar);

    /// Fills a menu with the actions that the right-mouse-button menu shows.
    void fillContextMenu(QMenu* menu) const;

    /// Returns the action of that id; null for one that the active editor does not offer.
    QAction* action(int id) const;

signals:
    /// The user wants that command run in an editor of that context.
    void requested(const QString& command, const QString& context);

private:
    void refresh();
    void rebuild();
    QAction* makeAction(const ReachableAction& reachable);
    void fillBars();
    QMenu* menuFor(const QString& title);

    QWidget* window_;
    QMenuBar* menuBar_ = nullptr;
    QToolBar* toolBar_ = nullptr;
    QString context_;
    std::vector<ReachableAction> reachable_;
    QMap<int, QAction*> actions_;
    QMap<QString, QMenu*> menus_;
    zelutil::host::Subscription shortcuts_;
    zelutil::host::Subscription menuFlags_;
};

/// Returns the title of the menu that the command belongs to: its first word.
QString menuTitleOf(const QString& command);

}  // namespace viewer

#endif
