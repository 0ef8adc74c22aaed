#include "command/sheet/layers.h"

#include <algorithm>
#include <optional>
#include <set>

#include "command/sheet/keyboard.h"
#include "command/shortcut_keys.h"

namespace zelutil::command::sheet {
namespace {

struct Modifier {
    std::string_view name;
    std::string_view title;
};

constexpr Modifier kOrder[] = {
    {"ctrl", "Ctrl"}, {"alt", "Alt"}, {"altgr", "AltGr"}, {"shift", "Shift"}, {"meta", "Meta"}};

/// Positions in `kOrder`. Fewer come before more.
struct ModifierSet {
    std::set<std::size_t> positions;

    bool operator<(const ModifierSet& other) const {
        const auto size = positions.size();
        const auto otherSize = other.positions.size();
        return size != otherSize ? size < otherSize : positions < other.positions;
    }
};

struct Spot {
    ModifierSet modifiers;
    int key;
};

std::size_t positionOf(std::string_view modifier) {
    const auto* const found =
        std::find_if(std::begin(kOrder), std::end(kOrder), [=](const Modifier& row) { return row.name == modifier; });
    return static_cast<std::size_t>(found - std::begin(kOrder));
}

/// Returns where on the keyboard the shortcut is; nothing where it is not.
std::optional<Spot> spotOf(const std::string& shortcut) {
    std::vector<std::string_view> tokens = tokensOf(shortcut);
    Spot spot{{}, keyNumber(keyNamed(tokens.back()))};
    tokens.pop_back();
    for (const std::string_view token : tokens) {
        spot.modifiers.positions.insert(positionOf(modifierNamed(token)));
    }
    const bool allKnown = spot.modifiers.positions.count(std::size(kOrder)) == 0;
    return allKnown && spot.key >= 0 ? std::optional<Spot>(spot) : std::nullopt;
}

}  // namespace

Layers layersOf(const Context& context) {
    Layers result;
    std::map<ModifierSet, Layer> layers;
    for (const Entry& entry : context.entries) {
        if (entry.shortcut.empty() || !entry.runs) {
            continue;
        }
        if (const std::optional<Spot> spot = spotOf(entry.shortcut)) {
            layers[spot->modifiers].keys[spot->key].push_back(&entry);
        } else {
            result.elsewhere.push_back(&entry);
        }
    }
    for (auto& [modifiers, layer] : layers) {
        for (const std::size_t position : modifiers.positions) {
            layer.modifiers.push_back(kOrder[position].name);
        }
        result.layers.push_back(std::move(layer));
    }
    return result;
}

std::string titleOf(const Layer& layer) {
    std::string title;
    for (const std::string_view modifier : layer.modifiers) {
        title += (title.empty() ? "" : "+") + std::string(kOrder[positionOf(modifier)].title);
    }
    return title.empty() ? "No modifier" : title;
}

}  // namespace zelutil::command::sheet
