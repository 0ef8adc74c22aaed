#include "command/shortcuts/break_circles.h"

#include <algorithm>
#include <iterator>
#include <utility>
#include <vector>

namespace zelutil::shortcuts {
namespace {

Waiting without(Waiting waiting, int id) {
    waiting.erase(id);
    for (auto& [waiter, others] : waiting) {
        others.erase(id);
    }
    return waiting;
}

std::set<int> awaitedBy(const Waiting& waiting) {
    std::set<int> awaited;
    for (const auto& [waiter, others] : waiting) {
        awaited.insert(others.begin(), others.end());
    }
    return awaited;
}

/// Takes away those who wait for nobody and those for whom nobody waits, again and again. What is left has a circle.
Waiting circlesOf(Waiting waiting) {
    while (true) {
        const std::set<int> awaited = awaitedBy(waiting);
        const auto isOutside = [&](const auto& entry) {
            return entry.second.empty() || awaited.count(entry.first) == 0;
        };
        std::vector<int> outside;
        for (const auto& entry : waiting) {
            if (isOutside(entry)) {
                outside.push_back(entry.first);
            }
        }
        if (outside.empty()) {
            return waiting;
        }
        for (const int id : outside) {
            waiting = without(std::move(waiting), id);
        }
    }
}

/// Returns the one and all who are connected with it, whichever of two waits.
std::set<int> connectedWith(int id, const Waiting& waiting) {
    std::map<int, std::set<int>> both = waiting;
    for (const auto& [waiter, others] : waiting) {
        for (const int other : others) {
            both[other].insert(waiter);
        }
    }
    std::set<int> seen{id};
    std::vector<int> pending{id};
    while (!pending.empty()) {
        const int next = pending.back();
        pending.pop_back();
        for (const int other : both[next]) {
            if (seen.insert(other).second) {
                pending.push_back(other);
            }
        }
    }
    return seen;
}

/// Takes the one out with whom most others wait or for whom most do, until no circle is left.
std::set<int> someBreaks(Waiting waiting) {
    std::set<int> ids;
    while (!waiting.empty()) {
        std::map<int, std::size_t> weights;
        for (const auto& [waiter, others] : waiting) {
            weights[waiter] += others.size();
            for (const int other : others) {
                ++weights[other];
            }
        }
        const auto heaviest = std::max_element(weights.begin(), weights.end(), [](const auto& left, const auto& right) {
            return left.second < right.second;
        });
        ids.insert(heaviest->first);
        waiting = circlesOf(without(std::move(waiting), heaviest->first));
    }
    return ids;
}

/// Looks at all sets of a size, in the order of the ids.
class SetSearch {
public:
    SetSearch(const Waiting& waiting, std::size_t& left) : left_(left) { all_.push_back(waiting); }

    /// Returns whether a set of that size breaks all circles, which is in `ids` then.
    bool find(std::size_t size, int from, std::set<int>& ids) {
        const Waiting waiting = all_.back();
        if (waiting.empty()) {
            return true;
        }
        if (size == 0) {
            return false;
        }
        for (const auto& [id, others] : waiting) {
            if (id < from || left_ == 0) {
                continue;
            }
            --left_;
            all_.push_back(circlesOf(without(waiting, id)));
            ids.insert(id);
            if (find(size - 1, id + 1, ids)) {
                return true;
            }
            ids.erase(id);
            all_.pop_back();
        }
        return false;
    }

private:
    std::size_t& left_;
    std::vector<Waiting> all_;
};

Breaks breakOneGroup(const Waiting& group, std::size_t& left) {
    for (std::size_t size = 1; size <= group.size() && left > 0; ++size) {
        Breaks breaks;
        if (SetSearch(group, left).find(size, group.begin()->first, breaks.ids)) {
            return breaks;
        }
    }
    return {someBreaks(group), false};
}

}  // namespace

Breaks breakCircles(const Waiting& waiting, std::size_t most) {
    Waiting rest = circlesOf(waiting);
    Breaks all;
    while (!rest.empty()) {
        Waiting group;
        for (const int id : connectedWith(rest.begin()->first, rest)) {
            group.insert(rest.extract(id));
        }
        const Breaks breaks = breakOneGroup(group, most);
        all.ids.insert(breaks.ids.begin(), breaks.ids.end());
        all.isFewest = all.isFewest && breaks.isFewest;
    }
    return all;
}

}  // namespace zelutil::shortcuts
