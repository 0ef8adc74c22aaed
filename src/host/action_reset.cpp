#include "host/action_reset.h"

#include "actions/overwritable.h"
#include "host/action_families.h"
#include "host/action_key_plan.h"

#include <algorithm>
#include <string>
#include <utility>

namespace zelutil::host {
namespace {

using actions::ActionCatalogue;

ActionValues valuesOf(const ActionCatalogue::Action& action) {
    return {actions::effectiveValue(action.shortcut), actions::effectiveValue(action.rmb)};
}

/// Two actions of one context that are shipped with one shortcut cannot both be given it.
NotRestored refusal(int id, const std::string& shortcut, int holder, bool shippedTwice) {
    NotRestored refused;
    refused.action = id;
    refused.obstacle = shippedTwice ? Obstacle::ShippedTwice : Obstacle::TakenByAnother;
    refused.otherAction = holder;
    refused.text = "Action " + std::to_string(id) + " does not get back the shortcut \"" + shortcut + "\"";
    refused.text += holder == 0 ? std::string(".") : ": action " + std::to_string(holder) + " has it.";
    return refused;
}

/// One reset, of some actions and all below them.
class Reset {
public:
    explicit Reset(ActionCatalogue& catalogue) : catalogue_(catalogue), shipped_(catalogue.texts().defaults) {}

    ActionsReset run(const std::vector<int>& ids) {
        collect(ids);
        setAims();
        for (const int id : standIns_) {
            catalogue_.updateShortcut(id, std::string());
        }
        editBack(catalogue_, shipped_, aim_, group_);
        setFlags();
        nameRefused();
        return std::move(result_);
    }

private:
    void collect(std::vector<int> pending) {
        while (!pending.empty()) {
            const int id = pending.back();
            pending.pop_back();
            if (catalogue_.find(id) == nullptr || !result_.touched.insert(id).second) {
                continue;
            }
            (shipped_.find(id) == nullptr ? standIns_ : group_).push_back(id);
            const std::vector<int>& children = catalogue_.childIds(id);
            pending.insert(pending.end(), children.begin(), children.end());
        }
        std::sort(group_.begin(), group_.end());
    }

    /// Parents come before their children, which may follow one that is not among them.
    void setAims() {
        byDepth_ = group_;
        std::stable_sort(byDepth_.begin(), byDepth_.end(), [this](int left, int right) {
            return shipped_.find(left)->depth < shipped_.find(right)->depth;
        });
        aim_ = shipped_.loaded();
        for (const int id : byDepth_) {
            const int parent = shipped_.find(id)->parent;
            if (shipped_.find(parent) != nullptr && result_.touched.count(parent) == 0) {
                follow(id, valuesOf(*catalogue_.find(parent)));
            }
        }
    }

    void follow(int first, const ActionValues& values) {
        std::set<int> seen;
        std::vector<int> pending{first};
        while (!pending.empty()) {
            const int id = pending.back();
            pending.pop_back();
            if (seen.insert(id).second) {
                aim_.values[id] = values;
                const std::vector<int>& children = catalogue_.childIds(id);
                pending.insert(pending.end(), children.begin(), children.end());
            }
        }
    }

    void setFlags() {
        for (const int id : standIns_) {
            catalogue_.updateMenu(id, false);
        }
        for (const int id : byDepth_) {
            catalogue_.updateMenu(id, aim_.values[id].inMenu);
        }
    }

    void nameRefused() {
        for (const int id : group_) {
            const std::string& shortcut = aim_.values[id].shortcut;
            const ActionCatalogue::Action* const action = catalogue_.find(id);
            if (action != nullptr && valuesOf(*action).shortcut != shortcut) {
                const int holder = catalogue_.shortcutTakenBy(id, shortcut);
                result_.refused.push_back(refusal(id, shortcut, holder, areShippedAlike(id, holder)));
            }
        }
    }

    bool areShippedAlike(int id, int other) const {
        const ShippedAction* const left = shipped_.find(id);
        const ShippedAction* const right = shipped_.find(other);
        return left != nullptr && right != nullptr && left->context == right->context &&
               left->values.shortcut == right->values.shortcut;
    }

    ActionCatalogue& catalogue_;
    ShippedActions shipped_;
    ActionState aim_;
    ActionGroup group_;
    std::vector<int> byDepth_;
    std::vector<int> standIns_;
    ActionsReset result_;
};

}  // namespace

ActionsReset resetActions(ActionCatalogue& catalogue, const std::vector<int>& ids) { return Reset(catalogue).run(ids); }

ActionsReset resetAllActions(ActionCatalogue& catalogue) {
    std::vector<int> ids;
    catalogue.forEachAction([&](int id, const ActionCatalogue::Action&) { ids.push_back(id); });
    return resetActions(catalogue, ids);
}

}  // namespace zelutil::host
