#include "actions/action_catalogue.h"

#include "actions/action_tables.h"
#include "actions/action_text.h"
#include "actions/overwritable.h"

namespace zelutil::actions {
namespace {

const std::vector<int> kNoIds;

}  // namespace

ActionCatalogue::ActionCatalogue(const ObserverRegistry& observers)
    : observers_(observers), tables_(std::make_unique<Tables>()) {}

ActionCatalogue::~ActionCatalogue() = default;

UCPActionItem ActionCatalogue::Action::item() const {
    UCPActionItem item;
    item.id = id;
    item.parent_id = parentId;
    item.name = name;
    item.icon = icon;
    item.context = context->name;
    item.command = command;
    item.shortcut = shortcut;
    item.rmb = rmb;
    return item;
}

std::string_view ActionCatalogue::Action::contextName() const { return context->name; }

const std::string& ActionCatalogue::Action::boundTo() const { return binding->bound; }

const ActionCatalogue::Action* ActionCatalogue::find(int id) const { return tables_->find(id); }

ActionCatalogue::Action* ActionCatalogue::findForEdit(int id) { return tables_->find(id); }

void ActionCatalogue::forEachAction(const std::function<void(int, const Action&)>& call) const {
    tables_->forEach(call);
}

void ActionCatalogue::forEachHolder(const std::function<void(std::string_view, const std::string&, int)>& call) const {
    for (const auto& [name, context] : tables_->contexts) {
        for (const auto& [shortcut, holder] : context.holders) {
            call(name, shortcut, holder.id);
        }
    }
}

std::vector<UCPActionItem> ActionCatalogue::items() const {
    std::vector<UCPActionItem> items;
    items.reserve(tables_->ordered.size() + tables_->standIns.size());
    tables_->forEach([&](int, const Action& action) { items.push_back(action.item()); });
    return items;
}

std::vector<UCPActionItem> ActionCatalogue::menuItems() const {
    std::vector<UCPActionItem> items;
    tables_->forEach([&](int, const Action& action) {
        if (effectiveValue(action.rmb)) {
            items.push_back(action.item());
        }
    });
    return items;
}

const std::vector<int>& ActionCatalogue::childIds(int id) const {
    const auto found = tables_->childIds.find(id);
    return found == tables_->childIds.end() ? kNoIds : found->second;
}

int ActionCatalogue::idByCommand(std::string_view context, std::string_view command) const {
    const Context* const names = tables_->findContext(context);
    if (names == nullptr) {
        return 0;
    }
    const auto found = names->commands.find(command);
    return found == names->commands.end() ? 0 : found->second.action;
}

const ActionCatalogue::Holder* ActionCatalogue::findHolder(std::string_view context, const std::string& shortcut,
                                                           bool fallback) const {
    const Context* const names = tables_->findContext(context);
    const Holder* const holder = names == nullptr ? nullptr : names->holderOf(shortcut);
    return holder == nullptr && fallback ? findHolder(kFallbackContext, shortcut, false) : holder;
}

int ActionCatalogue::idByShortcut(std::string_view context, const std::string& shortcut, bool fallback) const {
    const Holder* const holder = findHolder(context, shortcut, fallback);
    return holder == nullptr ? 0 : holder->id;
}

std::string_view ActionCatalogue::command(std::string_view context, const std::string& shortcut, bool fallback) const {
    if (shortcut.empty()) {
        return {};
    }
    const Holder* const holder = findHolder(context, shortcut, fallback);
    return holder == nullptr ? std::string_view() : holder->command;
}

std::string ActionCatalogue::userText() const {
    if (!modified_) {
        return {};
    }
    UserTextWriter writer;
    tables_->forEach([&](int, const Action& action) {
        if (action.parentId == 0 && (action.shortcut.overwritten || action.rmb.overwritten)) {
            writer.add(action.id, action.shortcut, action.rmb);
        }
    });
    return writer.text();
}

}  // namespace zelutil::actions
