#ifndef QT_BOARD_DIALOGS_SECTION_TREE_H
#define QT_BOARD_DIALOGS_SECTION_TREE_H

#include <QString>

class QTreeWidget;
class QTreeWidgetItem;

/// The sections of the preferences as a tree of headings, in the order of the defaults file.
namespace viewer {

void fillSectionTree(QTreeWidget& tree);

/// Returns the attribute path of the item's section; empty for a heading that only groups others.
QString sectionOf(const QTreeWidgetItem* item);

/// Returns whether the section belongs to a sub-manager, and so has no settings of its own.
bool isSubManagersSection(const QTreeWidgetItem* item);

/// Returns the item of that section, and the first item that has settings; null for none.
QTreeWidgetItem* itemOf(QTreeWidget& tree, const QString& attributePath);
QTreeWidgetItem* firstSection(QTreeWidget& tree);

}  // namespace viewer

#endif
