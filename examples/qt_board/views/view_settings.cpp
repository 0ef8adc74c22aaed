#include "views/view_settings.h"

#include <zelutil/host/settings.h>
#include <zelutil/prefs/user_preference_manager.h>

#include <QLocale>

#include "dialogs/setting_rules.h"

namespace viewer {

namespace {

using zelutil::host::get;
using zelutil::host::read;

/// Reads settings one by one and notes those that make no sense.
class Reader {
public:
    explicit Reader(QStringList* complaints) : complaints_(complaints) {}

    /// Sets the target to the value in force; one that makes no sense leaves it as it is.
    template <typename T>
    void readInto(T& target, const char* name) const {
        if (makesSense(name)) {
            target = get<T>(name, target);
        }
    }

    template <typename T>
    void readChoice(T& target, const char* name) const {
        if (makesSense(name)) {
            const QStringList choices = ruleOf(QString::fromLatin1(name)).choices;
            const auto index = choices.indexOf(QString::fromStdString(get<std::string>(name, "")));
            target = static_cast<T>(std::max<qsizetype>(index, 0));
        }
    }

    void readColor(QColor& target, const char* name) const {
        UserPreferenceManager& preferences = UserPreferenceManager::GetInstance();
        const std::string text =
            makesSense(name) ? preferences.getUserPrefSetting(name) : preferences.getDefaultPrefSetting(name);
        target = QColor(QString::fromStdString(text).trimmed());
    }

private:
    bool makesSense(const char* name) const {
        const std::optional<std::string> value = read<std::string>(name);
        const QString fullName = QString::fromLatin1(name);
        const QString objection =
            value ? objectionTo(ruleOf(fullName), QString::fromStdString(*value)) : QStringLiteral("There is none.");
        if (!objection.isEmpty() && complaints_ != nullptr) {
            *complaints_ << QStringLiteral("The setting %1 counts as its default. %2").arg(fullName, objection);
        }
        return objection.isEmpty();
    }

    QStringList* complaints_;
};

constexpr const char* kLayerColors[] = {
    "display::colors::top_copper",     "display::colors::inner_copper",      "display::colors::bottom_copper",
    "display::colors::top_silkscreen", "display::colors::bottom_silkscreen",
};

void readGeneral(const Reader& reader, ViewSettings& settings) {
    reader.readChoice(settings.unit, "general::units::units");
    reader.readInto(settings.decimals, "general::units::decimals");
    reader.readInto(settings.undoLevels, "general::editing::undo_levels");
    reader.readInto(settings.numbersAsNumbers, "table::numbers_as_numbers");
}

void readDisplay(const Reader& reader, ViewSettings& settings) {
    reader.readInto(settings.antialiasing, "display::antialiasing");
    reader.readInto(settings.padNames, "display::pad_names");
    reader.readInto(settings.zoomFactor, "display::zoom_factor");
    reader.readInto(settings.grid, "display::grid::grid");
    reader.readInto(settings.gridVisible, "display::grid::grid_visible");
    reader.readChoice(settings.gridStyle, "display::grid::grid_style");
    reader.readInto(settings.gridMultiple, "display::grid::grid_multiple");
}

void readColors(const Reader& reader, ViewSettings& settings) {
    reader.readColor(settings.background, "display::colors::background");
    reader.readColor(settings.board, "display::colors::board");
    reader.readColor(settings.outline, "display::colors::board_outline");
    reader.readColor(settings.gridColor, "display::colors::grid");
    for (std::size_t kind = 0; kind < std::size(kLayerColors); ++kind) {
        reader.readColor(settings.layers[kind], kLayerColors[kind]);
    }
    reader.readColor(settings.throughPad, "display::colors::through_pad");
    reader.readColor(settings.hole, "display::colors::hole");
    reader.readColor(settings.highlight, "display::colors::highlight");
    reader.readColor(settings.selection, "display::colors::selection");
}

void readSpace(const Reader& reader, ViewSettings& settings) {
    reader.readColor(settings.spaceBackground, "brisk3d::background_color");
    reader.readColor(settings.substrate, "brisk3d::substrate_color");
    reader.readColor(settings.part, "brisk3d::component_color");
    reader.readInto(settings.boardThickness, "brisk3d::board_thickness");
    reader.readInto(settings.layerGap, "brisk3d::layer_gap");
    reader.readInto(settings.spaceParts, "brisk3d::show_components");
    reader.readInto(settings.spaceCopper, "brisk3d::show_copper");
}

struct UnitRow {
    double millimetres;
    const char* name;
};

constexpr UnitRow kUnits[] = {{1, "mm"}, {0.0254, "mil"}, {25.4, "in"}};

const UnitRow& rowOf(Unit unit) { return kUnits[static_cast<int>(unit)]; }

}  // namespace

ViewSettings readViewSettings(QStringList* complaints) {
    ViewSettings settings;
    const Reader reader(complaints);
    readGeneral(reader, settings);
    readDisplay(reader, settings);
    readColors(reader, settings);
    readSpace(reader, settings);
    return settings;
}

QString lengthText(double millimetres, const ViewSettings& settings) {
    return QLocale::c().toString(millimetres / rowOf(settings.unit).millimetres, 'f', settings.decimals);
}

QString lengthTextWithUnit(double millimetres, const ViewSettings& settings) {
    return lengthText(millimetres, settings) + u' ' + QLatin1String(rowOf(settings.unit).name);
}

}  // namespace viewer
