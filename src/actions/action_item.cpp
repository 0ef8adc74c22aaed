#include <zelutil/actions/action_item.h>

UCPActionItem::UCPActionItem(int id_, int parentId, const std::string& name_, const std::string& icon_,
                             const std::string& context_, const std::string& command_, const std::string& shortcut_,
                             bool rmb_)
    : id(id_), parent_id(parentId), name(name_), icon(icon_), context(context_), command(command_) {
    shortcut.defaultValue = shortcut_;
    rmb.defaultValue = rmb_;
}

bool UCPActionItem::hasOverwrite() const { return shortcut.overwritten || rmb.overwritten; }
