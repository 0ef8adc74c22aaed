#include "dialogs/setting_filter.h"

#include "dialogs/setting_model.h"

namespace viewer {

SettingFilter::SettingFilter(SettingModel& model, QObject* parent) : QSortFilterProxyModel(parent), model_(model) {
    setSourceModel(&model);
}

void SettingFilter::setSection(const QString& attributePath) {
    section_ = attributePath;
    invalidateFilter();
}

void SettingFilter::setSearched(const QString& text) {
    searched_ = text.trimmed();
    invalidateFilter();
}

bool SettingFilter::filterAcceptsRow(int row, const QModelIndex& /*parent*/) const {
    if (searched_.isEmpty()) {
        return QString::fromStdString(model_.setting(row).section) == section_;
    }
    return model_.fullName(row).contains(searched_, Qt::CaseInsensitive) ||
           model_.shownValue(row).contains(searched_, Qt::CaseInsensitive);
}

}  // namespace viewer
