// Whatever the text, reading it as a wish list or a profile ends quietly, and what is read makes sense: each wish names
// an action and says something of it. A plan for the wishes is accepted by the catalogue, edit by edit, and grants
// them.
#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <string>
#include <string_view>

#include "actions/action_catalogue.h"
#include "actions/overwritable.h"
#include "command/shortcuts/named_wishes.h"
#include "command/shortcuts/wish_plan.h"
#include "command/shortcuts/wish_text.h"

namespace {

using namespace zelutil::shortcuts;
using zelutil::actions::ActionCatalogue;

constexpr std::string_view kActions = R"({"actions":[
{"id":1,"context":"ucpedit","command":"fit","shortcut":"F1"},{"id":2,"context":"ucpedit","command":"move","shortcut":"F2"},
{"id":3,"context":"ucpedit","command":"turn","shortcut":"F3"},{"id":4,"context":"brisk3d","command":"orbit"},
{"id":5,"parent_id":1,"context":"panel","command":"fit"},{"id":6,"context":"panel","command":"mark","shortcut":"F2"},
{"id":7,"parent_id":2,"context":"panel","command":"move"},{"id":8,"parent_id":90,"context":"panel","command":"lost"}]})";

void require(bool condition) {
    if (!condition) {
        std::abort();
    }
}

void check(const WishText& text) {
    require(text.unreadable.empty() || (text.wishes.empty() && text.faults.empty()));
    int place = 0;
    for (const Wish& wish : text.wishes) {
        require(wish.place > place);
        place = wish.place;
        require(wish.id > 0 || (wish.id == 0 && !wish.context.empty() && !wish.command.empty()));
        require(wish.shortcut || wish.inMenu);
    }
    for (const WishFault& fault : text.faults) {
        require(fault.place > 0 && !fault.text.empty());
    }
}

/// Whether the action shows the shortcut of its wish.
bool isShown(const ActionCatalogue& catalogue, const KeyWish& wish) {
    return zelutil::actions::effectiveValue(catalogue.find(wish.action)->shortcut) == wish.shortcut;
}

void plan(const WishText& text) {
    const zelutil::actions::ObserverRegistry nobody;
    ActionCatalogue catalogue(nobody);
    catalogue.load(kActions, "");
    const NamedWishes wishes = nameWishes(text, catalogue);
    require(wishes.places.size() + wishes.skipped.size() == text.wishes.size() + text.faults.size());
    const PartialPlan partial = planWhatCanBe(catalogue, wishes.keys);
    require(partial.plan.outcome == WishPlan::Outcome::Possible);
    for (const KeyWish& edit : partial.plan.edits) {
        require(catalogue.updateShortcut(edit.action, edit.shortcut));
    }
    for (const KeyWish& wish : wishes.keys) {
        const bool isRefused =
            std::find(partial.refused.begin(), partial.refused.end(), wish.action) != partial.refused.end();
        require(isRefused || isShown(catalogue, wish));
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    constexpr std::size_t kLargestInput = 1 << 12;
    if (size > kLargestInput) {
        return 0;
    }
    const std::string_view text(reinterpret_cast<const char*>(data), size);
    const WishText profile = readProfile(text);
    check(profile);
    const WishText list = readWishes(text);
    check(list);
    plan(list);
    return 0;
}
