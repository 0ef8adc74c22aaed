#ifndef QT_BOARD_DIALOGS_SETTING_DELEGATE_H
#define QT_BOARD_DIALOGS_SETTING_DELEGATE_H

#include <QStyledItemDelegate>

namespace viewer {

/// Edits a setting's value: by a list where only some values make sense, else as a text.
class SettingDelegate : public QStyledItemDelegate {
    Q_OBJECT

public:
    using QStyledItemDelegate::QStyledItemDelegate;

    QWidget* createEditor(QWidget* parent, const QStyleOptionViewItem& option, const QModelIndex& index) const override;
    void setEditorData(QWidget* editor, const QModelIndex& index) const override;
    void setModelData(QWidget* editor, QAbstractItemModel* model, const QModelIndex& index) const override;
};

}  // namespace viewer

#endif
