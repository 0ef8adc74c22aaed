#include "command/shortcuts/break_circles.h"

#include <algorithm>
#include <utility>
#include <vector>

namespace zelutil::shortcuts {
namespace {

/// Finds those who wait for each other in circles, by two walks without recursion: one along who waits for whom, which
/// puts everybody behind all whom a walk from there reaches, and one back, in the reverse of that order.
class CircleGroups {
public:
    explicit CircleGroups(const Waiting& waiting) : waiting_(waiting) {
        for (const auto& [waiter, others] : waiting) {
            for (const int other : others) {
                if (waiting.count(other) != 0) {
                    waiters_[other].insert(waiter);
                }
            }
        }
    }

    /// Returns the groups, each with the waiting of its members for each other.
    std::vector<Waiting> groups() {
        for (const auto& [waiter, others] : waiting_) {
            walk(waiter, waiting_, [this](int id) { order_.push_back(id); });
        }
        seen_.clear();
        std::vector<Waiting> groups;
        for (auto id = order_.rbegin(); id != order_.rend(); ++id) {
            std::set<int> members;
            walk(*id, waiters_, [&](int member) { members.insert(member); });
            Waiting group = among(members);
            if (!group.empty()) {
                groups.push_back(std::move(group));
            }
        }
        return groups;
    }

private:
    /// Calls `leave` with all that are reached and were not seen before, each behind those that it leads to.
    template <typename Leave>
    void walk(int from, const Waiting& ways, Leave leave) {
        std::vector<std::pair<int, bool>> pending{{from, false}};
        while (!pending.empty()) {
            const auto [id, isLeft] = pending.back();
            pending.pop_back();
            if (isLeft) {
                leave(id);
                continue;
            }
            if (waiting_.count(id) == 0 || !seen_.insert(id).second) {
                continue;
            }
            pending.emplace_back(id, true);
            const auto way = ways.find(id);
            if (way != ways.end()) {
                for (const int other : way->second) {
                    pending.emplace_back(other, false);
                }
            }
        }
    }

    /// Returns who of them waits for whom of them; empty for one that does not wait for itself.
    Waiting among(const std::set<int>& members) const {
        Waiting group;
        for (const int member : members) {
            for (const int other : waiting_.at(member)) {
                if (members.count(other) != 0) {
                    group[member].insert(other);
                }
            }
        }
        return group;
    }

    const Waiting& waiting_;
    Waiting waiters_;
    std::set<int> seen_;
    std::vector<int> order_;
};

/// Returns what is left of the waiting once the one has given way: only what is in circles.
Waiting circlesWithout(int id, Waiting waiting) {
    waiting.erase(id);
    Waiting circles;
    for (Waiting& group : CircleGroups(waiting).groups()) {
        circles.merge(group);
    }
    return circles;
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
        waiting = circlesWithout(heaviest->first, std::move(waiting));
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
            left_ -= std::min(left_, waiting.size());
            all_.push_back(circlesWithout(id, waiting));
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
    Breaks all;
    for (const Waiting& group : CircleGroups(waiting).groups()) {
        const Breaks breaks = breakOneGroup(group, most);
        all.ids.insert(breaks.ids.begin(), breaks.ids.end());
        all.isFewest = all.isFewest && breaks.isFewest;
    }
    return all;
}

}  // namespace zelutil::shortcuts
