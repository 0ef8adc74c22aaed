#include "support/table.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <iomanip>
#include <sstream>

namespace zelutil::bench {

const char* const kSubject = "zelutil";

namespace {

struct Side {
    std::string name;
    std::vector<double> nanoseconds;
    std::vector<double> allocations;
};

struct Group {
    std::string comparison;
    std::vector<Side> sides;
};

template <typename Item>
Item& namedItem(std::vector<Item>& items, std::string Item::*name, const std::string& wanted) {
    const auto found = std::find_if(items.begin(), items.end(), [&](const Item& item) { return item.*name == wanted; });
    if (found != items.end()) {
        return *found;
    }
    Item item{};
    item.*name = wanted;
    items.push_back(item);
    return items.back();
}

std::vector<Group> grouped(const std::vector<Sample>& samples) {
    std::vector<Group> groups;
    for (const Sample& sample : samples) {
        Group& group = namedItem(groups, &Group::comparison, sample.comparison);
        Side& side = namedItem(group.sides, &Side::name, sample.side);
        side.nanoseconds.push_back(sample.nanosecondsPerCall);
        side.allocations.push_back(sample.allocationsPerCall);
    }
    return groups;
}

/// Width of the middle half of the values, in per cent of their median.
double spread(std::vector<double> values) {
    std::sort(values.begin(), values.end());
    const double middle = median(values);
    const std::size_t quarter = values.size() / 4;
    return middle == 0 ? 0 : 100 * (values[values.size() - 1 - quarter] - values[quarter]) / middle;
}

std::string number(double value, int decimals) {
    std::ostringstream text;
    text << std::fixed << std::setprecision(decimals) << value;
    return text.str();
}

using Row = std::vector<std::string>;

const Row kHeading = {"comparison", "ns", "spread", "allocs", "peer", "ns", "spread", "allocs", "ratio"};

bool isText(std::size_t column) { return column == 0 || column == 4; }

void appendSide(Row& row, const Side& side) {
    row.push_back(number(median(side.nanoseconds), 2));
    row.push_back(number(spread(side.nanoseconds), 0) + "%");
    row.push_back(number(median(side.allocations), 2));
}

void appendRows(std::vector<Row>& rows, const Group& group) {
    const auto subject =
        std::find_if(group.sides.begin(), group.sides.end(), [](const Side& side) { return side.name == kSubject; });
    if (subject == group.sides.end()) {
        return;
    }
    if (group.sides.size() == 1) {
        Row row = {group.comparison};
        appendSide(row, *subject);
        rows.push_back(row);
    }
    for (const Side& peer : group.sides) {
        if (peer.name == kSubject) {
            continue;
        }
        Row row = {group.comparison};
        appendSide(row, *subject);
        row.push_back(peer.name);
        appendSide(row, peer);
        row.push_back(number(median(subject->nanoseconds) / median(peer.nanoseconds), 2));
        rows.push_back(row);
    }
}

std::vector<std::size_t> columnWidths(const std::vector<Row>& rows) {
    std::vector<std::size_t> widths(kHeading.size(), 0);
    for (const Row& row : rows) {
        for (std::size_t column = 0; column < row.size(); ++column) {
            widths[column] = std::max(widths[column], row[column].size());
        }
    }
    return widths;
}

std::string line(const Row& row, const std::vector<std::size_t>& widths) {
    std::string text;
    for (std::size_t column = 0; column < row.size(); ++column) {
        const std::string padding(widths[column] - row[column].size(), ' ');
        text += column == 0 ? "" : "  ";
        text += isText(column) ? row[column] + padding : padding + row[column];
    }
    text.erase(text.find_last_not_of(' ') + 1);
    return text + "\n";
}

}  // namespace

double median(std::vector<double> values) {
    std::sort(values.begin(), values.end());
    const std::size_t middle = values.size() / 2;
    return values.size() % 2 == 1 ? values[middle] : (values[middle - 1] + values[middle]) / 2;
}

std::string comparisonTable(const std::vector<Sample>& samples) {
    std::vector<Row> rows = {kHeading};
    for (const Group& group : grouped(samples)) {
        appendRows(rows, group);
    }
    const std::vector<std::size_t> widths = columnWidths(rows);
    std::string text;
    for (const Row& row : rows) {
        text += line(row, widths);
    }
    return text;
}

}  // namespace zelutil::bench
