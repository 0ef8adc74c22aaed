#include "host/action_entries.h"

#include "json/document.h"
#include "json/writer.h"

namespace zelutil::host {
namespace {

constexpr std::string_view kActions = "actions";
constexpr std::string_view kId = "id";

void write(json::CompactWriter& writer, const ActionEntry& entry) {
    writer.beginObject();
    writer.key(kId);
    writer.integer(entry.id);
    if (entry.shortcut) {
        writer.key("shortcut");
        writer.text(*entry.shortcut);
    }
    if (entry.inMenu) {
        writer.key("rmb");
        writer.truth(*entry.inMenu);
    }
    writer.endObject();
}

void write(json::CompactWriter& writer, const ForeignEntry& entry) {
    const json::Document document(entry.text, json::Numbers::Exact);
    writer.copy(document.root());
}

}  // namespace

std::vector<ForeignEntry> foreignEntries(std::string_view userText, const std::set<int>& known) {
    std::vector<ForeignEntry> foreign;
    const json::Document document(userText, json::Numbers::Exact);
    const json::Elements roots = document.root().elements();
    if (roots.size() != 1) {
        return foreign;
    }
    for (const json::View element : (*roots.begin()).member(kActions).elements()) {
        const int id = element.member(kId).integer().value_or(0);
        if (id > 0 && known.count(id) == 0) {
            if (std::optional<std::string> text = json::compactText(element, json::Numbers::Exact)) {
                foreign.push_back({id, *std::move(text)});
            }
        }
    }
    return foreign;
}

std::string userTextOf(const ActionEntries& entries, const std::vector<ForeignEntry>& foreign) {
    json::CompactWriter writer(json::Numbers::Exact);
    writer.beginArray();
    writer.beginObject();
    writer.key(kActions);
    writer.beginArray();
    for (const ActionEntry& entry : entries) {
        write(writer, entry);
    }
    for (const ForeignEntry& entry : foreign) {
        write(writer, entry);
    }
    writer.endArray();
    writer.endObject();
    writer.endArray();
    return writer.take().value_or(std::string());
}

}  // namespace zelutil::host
