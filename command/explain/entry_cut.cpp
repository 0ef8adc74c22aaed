#include "command/explain/entry_cut.h"

#include <algorithm>
#include <cstddef>
#include <unordered_set>

#include "prefs/section_walk.h"

namespace zelutil::command {
namespace {

/// Bytes of a text, of which the last one stands before `end`.
struct Stretch {
    std::size_t begin = 0;
    std::size_t end = 0;
};

/// An element of an array or a member of an object.
struct Item {
    Stretch stretch;
    bool goes = false;
};

class EntryCut {
public:
    EntryCut(const json::LocatedDocument& document, const std::vector<json::View>& values) : document_(document) {
        for (const json::View value : values) {
            placesThatGo_.insert(beginOf(value));
        }
    }

    std::string run() {
        prefs::forEachSection(document_.root(), [this](const prefs::VisitedSection& visited) {
            const json::View overridden = visited.element.member(prefs::kOverriddenSettings);
            if (overridden.isArray()) {
                cutIn(overridden);
            }
        });
        return rest();
    }

    std::string runOn(json::View array, const std::function<bool(json::View)>& elementGoes) {
        std::vector<Item> elements;
        for (const json::View element : array.elements()) {
            elements.push_back({{beginOf(element), endOf(element)}, elementGoes(element)});
        }
        cut(elements, {beginOf(array), endOf(array)});
        return rest();
    }

private:
    bool goes(json::View value) const { return placesThatGo_.count(beginOf(value)) != 0; }

    std::size_t beginOf(json::View value) const {
        return document_.positionOf(value).value_or(json::Position()).offset;
    }
    std::size_t endOf(json::View value) const { return document_.endOf(value).value_or(json::Position()).offset; }

    void cutIn(json::View overridden) {
        std::vector<Item> elements;
        for (const json::View element : overridden.elements()) {
            const std::vector<Item> members = membersOf(element);
            const bool nothingIsLeft = !members.empty() && std::all_of(members.begin(), members.end(),
                                                                       [](const Item& member) { return member.goes; });
            if (!nothingIsLeft) {
                cut(members, {beginOf(element), endOf(element)});
            }
            elements.push_back({{beginOf(element), endOf(element)}, nothingIsLeft});
        }
        cut(elements, {beginOf(overridden), endOf(overridden)});
    }

    std::vector<Item> membersOf(json::View element) const {
        std::vector<Item> members;
        for (const json::Member& member : element.members()) {
            const std::size_t begin = document_.keyPositionOf(member.value).value_or(json::Position()).offset;
            members.push_back({{begin, endOf(member.value)}, goes(member.value)});
        }
        return members;
    }

    /// Cuts the items that go out of a container, up to the next one that stays, or where there is none, from the last
    /// one that stays on.
    void cut(const std::vector<Item>& items, Stretch container) {
        const auto staysOrEnd = [&](auto from) {
            return std::find_if(from, items.end(), [](const Item& item) { return !item.goes; });
        };
        std::size_t behindKept = container.begin + 1;
        for (auto item = items.begin(); item != items.end(); ++item) {
            if (!item->goes) {
                behindKept = item->stretch.end;
                continue;
            }
            const auto next = staysOrEnd(item);
            if (next != items.end()) {
                cuts_.push_back({item->stretch.begin, next->stretch.begin});
            } else {
                const bool isAllGone = behindKept == container.begin + 1;
                cuts_.push_back({behindKept, isAllGone ? container.end - 1 : items.back().stretch.end});
                return;
            }
            item = next - 1;
        }
    }

    std::string rest() {
        std::sort(cuts_.begin(), cuts_.end(), [](const Stretch& a, const Stretch& b) { return a.begin < b.begin; });
        std::string text;
        std::size_t from = 0;
        for (const Stretch& one : cuts_) {
            text += document_.text().substr(from, one.begin - from);
            from = one.end;
        }
        return text += document_.text().substr(from);
    }

    const json::LocatedDocument& document_;
    std::unordered_set<std::size_t> placesThatGo_;
    std::vector<Stretch> cuts_;
};

}  // namespace

std::string withoutEntries(const json::LocatedDocument& document, const std::vector<json::View>& values) {
    return EntryCut(document, values).run();
}

std::string withoutElements(const json::LocatedDocument& document, json::View array,
                            const std::function<bool(json::View)>& goes) {
    return EntryCut(document, {}).runOn(array, goes);
}

}  // namespace zelutil::command
