#include "command/lint/report.h"

#include <algorithm>
#include <utility>

#include "command/nearest_names.h"

namespace zelutil::lint {
namespace {

/// A container is told by its first sign, not by all that it holds.
bool isContainer(json::View value) { return value.isArray() || value.isObject(); }

json::Position shifted(json::Position position, std::size_t columns) {
    position.offset += columns;
    position.column += columns;
    return position;
}

}  // namespace

void Report::add(Rule rule, json::View value, std::string message, std::string hint) {
    const json::Position begin = document_.positionOf(value).value_or(json::Position());
    const json::Position end = isContainer(value) ? shifted(begin, 1) : document_.endOf(value).value_or(begin);
    addAt(rule, begin, end, std::move(message), std::move(hint));
}

void Report::addAtKey(Rule rule, json::View value, std::string_view key, std::string message, std::string hint) {
    const auto begin = document_.keyPositionOf(value);
    if (!begin) {
        add(rule, value, std::move(message), std::move(hint));
        return;
    }
    const bool isPlain = document_.text().substr(begin->offset + 1, key.size()) == key;
    const json::Position end = isPlain ? document_.positionAt(begin->offset + key.size() + 2) : shifted(*begin, 1);
    addAt(rule, *begin, end, std::move(message), std::move(hint));
}

void Report::addAt(Rule rule, json::Position begin, json::Position end, std::string message, std::string hint) {
    findings_.push_back({rule, begin, end, std::move(message), std::move(hint)});
}

std::string Report::lineOf(json::View value, json::View near) const {
    const json::Position place = document_.positionOf(value).value_or(json::Position());
    const auto other = document_.positionOf(near);
    const std::string line = "line " + std::to_string(place.line);
    return other && other->line == place.line ? line + ", column " + std::to_string(place.column) : line;
}

json::Position Report::keyPlaceOf(json::View value) const {
    const auto place = document_.keyPositionOf(value);
    return place ? *place : document_.positionOf(value).value_or(json::Position());
}

std::vector<Finding> Report::take() {
    std::stable_sort(findings_.begin(), findings_.end(),
                     [](const Finding& a, const Finding& b) { return a.begin.offset < b.begin.offset; });
    return std::move(findings_);
}

std::string nearestHint(std::string_view wanted, const std::vector<std::string>& known) {
    return command::questionAbout(command::nearestNames(wanted, known));
}

std::string inQuotes(std::string_view text) { return '"' + std::string(text) + '"'; }

}  // namespace zelutil::lint
