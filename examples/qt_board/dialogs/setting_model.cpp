#include "dialogs/setting_model.h"

#include <QBrush>
#include <QColor>
#include <QFont>
#include <QPainter>
#include <QPixmap>
#include <utility>

#include "dialogs/setting_rules.h"

namespace viewer {

namespace {

QString text(const std::string& bytes) { return QString::fromStdString(bytes); }

/// Returns a square of the color with a frame, which shows white on white, too.
QPixmap swatch(const QColor& color) {
    constexpr int kSide = 14;
    QPixmap pixmap(kSide, kSide);
    pixmap.fill(color.isValid() ? color : QColor(Qt::transparent));
    QPainter painter(&pixmap);
    painter.setPen(Qt::gray);
    painter.drawRect(0, 0, kSide - 1, kSide - 1);
    return pixmap;
}

}  // namespace

SettingModel::SettingModel(QObject* parent) : QAbstractTableModel(parent) { refresh(); }

void SettingModel::refresh() {
    beginResetModel();
    settings_ = zelutil::host::settings();
    for (const zelutil::host::SettingInfo& setting : settings_) {
        const auto typed = typed_.constFind(text(setting.fullName));
        if (typed != typed_.constEnd() && *typed == text(setting.value)) {
            typed_.erase(typed);
        }
    }
    endResetModel();
    emit typedChanged();
}

int SettingModel::rowOf(const QString& fullName) const {
    for (int row = 0; row < rowCount(); ++row) {
        if (this->fullName(row) == fullName) {
            return row;
        }
    }
    return -1;
}

QString SettingModel::fullName(int row) const { return text(setting(row).fullName); }

QString SettingModel::shownValue(int row) const { return typed_.value(fullName(row), text(setting(row).value)); }

QString SettingModel::objection(int row) const { return objectionTo(ruleOf(fullName(row)), shownValue(row)); }

std::map<std::string, std::string> SettingModel::typed() const {
    std::map<std::string, std::string> values;
    for (auto typed = typed_.constBegin(); typed != typed_.constEnd(); ++typed) {
        values[typed.key().toStdString()] = typed->toStdString();
    }
    return values;
}

QStringList SettingModel::objections() const {
    QStringList sentences;
    for (auto typed = typed_.constBegin(); typed != typed_.constEnd(); ++typed) {
        const QString objection = objectionTo(ruleOf(typed.key()), *typed);
        if (!objection.isEmpty()) {
            sentences << typed.key() + QStringLiteral(": ") + objection;
        }
    }
    return sentences;
}

void SettingModel::setTyped(int row, const QString& value) {
    if (value == text(setting(row).value)) {
        typed_.remove(fullName(row));
    } else {
        typed_.insert(fullName(row), value);
    }
    emit dataChanged(index(row, 0), index(row, ColumnCount - 1));
    emit typedChanged();
}

void SettingModel::forgetTyped(int row) { setTyped(row, text(setting(row).value)); }

int SettingModel::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : static_cast<int>(settings_.size());
}

int SettingModel::columnCount(const QModelIndex& parent) const { return parent.isValid() ? 0 : ColumnCount; }

QVariant SettingModel::display(int row, int column) const {
    switch (column) {
        case Name:
            return fullName(row).section(QStringLiteral("::"), -1);
        case Value:
            return shownValue(row);
        case Default:
            return text(setting(row).defaultValue);
        default:
            break;
    }
    if (typed_.contains(fullName(row))) {
        return tr("Not saved");
    }
    return setting(row).setByUser ? tr("Yours") : tr("Shipped");
}

/// A color is shown beside its text.
QVariant SettingModel::decoration(int row, int column) const {
    if (ruleOf(fullName(row)).kind != SettingRule::Kind::Color || (column != Value && column != Default)) {
        return {};
    }
    return swatch(QColor(column == Value ? shownValue(row) : text(setting(row).defaultValue)));
}

QVariant SettingModel::data(const QModelIndex& index, int role) const {
    const int row = index.row();
    switch (role) {
        case Qt::DisplayRole:
        case Qt::EditRole:
            return display(row, index.column());
        case Qt::UserRole:
            return fullName(row);
        case Qt::DecorationRole:
            return decoration(row, index.column());
        case Qt::ToolTipRole:
            return objection(row).isEmpty() ? fullName(row) : objection(row);
        case Qt::BackgroundRole:
            return index.column() == Value && !objection(row).isEmpty() ? QBrush(QColor(0xff, 0xd9, 0xd2)) : QVariant();
        case Qt::FontRole:
            if (index.column() == Value && (setting(row).setByUser || typed_.contains(fullName(row)))) {
                QFont font;
                font.setBold(true);
                return font;
            }
            return {};
        default:
            return {};
    }
}

bool SettingModel::setData(const QModelIndex& index, const QVariant& value, int role) {
    if (role != Qt::EditRole || index.column() != Value) {
        return false;
    }
    setTyped(index.row(), value.toString());
    return true;
}

Qt::ItemFlags SettingModel::flags(const QModelIndex& index) const {
    const Qt::ItemFlags all = QAbstractTableModel::flags(index);
    return index.column() == Value ? all | Qt::ItemIsEditable : all;
}

QVariant SettingModel::headerData(int section, Qt::Orientation orientation, int role) const {
    static const char* const kTitles[] = {"Setting", "Value", "Default", "From"};
    if (orientation == Qt::Horizontal && role == Qt::DisplayRole) {
        return tr(kTitles[section]);
    }
    return {};
}

}  // namespace viewer
