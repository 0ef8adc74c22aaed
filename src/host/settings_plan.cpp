#include "host/settings_plan.h"

#include <algorithm>
#include <utility>

#include "host/setting_definition.h"
#include "host/settings_merge.h"
#include "host/settings_wishes.h"
#include "host/user_file_reading.h"
#include "json/writer.h"

namespace zelutil::host {
namespace {

using json::View;
using prefs::Catalogue;
using prefs::KeptEntry;
using prefs::KeptSection;
using prefs::SavedSection;
using prefs::SubManagerType;
using prefs::VisitedSection;

View parse(std::string_view text, UserFileContent& content, json::Numbers numbers = json::Numbers::Exact) {
    return content.documents.emplace_back(text, numbers).root();
}

/// So many arrays and objects stand around the value of an entry: those of the file, the list of sections, the section,
/// the list of entries and the entry. A section inside another one has the other and its children around it.
constexpr unsigned kAroundEntry = 5;
constexpr unsigned kAroundChild = 2;

/// Returns whether a value could be read back with so many arrays and objects around it.
bool canBeRead(View value, unsigned depth) {
    json::CompactWriter writer(json::Numbers::Exact, depth);
    writer.copy(value);
    return writer.take().has_value();
}

/// Lays out the file: finds a section and a name for each value.
class Layout {
public:
    Layout(const Catalogue& catalogue, UserFileReading& now, SettingsMerge& merge, SettingsPlan& plan)
        : catalogue_(catalogue), now_(now), merge_(merge), plan_(plan), content_(plan.content) {}

    void lay() {
        prefs::forEachSection(content_.defaults, [this](const VisitedSection& visited) { laySection(visited); });
        if (firstPlain_) {
            auto& values = content_.sections[*firstPlain_].values;
            values.insert(values.end(), elsewhere_.begin(), elsewhere_.end());
        }
        for (KeptSection& section : now_.takeKept()) {
            content_.kept.push_back(std::move(section));
        }
        content_.members = now_.takeMembers();
    }

private:
    void laySection(const VisitedSection& visited) {
        const std::size_t place = content_.sections.size();
        content_.sections.emplace_back().members = now_.takeMembers(visited.attributePath);
        const auto section = catalogue_.sections().find(visited.attributePath);
        const SubManagerType type = catalogue_.subManagerOf(visited.attributePath);
        isRead_ = section != catalogue_.sections().end() && type == SubManagerType::None;
        if (type != SubManagerType::None) {
            laySubManager(type, place);
        } else if (isRead_ && !firstPlain_) {
            firstPlain_ = place;
        }
        count_.inSection(visited, [&](std::uint32_t number, const prefs::DefaultSetting& definition) {
            layDefinition(number, definition.name, visited.attributePath);
        });
        if (isRead_) {
            layUnknownEntries(visited);
        }
    }

    /// Keeps them in their section, but for those that would nest too deep there. These stand at the end, where no
    /// value nests deeper than it did.
    void layUnknownEntries(const VisitedSection& visited) {
        KeptSection tooDeep{visited.header, visited.attributePath, {}, {}, {}};
        for (const KeptEntry& entry : now_.takeUnknownEntries(visited.attributePath)) {
            const bool isReadable = canBeRead(entry.value, kAroundEntry + kAroundChild * visited.level);
            (isReadable ? content_.sections.back().kept : tooDeep.entries).push_back(entry);
        }
        if (!tooDeep.entries.empty()) {
            content_.kept.push_back(std::move(tooDeep));
        }
    }

    void laySubManager(SubManagerType type, std::size_t place) {
        content_.sections[place].subManagerValue = valueFor(type);
        if (type == SubManagerType::Actions) {
            content_.sectionsOfActions.push_back(place);
        }
    }

    /// Returns what the file has for a sub-manager unless a host handed over what it lacks, and where it has nothing
    /// what it had at last.
    View valueFor(SubManagerType type) {
        const std::string* const unwritten = catalogue_.handedOver().unwrittenText(type);
        const View inFile = now_.subManagerValue(type);
        if (unwritten == nullptr && inFile) {
            return inFile;
        }
        const auto [held, isNew] = held_.try_emplace(type);
        const std::string* const text = unwritten == nullptr ? heldText(type) : unwritten;
        if (isNew && text != nullptr) {
            held->second = parse(*text, content_);
        }
        plan_.changesValues = plan_.changesValues || (type != SubManagerType::Actions && held->second);
        return held->second;
    }

    const std::string* heldText(SubManagerType type) const {
        if (const std::string* const written = catalogue_.handedOver().writtenText(type)) {
            return written;
        }
        const auto atStart = catalogue_.userSubManagerTexts().find(type);
        return atStart == catalogue_.userSubManagerTexts().end() ? nullptr : &atStart->second;
    }

