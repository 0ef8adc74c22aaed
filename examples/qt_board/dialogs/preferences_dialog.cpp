#include "dialogs/preferences_dialog.h"

#include <zelutil/host/save.h>

#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QSplitter>
#include <QTableView>
#include <QTreeWidget>
#include <QVBoxLayout>

#include "dialogs/dialog_parts.h"
#include "dialogs/section_tree.h"
#include "dialogs/setting_delegate.h"
#include "dialogs/setting_filter.h"
#include "dialogs/setting_model.h"
#include "window/outcome.h"

namespace viewer {

PreferencesDialog::PreferencesDialog(MessageLog& messages, QWidget* parent) : QDialog(parent), messages_(messages) {
    setWindowTitle(tr("Preferences"));
    resize(780, 480);
    build();
    connectEverything();
    fillSectionTree(*tree_);
    tree_->setCurrentItem(firstSection(*tree_));
    followTyping();
}

PreferencesDialog::~PreferencesDialog() { hide(); }

void PreferencesDialog::build() {
    model_ = new SettingModel(this);
    filter_ = new SettingFilter(*model_, this);
    search_ = newSearchField(tr("Search in all settings, names and values"));
    tree_ = new QTreeWidget;
    tree_->setHeaderHidden(true);
    table_ = new QTableView;
    table_->setModel(filter_);
    table_->setItemDelegateForColumn(SettingModel::Value, new SettingDelegate(this));
    table_->setEditTriggers(QAbstractItemView::DoubleClicked | QAbstractItemView::SelectedClicked |
                            QAbstractItemView::AnyKeyPressed | QAbstractItemView::EditKeyPressed);
    layOutRows(*table_, 12);
    table_->horizontalHeader()->setSectionResizeMode(QHeaderView::Stretch);
    auto* const halves = new QSplitter;
    halves->addWidget(tree_);
    halves->addWidget(table_);
    halves->setStretchFactor(1, 1);
    halves->setSizes({190, 560});
    verdict_ = newSentences("verdict");
    auto* const layout = new QVBoxLayout(this);
    layout->addWidget(search_);
    layout->addWidget(halves, 1);
    layout->addWidget(verdict_);
    layout->addLayout(buildEndRow());
}

QLayout* PreferencesDialog::buildEndRow() {
    reset_ = newButton(tr("Reset to default"), "reset");
    save_ = newButton(tr("Save"), "save");
    QPushButton* const close = newButton(tr("Close"), "close");
    connect(close, &QPushButton::clicked, this, &PreferencesDialog::reject);
    auto* const row = new QHBoxLayout;
    row->addWidget(reset_);
    row->addStretch(1);
    row->addWidget(save_);
    row->addWidget(close);
    return row;
}

void PreferencesDialog::connectEverything() {
    connect(search_, &QLineEdit::textChanged, filter_, &SettingFilter::setSearched);
    connect(tree_, &QTreeWidget::currentItemChanged, this, [this] { showSection(); });
    connect(reset_, &QPushButton::clicked, this, &PreferencesDialog::resetSelected);
    connect(save_, &QPushButton::clicked, this, &PreferencesDialog::save);
    connect(model_, &SettingModel::typedChanged, this, &PreferencesDialog::followTyping);
    changes_ = zelutil::host::onSettingsChanged([this](const std::set<std::string>& /*names*/) { model_->refresh(); });
}

void PreferencesDialog::showSection() {
    search_->clear();
    filter_->setSection(sectionOf(tree_->currentItem()));
    const bool isForShortcuts = isSubManagersSection(tree_->currentItem());
    showVerdict(*verdict_, isForShortcuts ? tr("The keyboard shortcuts have a dialog of their own.") : QString(), true);
}

void PreferencesDialog::selectSetting(const QString& fullName) {
    const int row = model_->rowOf(fullName);
    if (row >= 0) {
        tree_->setCurrentItem(itemOf(*tree_, QString::fromStdString(model_->setting(row).section)));
        table_->setCurrentIndex(filter_->mapFromSource(model_->index(row, SettingModel::Value)));
    }
}

void PreferencesDialog::followTyping() {
    isWarned_ = false;
    const QStringList objections = model_->objections();
    save_->setEnabled(!model_->typed().empty());
    if (!objections.isEmpty()) {
        showVerdict(*verdict_, objections.join(u' '), false);
    } else {
        showVerdict(*verdict_, {}, true);
    }
}

void PreferencesDialog::save() {
    const QStringList objections = model_->objections();
    if (!objections.isEmpty()) {
        showVerdict(*verdict_, tr("Nothing is saved yet. %1").arg(objections.join(u' ')), false);
        return;
    }
    showOutcome(zelutil::host::save(model_->typed()));
}

void PreferencesDialog::resetSelected() {
    std::vector<std::string> names;
    for (const QModelIndex& index : table_->selectionModel()->selectedRows()) {
        const int row = filter_->mapToSource(index).row();
        names.push_back(model_->setting(row).fullName);
        model_->forgetTyped(row);
    }
    if (names.empty()) {
        showVerdict(*verdict_, tr("Select the settings that are to have their defaults again."), false);
        return;
    }
    showOutcome(zelutil::host::reset(names));
}

void PreferencesDialog::showOutcome(const zelutil::host::SaveResult& result) {
    model_->refresh();
    tellOutcome(result, messages_);
    showVerdict(*verdict_, QString::fromStdString(result.text), result.ok());
}

void PreferencesDialog::reject() {
    const std::size_t count = model_->typed().size();
    if (count > 0 && !isWarned_) {
        isWarned_ = true;
        showVerdict(*verdict_, tr("Values that are not saved: %1. Close again to drop them.").arg(count), false);
        return;
    }
    QDialog::reject();
}

QString PreferencesDialog::verdict() const { return verdict_->text(); }

}  // namespace viewer
