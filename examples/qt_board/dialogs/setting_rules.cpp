#include "dialogs/setting_rules.h"

#include <QColor>
#include <QLocale>
#include <QRegularExpression>
#include <cmath>

namespace viewer {

namespace {

using Kind = SettingRule::Kind;

struct Row {
    const char* fullName;
    Kind kind;
    double least;
    double greatest;
    const char* choices;
};

constexpr Row kRows[] = {
    {"general::units::units", Kind::Choice, 0, 0, "mm mil inch"},
    {"general::units::decimals", Kind::Whole, 0, 6, ""},
    {"general::editing::undo_levels", Kind::Whole, 1, 1000, ""},
    {"general::startup::start_editor", Kind::Choice, 0, 0, "board space"},
    {"display::antialiasing", Kind::Flag, 0, 0, ""},
    {"display::pad_names", Kind::Flag, 0, 0, ""},
    {"display::zoom_factor", Kind::Number, 1.01, 4, ""},
    {"display::grid::grid", Kind::Number, 0.05, 50, ""},
    {"display::grid::grid_visible", Kind::Flag, 0, 0, ""},
    {"display::grid::grid_style", Kind::Choice, 0, 0, "dots lines crosses"},
    {"display::grid::grid_multiple", Kind::Whole, 1, 100, ""},
    {"brisk3d::board_thickness", Kind::Number, 0.1, 10, ""},
    {"brisk3d::layer_gap", Kind::Number, 0, 50, ""},
    {"brisk3d::show_components", Kind::Flag, 0, 0, ""},
    {"brisk3d::show_copper", Kind::Flag, 0, 0, ""},
    {"table::numbers_as_numbers", Kind::Flag, 0, 0, ""},
};

/// Every setting of these sections is a color, and so is one of any section whose name says so.
bool isColor(const QString& fullName) {
    return fullName.startsWith(QLatin1String("display::colors::")) || fullName.endsWith(QLatin1String("_color"));
}

QString rangeText(const SettingRule& rule) {
    return QStringLiteral("from %1 to %2").arg(QLocale::c().toString(rule.least), QLocale::c().toString(rule.greatest));
}

bool matches(const QString& value, const char* pattern) {
    const QRegularExpression expression(QRegularExpression::anchoredPattern(QString::fromLatin1(pattern)),
                                        QRegularExpression::CaseInsensitiveOption);
    return expression.match(value.trimmed()).hasMatch();
}

bool isInRange(const SettingRule& rule, const QString& value) {
    const double number = QLocale::c().toDouble(value.trimmed());
    return std::isfinite(number) && number >= rule.least && number <= rule.greatest;
}

QString quoted(const QString& value) { return u'"' + value + u'"'; }

}  // namespace

SettingRule ruleOf(const QString& fullName) {
    for (const Row& row : kRows) {
        if (fullName == QLatin1String(row.fullName)) {
            return {row.kind, row.least, row.greatest, QString::fromLatin1(row.choices).split(u' ')};
        }
    }
    SettingRule rule;
    rule.kind = isColor(fullName) ? Kind::Color : Kind::Text;
    return rule;
}

QString objectionTo(const SettingRule& rule, const QString& value) {
    switch (rule.kind) {
        case Kind::Flag:
            return matches(value, "true|yes|on|1|false|no|off|0")
                       ? QString()
                       : quoted(value) + QStringLiteral(" is neither true nor false.");
        case Kind::Whole:
            return matches(value, "[+-]?[0-9]{1,9}") && isInRange(rule, value)
                       ? QString()
                       : quoted(value) + QStringLiteral(" is no whole number %1.").arg(rangeText(rule));
        case Kind::Number:
            return matches(value, "[+-]?([0-9]+\\.?[0-9]*|\\.[0-9]+)(e[+-]?[0-9]+)?") && isInRange(rule, value)
                       ? QString()
                       : quoted(value) + QStringLiteral(" is no number %1.").arg(rangeText(rule));
        case Kind::Color:
            return matches(value, "#[0-9a-f]{6}") ? QString()
                                                  : quoted(value) + QStringLiteral(" is no color as #RRGGBB.");
        case Kind::Choice:
            return rule.choices.contains(value)
                       ? QString()
                       : quoted(value) + QStringLiteral(" is none of %1.").arg(rule.choices.join(QStringLiteral(", ")));
        case Kind::Text:
            break;
    }
    return {};
}

}  // namespace viewer