    void layDefinition(std::uint32_t number, std::string_view name, const std::string& attributePath) {
        if (const auto definition = settingDefinition(catalogue_, number, name, attributePath)) {
            if (const auto value = merge_.fileValueOf(*definition)) {
                layValue(*definition, *value);
            }
        }
    }

    /// Writes a value under the full name wherever that finds the setting. Which setting a bare name means depends on
    /// the defaults that are installed, and another version of them may read the file.
    void layValue(const SettingDefinition& definition, std::string_view value) {
        std::string_view name = definition.name;
        if (definition.foundInFull) {
            name = content_.strings.emplace_back(definition.fullName());
        }
        if (isRead_) {
            add(name, value);
        } else {
            elsewhere_.push_back({name, value});
        }
    }

    void add(std::string_view name, std::string_view value) {
        content_.sections.back().values.push_back({name, value});
    }

    const Catalogue& catalogue_;
    UserFileReading& now_;
    SettingsMerge& merge_;
    SettingsPlan& plan_;
    UserFileContent& content_;
    prefs::DefinitionCount count_;
    /// Whether entries of the section that the walk has come to are read.
    bool isRead_ = false;
    std::optional<std::size_t> firstPlain_;
    /// The values that have to be written into another section than their own.
    std::vector<SavedSection::Value> elsewhere_;
    std::map<SubManagerType, View> held_;
};

std::optional<std::string> textOf(const UserFileContent& content) {
    return prefs::userFileText(content.defaults, content.sections, content.kept, content.members, json::Numbers::Exact);
}

/// Leaves out all that means nothing to the defaults, so that it no longer keeps the file from being written.
void dropKept(UserFileContent& content) {
    content.kept.clear();
    content.members.clear();
    for (SavedSection& section : content.sections) {
        section.kept.clear();
        section.members.clear();
    }
}

void dropSubManagerValues(UserFileContent& content) {
    for (std::size_t place = 0; place < content.sections.size(); ++place) {
        const auto& ofActions = content.sectionsOfActions;
        if (std::find(ofActions.begin(), ofActions.end(), place) == ofActions.end()) {
            content.sections[place].subManagerValue = View();
        }
    }
}

/// Returns the text with as much as leaves it readable.
std::optional<std::string> readableText(SettingsPlan& plan) {
    auto text = textOf(plan.content);
    for (const auto drop : {dropKept, dropSubManagerValues}) {
        if (!text) {
            drop(plan.content);
            text = textOf(plan.content);
            plan.losesContent = true;
        }
    }
    return text;
}

bool lacksUnread(const UserFileContent& content, std::string_view text) {
    if (content.unread.empty()) {
        return false;
    }
    const json::Document document(text, json::Numbers::Exact);
    return !content.unread.areAllIn(unreadPartsOf(text, document.root()));
}

}  // namespace

SettingsPlan planSettings(const Catalogue& catalogue, const SettingsRequest& request,
                          std::optional<std::string_view> fileNow) {
    SettingsPlan plan;
    const View rootNow = fileNow ? parse(*fileNow, plan.content) : View();
    plan.fileKnown = static_cast<bool>(rootNow);
    // As the old door reads them, whose files have the same numbers.
    plan.content.defaults = parse(catalogue.defaultsText(), plan.content, json::Numbers::Fast);

    const SettingsWishes wishes(catalogue, request);
    plan.unknownSettings = wishes.unknownNames();
    UserFileReading now(catalogue, plan.content.defaults, rootNow);
    if (const View actions = now.subManagerValue(SubManagerType::Actions)) {
        plan.actionsInFile = json::compactText(actions, json::Numbers::Exact);
    }
    SettingsMerge merge(catalogue, wishes, now, plan);
    Layout(catalogue, now, merge, plan).lay();
    plan.hasSections = !plan.content.sections.empty();
    plan.content.unread = unreadPartsOf(fileNow.value_or(std::string_view()), rootNow);
    plan.secondValues = now.takeSecondValues();
    plan.losesContent = !plan.secondValues.empty();
    return plan;
}

std::optional<std::string> fileText(SettingsPlan& plan, std::optional<std::string_view> actionsValue) {
    if (!plan.hasSections) {
        return std::nullopt;
    }
    const View actions = actionsValue ? parse(*actionsValue, plan.content) : View();
    for (const std::size_t place : plan.content.sectionsOfActions) {
        View& value = plan.content.sections[place].subManagerValue;
        value = actions ? actions : value;
    }
    auto text = readableText(plan);
    plan.losesContent = plan.losesContent || (text && lacksUnread(plan.content, *text));
    return text;
}

}  // namespace zelutil::host
