// Loading and forgetting 1,000 to 100,000 actions of the ordinary shapes: the time for each hardly grows with their
// number.
#include <zelutil/actions/action_manager.h>

#include <array>
#include <functional>
#include <string>

#include "peers/plain_json_peer.h"
#include "support/comparison.h"

namespace {

using zelutil::bench::Comparison;

/// One action of a shape.
struct Member {
    int parent;
    std::string context;
    std::string shortcut;
};

struct Shape {
    const char* name;
    /// The member with this id, of so many.
    std::function<Member(int, int)> member;
};

const std::array<Shape, 4> kShapes = {{
    {"alone",
     [](int id, int) {
         return Member{0, "view_" + std::to_string(id / 500), "Key" + std::to_string(id)};
     }},
    {"families of ten",
     [](int id, int) {
         const int place = id % 10;
         return Member{place == 0 ? 0 : id - place, "view_" + std::to_string(place),
                       place == 0 ? "Key" + std::to_string(id) : ""};
     }},
    {"chain",
     [](int id, int) {
         return Member{id - 1, "view_" + std::to_string(id), id == 1 ? std::string("Key") : ""};
     }},
    {"missing parents",
     [](int id, int count) {
         return Member{2 * count + 1 - id, "view_" + std::to_string(id / 500), ""};
     }},
}};

/// The members and behind them one action for the digest.
std::string textOf(const Shape& shape, int count) {
    std::string text = "{\"actions\":[\n";
    for (int id = 1; id <= count; ++id) {
        const Member member = shape.member(id, count);
        text += R"({"id":)" + std::to_string(id) + R"(,"parent_id":)" + std::to_string(member.parent) +
                R"(,"context":")" + member.context + R"(","command":"route command_)" + std::to_string(id) +
                R"(","shortcut":")" + member.shortcut + "\"},\n";
    }
    return text + R"({"id":)" + std::to_string(3 * count) +
           R"(,"context":"last","command":"end","shortcut":"Ctrl+E"}]})";
}

}  // namespace

void zelutil::bench::addComparisons() {
    for (const Shape& shape : kShapes) {
        for (const int count : {1000, 10'000, 100'000}) {
            const std::string text = textOf(shape, count);
            Comparison(std::string("each of ") + std::to_string(count) + ", " + shape.name,
                       static_cast<std::size_t>(count))
                .zelutil([text, count] {
                    UCPActionManager& manager = UCPActionManager::instance();
                    manager.load(text, "");
                    const std::uint64_t digest = manager.getShortcut(3 * count).size();
                    // So that no other row pays for forgetting these.
                    manager.load("", "");
                    return digest;
                })
                .peer("RapidJSON, parse alone", [text] { return peers::parseActionsAlone(text); });
        }
    }
}
