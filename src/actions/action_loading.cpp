#include "actions/action_tables.h"
#include "actions/action_text.h"
#include "actions/overwritable.h"

#include <algorithm>
#include <unordered_set>
#include <utility>

namespace zelutil::actions {

/// The actions that cannot have a shortcut because of somebody in the way of an action far below them.
///
/// Going down a chain whose last child is refused, each child asks for the shortcut of its parent and would walk to the
/// end of the chain to learn what its parent has just learned.
class ActionCatalogue::Refusals {
public:
    bool has(int id, const std::string& shortcut, std::uint64_t edits) const {
        return edits == edits_ && shortcut == shortcut_ && ids_.count(id) != 0;
    }

    /// Remembers that `shortcut` is refused to the action `at`, its parent and so on up to the action `id`.
    void add(ActionCatalogue& catalogue, int at, int id, const std::string& shortcut) {
        if (catalogue.edits_ != edits_ || shortcut != shortcut_) {
            ids_.clear();
            shortcut_ = shortcut;
            edits_ = catalogue.edits_;
        }
        ids_.insert(id);
        for (; at != id; at = catalogue.find(at)->parentId) {
            ids_.insert(at);
        }
    }

private:
    std::unordered_set<int> ids_;
    std::string shortcut_;
    std::uint64_t edits_ = 0;
};

/// A load in progress, for its lifetime. They nest where observers load.
class ActionCatalogue::Loading {
public:
    explicit Loading(ActionCatalogue& catalogue) : catalogue_(catalogue) { ++catalogue_.loading_; }
    Loading(const Loading&) = delete;
    Loading& operator=(const Loading&) = delete;
    ~Loading() { --catalogue_.loading_; }

private:
    ActionCatalogue& catalogue_;
};

std::unique_ptr<ActionCatalogue::Tables> ActionCatalogue::tablesOf(std::string_view defaultsText) {
    DefinitionReader reader(defaultsText);
    return std::make_unique<Tables>(reader);
}

void ActionCatalogue::replace(std::unique_ptr<Tables> tables, Texts texts) {
    tables_ = std::move(tables);
    texts_ = std::move(texts);
    modified_ = false;
    ++edits_;
    ++loads_;
}

/// Both texts are read and the tables made before anything is forgotten: where there is no memory for them, nothing has
/// changed. From then on each step leaves the catalogue whole, and what observers were told stays true.
void ActionCatalogue::load(std::string_view defaultsText, std::string_view userText) {
    std::unique_ptr<Tables> tables = tablesOf(defaultsText);
    UserEntryReader entries(userText);
    replace(std::move(tables), {std::string(defaultsText), std::string(userText)});
    const Loading loading(*this);
    applyUserEntries(entries);
    updateFromParents();
}

void ActionCatalogue::loadAndEdit(std::string_view defaultsText, const std::function<void(ActionCatalogue&)>& edit) {
    replaceAndEdit(tablesOf(defaultsText), {std::string(defaultsText), std::string()}, edit);
}

void ActionCatalogue::loadAndEdit(json::View defaults, const std::function<void(ActionCatalogue&)>& edit) {
    DefinitionReader reader(defaults);
    replaceAndEdit(std::make_unique<Tables>(reader), {}, edit);
}

void ActionCatalogue::replaceAndEdit(std::unique_ptr<Tables> tables, Texts texts,
                                     const std::function<void(ActionCatalogue&)>& edit) {
    replace(std::move(tables), std::move(texts));
    const Loading loading(*this);
    edit(*this);
    updateFromParents();
}

void ActionCatalogue::becomeCopyOf(const ActionCatalogue& other) {
    load(other.texts_.defaults, other.texts_.user);
    other.tables_->forEach([this](int id, const Action& action) {
        Action& own = tables_->findOrStandIn(id);
        own.shortcut = action.shortcut;
        own.rmb = action.rmb;
        own.binding->bound = action.binding->bound;
    });
    for (auto& [name, context] : tables_->contexts) {
        context.holders = {};
    }
    other.forEachHolder([this](std::string_view context, const std::string& shortcut, int id) {
        const Action& own = tables_->findOrStandIn(id);
        tables_->findContext(context)->holders.try_emplace(shortcut, Holder{own.command, id, own.parentId});
    });
}

void ActionCatalogue::applyUserEntries(UserEntryReader& reader) {
    UserEntry entry;
    while (reader.next(entry)) {
        if (entry.shortcut) {
            updateShortcut(entry.id, std::string(*entry.shortcut));
        }
        if (entry.inMenu) {
            updateMenu(entry.id, *entry.inMenu);
        }
    }
}

/// Kept deliberately: one pass in ascending id, not down the tree. A grandchild with a lower id than its parent takes
/// over the parent's menu flag and name as they are before the parent has taken over its own parent's.
void ActionCatalogue::updateFromParents() {
    std::vector<int> children;
    for (const auto& [parent, ids] : tables_->childIds) {
        children.insert(children.end(), ids.begin(), ids.end());
    }
    std::sort(children.begin(), children.end());
    Refusals refusals;
    for (const int id : children) {
        takeOverFromParent(id, refusals);
    }
}

void ActionCatalogue::takeOverFromParent(int id, Refusals& refusals) {
    Action* const child = findForEdit(id);
    // If an observer has loaded anew meanwhile, the id may be gone or top-level.
    if (child == nullptr || child->parentId < 1) {
        return;
    }
    const Action& parent = tables_->findOrStandIn(child->parentId);
    OverwritableValue<std::string> property = parent.shortcut;
    const std::string shortcut = effectiveValue(property);
    child->shortcut = std::move(property);
    child->rmb = parent.rmb;
    if (child->name.empty()) {
        child->name = parent.name;
    }
    // Kept deliberately: the child has the parent's shortcut by now, also where the context refuses it.
    if (child->binding->bound == shortcut || refusals.has(id, shortcut, edits_)) {
        return;
    }
    if (const std::optional<Conflict> conflict = firstConflict(id, shortcut, work_.looks)) {
        refusals.add(*this, conflict->id, id, shortcut);
    } else {
        changeShortcut(id, *child, shortcut);
    }
}

}  // namespace zelutil::actions
