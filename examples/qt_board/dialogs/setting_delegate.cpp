#include "dialogs/setting_delegate.h"

#include <QComboBox>

#include "dialogs/setting_rules.h"

namespace viewer {

namespace {

QStringList choicesOf(const QModelIndex& index) {
    // The model has the full name under this role.
    const SettingRule rule = ruleOf(index.data(Qt::UserRole).toString());
    if (rule.kind == SettingRule::Kind::Flag) {
        return {QStringLiteral("true"), QStringLiteral("false")};
    }
    return rule.kind == SettingRule::Kind::Choice ? rule.choices : QStringList();
}

}  // namespace

QWidget* SettingDelegate::createEditor(QWidget* parent, const QStyleOptionViewItem& option,
                                       const QModelIndex& index) const {
    const QStringList choices = choicesOf(index);
    if (choices.isEmpty()) {
        return QStyledItemDelegate::createEditor(parent, option, index);
    }
    auto* const editor = new QComboBox(parent);
    editor->addItems(choices);
    return editor;
}

void SettingDelegate::setEditorData(QWidget* editor, const QModelIndex& index) const {
    if (auto* const choices = qobject_cast<QComboBox*>(editor)) {
        choices->setCurrentText(index.data(Qt::EditRole).toString());
        return;
    }
    QStyledItemDelegate::setEditorData(editor, index);
}

void SettingDelegate::setModelData(QWidget* editor, QAbstractItemModel* model, const QModelIndex& index) const {
    if (const auto* const choices = qobject_cast<QComboBox*>(editor)) {
        model->setData(index, choices->currentText(), Qt::EditRole);
        return;
    }
    QStyledItemDelegate::setModelData(editor, model, index);
}

}  // namespace viewer
