#include "dialogs/setting_rules.h"

#include <QTest>

#include "runner.h"

namespace viewer {

class SettingRulesTest : public QObject {
    Q_OBJECT

private slots:
    void valuesMakeSenseOrAreToldWhyNot_data() {
        QTest::addColumn<QString>("name");
        QTest::addColumn<QString>("value");
        QTest::addColumn<QString>("objection");
        const auto row = [](const char* name, const char* value, const char* objection) {
            QTest::addRow("%s=%s", name, value) << QString(name) << QString(value) << QString(objection);
        };
        row("display::grid::grid", "1.27", "");
        row("display::grid::grid", " .5 ", "");
        row("display::grid::grid", "5e-1", "");
        row("display::grid::grid", "0.05", "");
        row("display::grid::grid", "0.049", "\"0.049\" is no number from 0.05 to 50.");
        row("display::grid::grid", "50.1", "\"50.1\" is no number from 0.05 to 50.");
        row("display::grid::grid", "1,27", "\"1,27\" is no number from 0.05 to 50.");
        row("display::grid::grid", "", "\"\" is no number from 0.05 to 50.");
        row("display::grid::grid", "nan", "\"nan\" is no number from 0.05 to 50.");
        row("display::grid::grid", "0x10", "\"0x10\" is no number from 0.05 to 50.");
        row("general::units::decimals", "6", "");
        row("general::units::decimals", "7", "\"7\" is no whole number from 0 to 6.");
        row("general::units::decimals", "2.0", "\"2.0\" is no whole number from 0 to 6.");
        row("general::units::units", "inch", "");
        row("general::units::units", "Inch", "\"Inch\" is none of mm, mil, inch.");
        row("display::antialiasing", "off", "");
        row("display::antialiasing", "maybe", "\"maybe\" is neither true nor false.");
        row("display::colors::top_copper", "#0aF5c3", "");
        row("display::colors::top_copper", "red", "\"red\" is no color as #RRGGBB.");
        row("display::colors::top_copper", "#0aF5c", "\"#0aF5c\" is no color as #RRGGBB.");
        row("brisk3d::substrate_color", "green", "\"green\" is no color as #RRGGBB.");
        row("elsewhere::anything", "any text at all", "");
    }

    void valuesMakeSenseOrAreToldWhyNot() {
        QFETCH(QString, name);
        QFETCH(QString, value);
        QFETCH(QString, objection);
        QCOMPARE(objectionTo(ruleOf(name), value), objection);
    }
};

const test::Registration kSettingRulesTest("setting_rules", [] { return std::make_unique<SettingRulesTest>(); });

}  // namespace viewer

#include "setting_rules_test.moc"
