#ifndef QT_BOARD_DIALOGS_SETTING_RULES_H
#define QT_BOARD_DIALOGS_SETTING_RULES_H

#include <QString>
#include <QStringList>

namespace viewer {

/// Decides whether a text makes sense as the value of a setting.
struct SettingRule {
    enum class Kind { Text, Flag, Whole, Number, Color, Choice };

    Kind kind = Kind::Text;
    /// The range of `Whole` and `Number`, both ends included.
    double least = 0;
    double greatest = 0;
    QStringList choices;
};

/// Returns the rule of the setting of that full name. A setting that the viewer does not know may have any text.
SettingRule ruleOf(const QString& fullName);

/// Returns why the value makes no sense, in one sentence; empty when it does.
QString objectionTo(const SettingRule& rule, const QString& value);

}  // namespace viewer

#endif
