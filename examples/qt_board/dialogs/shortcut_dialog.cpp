#include "dialogs/shortcut_dialog.h"

#include <zelutil/actions/action_manager.h>
#include <zelutil/host/save.h>

#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QSortFilterProxyModel>
#include <QTableView>
#include <QVBoxLayout>

#include "dialogs/action_model.h"
#include "dialogs/dialog_parts.h"
#include "keys/key_capture.h"
#include "keys/key_holders.h"
#include "keys/key_text.h"
#include "window/outcome.h"

namespace viewer {

namespace {

QLabel* newSentencesFromTheTop(const char* name) {
    QLabel* const label = newSentences(name);
    label->setAlignment(Qt::AlignLeft | Qt::AlignTop);
    return label;
}

}  // namespace

ShortcutDialog::ShortcutDialog(MessageLog& messages, QWidget* parent) : QDialog(parent), messages_(messages) {
    setWindowTitle(tr("Keyboard shortcuts"));
    resize(780, 620);
    build();
    connectEverything();
    table_->selectRow(0);
    showAfterRestart();
    capture_->setFocus();
}

void ShortcutDialog::build() {
    model_ = new ActionModel(this);
    filter_ = new QSortFilterProxyModel(this);
    filter_->setSourceModel(model_);
    filter_->setFilterKeyColumn(-1);
    filter_->setFilterCaseSensitivity(Qt::CaseInsensitive);
    search_ = newSearchField(tr("Search for an action, an editor or a key"));
    table_ = new QTableView;
    table_->setModel(filter_);
    layOutRows(*table_, 8);
    table_->setSelectionMode(QAbstractItemView::SingleSelection);
    table_->setWordWrap(false);
    table_->horizontalHeader()->setSectionResizeMode(QHeaderView::ResizeToContents);
    table_->horizontalHeader()->setStretchLastSection(true);
    selected_ = newSentencesFromTheTop("selected");
    verdict_ = newSentencesFromTheTop("verdict");
    verdict_->setMinimumHeight(3 * fontMetrics().lineSpacing());
    afterRestart_ = newSentencesFromTheTop("afterRestart");
    auto* const layout = new QVBoxLayout(this);
    layout->addWidget(search_);
    layout->addWidget(table_, 1);
    layout->addWidget(selected_);
    layout->addLayout(buildKeyRow());
    layout->addWidget(verdict_);
    layout->addWidget(afterRestart_);
    layout->addLayout(buildEndRow());
}

QLayout* ShortcutDialog::buildKeyRow() {
    capture_ = new KeyCapture;
    typed_ = new QLineEdit;
    typed_->setObjectName(QStringLiteral("typed"));
    typed_->setPlaceholderText(tr("or type it: Ctrl+Shift+F5"));
    assign_ = newButton(tr("Assign"), "assign");
    take_ = newButton(tr("Take it"), "take");
    remove_ = newButton(tr("Remove"), "remove");
    reset_ = newButton(tr("Reset"), "reset");
    reset_->setToolTip(tr("Go back to the shortcut and the menu flag that were shipped"));
    auto* const row = new QHBoxLayout;
    row->addWidget(capture_, 2);
    row->addWidget(typed_, 2);
    for (QPushButton* const each : {assign_, take_, remove_, reset_}) {
        row->addWidget(each);
    }
    return row;
}

QLayout* ShortcutDialog::buildEndRow() {
    QPushButton* const all = newButton(tr("Reset all and save"), "resetAll");
    QPushButton* const cancel = newButton(tr("Cancel"), "cancel");
    save_ = newButton(tr("Save"), "save");
    connect(all, &QPushButton::clicked, this, &ShortcutDialog::resetAll);
    connect(cancel, &QPushButton::clicked, this, &ShortcutDialog::reject);
    connect(save_, &QPushButton::clicked, this, &ShortcutDialog::save);
    auto* const row = new QHBoxLayout;
    row->addWidget(all);
    row->addStretch(1);
    row->addWidget(save_);
    row->addWidget(cancel);
    return row;
}

void ShortcutDialog::connectEverything() {
    connect(search_, &QLineEdit::textChanged, filter_, &QSortFilterProxyModel::setFilterFixedString);
    connect(table_->selectionModel(), &QItemSelectionModel::currentRowChanged, this, [this] { showSelected(); });
    connect(capture_, &KeyCapture::captured, this, &ShortcutDialog::tryShortcut);
    connect(typed_, &QLineEdit::textEdited, this, &ShortcutDialog::tryShortcut);
    connect(assign_, &QPushButton::clicked, this, &ShortcutDialog::assign);
    connect(take_, &QPushButton::clicked, this, &ShortcutDialog::take);
    connect(remove_, &QPushButton::clicked, this,
            [this] { finishEdit(edits_.assign(selectedAction(), {}), tr("The shortcut is removed.")); });
    connect(reset_, &QPushButton::clicked, this, &ShortcutDialog::resetSelected);
    connect(model_, &ActionModel::menuFlagWanted, this, [this](int id, bool inMenu) {
        edits_.setInMenu(id, inMenu);
        showAfterRestart();
    });
    shortcuts_ = zelutil::host::onShortcutChanged(
        [this](int /*id*/, const std::string& /*before*/, const std::string& /*now*/) { model_->refresh(); });
    menuFlags_ = zelutil::host::onMenuChanged([this](int /*id*/, bool /*inMenu*/) { model_->refresh(); });
}

int ShortcutDialog::selectedAction() const {
    const QModelIndex index = filter_->mapToSource(table_->currentIndex());
    return index.isValid() ? model_->action(index.row()).id : 0;
}

void ShortcutDialog::selectAction(int id) {
    const QModelIndex index = filter_->mapFromSource(model_->index(model_->rowOf(id), 0));
    table_->setCurrentIndex(index);
    table_->scrollTo(index);
}

void ShortcutDialog::showSelected() {
    const int id = selectedAction();
    candidate_.clear();
    capture_->clear();
    typed_->clear();
    showVerdict(*verdict_, {}, true);
    assign_->setEnabled(false);
    take_->setEnabled(false);
    const int top = topOf(id);
    selected_->setText(id == top ? tr("New shortcut of %1:").arg(titleOf(id))
                                 : tr("%1 follows %2, which gets the new shortcut:").arg(titleOf(id), titleOf(top)));
}

void ShortcutDialog::tryShortcut(const QString& text) {
    const std::optional<QKeySequence> key = keyOf(text.trimmed());
    candidate_ = key ? textOf(*key) : QString();
    assign_->setEnabled(false);
    take_->setEnabled(false);
    if (candidate_.isEmpty()) {
        showVerdict(*verdict_,
                    text.isEmpty() ? tr("This key has no text in the catalogue.")
                                   : tr("\"%1\" makes no key. Nothing is changed.").arg(text),
                    false);
        return;
    }
    const std::vector<KeyHolder> holders = holdersOf(selectedAction(), candidate_);
    if (holders.empty()) {
        assign_->setEnabled(true);
        showVerdict(*verdict_, tr("%1 is free.").arg(candidate_), true);
        return;
    }
    QStringList sentences{tr("%1 is taken.").arg(candidate_)};
    for (const KeyHolder& holder : holders) {
        sentences << holder.text;
    }
    take_->setEnabled(true);
    showVerdict(*verdict_, sentences.join(u' '), false);
}

void ShortcutDialog::assign() {
    const QString text = candidate_;
    finishEdit(edits_.assign(selectedAction(), text), tr("%1 is assigned.").arg(text));
}

void ShortcutDialog::take() {
    const QString text = candidate_;
    finishEdit(edits_.take(selectedAction(), text), tr("%1 is taken over.").arg(text));
}

void ShortcutDialog::resetSelected() {
    const int id = selectedAction();
    const UCPActionItem item = UCPActionManager::instance().getAction(topOf(id)).second;
    if (edits_.resetToShipped(id)) {
        finishEdit(true, tr("The shipped shortcut is back."));
        return;
    }
    showAfterRestart();
    // The dialog shows the holder of the shipped key, from whom it can be taken.
    tryShortcut(QString::fromStdString(item.shortcut.defaultValue));
}

void ShortcutDialog::finishEdit(bool isDone, const QString& done) {
    showSelected();
    showAfterRestart();
    showVerdict(*verdict_, isDone ? done : tr("The catalogue refused it. Nothing is changed."), isDone);
}

void ShortcutDialog::showAfterRestart() {
    QStringList sentences;
    for (const auto& item : zelutil::host::restorableActionsText(UCPActionManager::instance()).notRestored) {
        sentences << QString::fromStdString(item.text);
    }
    const bool comesBack = sentences.isEmpty();
    afterRestart_->setText(comesBack ? tr("After a restart everything will be as it is shown here.")
                                     : tr("After a restart this will be otherwise: ") + sentences.join(u' '));
    afterRestart_->setStyleSheet(comesBack ? QString() : QStringLiteral("color: #a03020;"));
    save_->setText(comesBack ? tr("Save") : tr("Save all the same"));
}

void ShortcutDialog::save() {
    const zelutil::host::SaveResult result = zelutil::host::save();
    tellOutcome(result, messages_);
    if (result.ok()) {
        edits_.remember();
        accept();
    } else {
        showVerdict(*verdict_, QString::fromStdString(result.text), false);
    }
}

void ShortcutDialog::resetAll() {
    const zelutil::host::SaveResult result = zelutil::host::resetAllShortcuts();
    tellOutcome(result, messages_);
    edits_.remember();
    finishEdit(true, {});
    showVerdict(*verdict_, QString::fromStdString(result.text), result.ok());
}

void ShortcutDialog::reject() {
    edits_.takeBack();
    QDialog::reject();
}

QString ShortcutDialog::verdict() const { return verdict_->text(); }

QString ShortcutDialog::afterRestart() const { return afterRestart_->text(); }

}  // namespace viewer
