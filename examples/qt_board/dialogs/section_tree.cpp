#include "dialogs/section_tree.h"

#include <zelutil/host/settings.h>
#include <zelutil/prefs/user_preference_manager.h>

#include <QTreeWidget>
#include <QTreeWidgetItemIterator>

namespace viewer {

namespace {

using Section = UserPreferenceManager::UserPreferenceUISection;

constexpr int kPath = Qt::UserRole;
constexpr int kSubManager = Qt::UserRole + 1;

QStringList headingsOf(const Section& section) {
    const QString parents = QString::fromStdString(section.parentHeader);
    QStringList headings = parents.isEmpty() ? QStringList() : parents.split(QStringLiteral("::"));
    return headings << QString::fromStdString(section.header);
}

QTreeWidgetItem* childNamed(QTreeWidgetItem* parent, const QString& heading) {
    for (int i = 0; i < parent->childCount(); ++i) {
        if (parent->child(i)->text(0) == heading) {
            return parent->child(i);
        }
    }
    return new QTreeWidgetItem(parent, {heading});
}

/// Returns the item under these headings, which is made where it is not there.
QTreeWidgetItem* itemAt(QTreeWidget& tree, const QStringList& headings) {
    QTreeWidgetItem* item = tree.invisibleRootItem();
    for (const QString& heading : headings) {
        item = childNamed(item, heading);
        item->setExpanded(true);
    }
    return item;
}

}  // namespace

void fillSectionTree(QTreeWidget& tree) {
    const auto& sections = UserPreferenceManager::GetInstance().getAllUserPrefUISettings();
    for (const std::string& path : zelutil::host::sectionsInFileOrder()) {
        const auto found = sections.find(path);
        if (found == sections.end()) {
            continue;
        }
        const Section& section = *found->second;
        QTreeWidgetItem* const item = itemAt(tree, headingsOf(section));
        item->setData(0, kPath, QString::fromStdString(path));
        item->setData(0, kSubManager,
                      section.submanagerId != static_cast<int>(UserPreferenceManager::SubManagerType::None));
    }
}

QString sectionOf(const QTreeWidgetItem* item) { return item == nullptr ? QString() : item->data(0, kPath).toString(); }

bool isSubManagersSection(const QTreeWidgetItem* item) {
    return item != nullptr && item->data(0, kSubManager).toBool();
}

QTreeWidgetItem* itemOf(QTreeWidget& tree, const QString& attributePath) {
    for (QTreeWidgetItemIterator item(&tree); *item != nullptr; ++item) {
        if (sectionOf(*item) == attributePath) {
            return *item;
        }
    }
    return nullptr;
}

QTreeWidgetItem* firstSection(QTreeWidget& tree) {
    for (QTreeWidgetItemIterator item(&tree); *item != nullptr; ++item) {
        if (!sectionOf(*item).isEmpty()) {
            return *item;
        }
    }
    return nullptr;
}

}  // namespace viewer
