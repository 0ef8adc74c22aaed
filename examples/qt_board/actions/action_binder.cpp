#include "actions/action_binder.h"

#include <QAction>
#include <QMenu>
#include <QMenuBar>
#include <QToolBar>

#include "actions/action_icon.h"
#include "keys/key_text.h"

namespace viewer {

namespace {

/// An action's name as a menu shows it. A shortcut that makes no key stands behind it, where a key would.
QString labelOf(const ReachableAction& action) {
    QString label = QString::fromStdString(action.item.name);
    label.replace(u'&', QStringLiteral("&&"));
    return keyOf(action.shortcut) ? label : label + QStringLiteral("\t%1 (no key)").arg(action.shortcut);
}

QString tipOf(const ReachableAction& action) {
    const QString name = QString::fromStdString(action.item.name);
    return action.key.isEmpty() ? name : QStringLiteral("%1 (%2)").arg(name, textOf(action.key));
}

}  // namespace

QString menuTitleOf(const QString& command) {
    QString title = command.section(u' ', 0, 0);
    title[0] = title[0].toUpper();
    return title;
}

ActionBinder::ActionBinder(QWidget* window) : QObject(window), window_(window) {
    shortcuts_ = zelutil::host::onShortcutChanged(
        [this](int /*id*/, const std::string& /*before*/, const std::string& /*now*/) { refresh(); });
    menuFlags_ = zelutil::host::onMenuChanged([this](int /*id*/, bool /*inMenu*/) { refresh(); });
}

void ActionBinder::setContext(const QString& context) {
    context_ = context;
    rebuild();
}

void ActionBinder::fill(QMenuBar* menuBar, QToolBar* toolBar) {
    menuBar_ = menuBar;
    toolBar_ = toolBar;
    fillBars();
}

QAction* ActionBinder::action(int id) const { return actions_.value(id); }

/// Gives the actions that are there their new keys: the catalogue has the same actions as before.
void ActionBinder::refresh() {
    reachable_ = reachableActions(context_);
    for (const ReachableAction& reachable : reachable_) {
        QAction* const action = actions_.value(reachable.item.id);
        if (action != nullptr) {
            action->setText(labelOf(reachable));
            action->setShortcut(reachable.key);
            action->setToolTip(tipOf(reachable));
        }
    }
}

void ActionBinder::rebuild() {
    for (QAction* const action : std::as_const(actions_)) {
        window_->removeAction(action);
        // The action may be the one that asked for the switch.
        action->deleteLater();
    }
    actions_.clear();
    reachable_ = reachableActions(context_);
    for (const ReachableAction& reachable : reachable_) {
        actions_.insert(reachable.item.id, makeAction(reachable));
    }
    refresh();
    fillBars();
}

QAction* ActionBinder::makeAction(const ReachableAction& reachable) {
    auto* const action = new QAction(iconNamed(QString::fromStdString(reachable.item.icon)), QString(), this);
    action->setShortcutContext(Qt::WindowShortcut);
    action->setMenuRole(QAction::NoRole);
    window_->addAction(action);
    const QString command = QString::fromStdString(reachable.item.command);
    connect(action, &QAction::triggered, this, [this, command] { emit requested(command, context_); });
    return action;
}

void ActionBinder::fillBars() {
    if (menuBar_ == nullptr) {
        return;
    }
    menuBar_->clear();
    qDeleteAll(menus_);
    menus_.clear();
    toolBar_->clear();
    for (const ReachableAction& reachable : reachable_) {
        QAction* const action = actions_.value(reachable.item.id);
        menuFor(menuTitleOf(QString::fromStdString(reachable.item.command)))->addAction(action);
        if (!reachable.item.icon.empty()) {
            toolBar_->addAction(action);
        }
    }
}

/// The titles have no letters to be pressed with Alt: keys are the catalogue's.
QMenu* ActionBinder::menuFor(const QString& title) {
    QMenu*& menu = menus_[title];
    if (menu == nullptr) {
        menu = menuBar_->addMenu(title);
    }
    return menu;
}

void ActionBinder::fillContextMenu(QMenu* menu) const {
    for (const ReachableAction& reachable : reachable_) {
        if (reachable.inMenu) {
            menu->addAction(actions_.value(reachable.item.id));
        }
    }
}

}  // namespace viewer
