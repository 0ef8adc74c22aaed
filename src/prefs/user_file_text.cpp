#include "prefs/user_file_text.h"

#include "json/writer.h"
#include "prefs/section_walk.h"

namespace zelutil::prefs {
namespace {

using json::View;

/// Writes the text. Where several members have one name, the first is meant and the others are copied as they stand.
class UserFileTextWriter {
public:
    UserFileTextWriter(const std::vector<SavedSection>& sections, const std::vector<KeptSection>& kept,
                       const std::vector<json::Member>& members, json::Numbers numbers)
        : next_(sections.begin()), kept_(kept), members_(members), writer_(numbers) {}

    std::optional<std::string> write(View defaults) {
        const View meta = defaults.member(kMeta);
        writer_.beginObject();
        for (const auto& [key, value] : defaults.members()) {
            writer_.key(key);
            if (value.isSame(meta) && value.isArray()) {
                writeMeta(value);
            } else {
                writer_.copy(value);
            }
        }
        writeMembers(members_);
        writer_.endObject();
        return writer_.take();
    }

private:
    void writeMeta(View sections) {
        writer_.beginArray();
        writeSections(sections);
        for (const KeptSection& section : kept_) {
            writeKept(section);
        }
        writer_.endArray();
    }

    void writeSections(View sections) {
        for (const View element : sections.elements()) {
            if (sectionNames(element)) {
                writeSection(element, *next_++);
            } else {
                writer_.copy(element);
            }
        }
    }

    void writeSection(View section, const SavedSection& saved) {
        const View tclCommand = section.member(kTclCommand);
        const View defaultSettings = section.member(kDefaultSettings);
        const View overridden = section.member(kOverriddenSettings);
        const View children = section.member(kChildren);
        writer_.beginObject();
        for (const auto& [key, value] : section.members()) {
            if (value.isSame(tclCommand) || value.isSame(defaultSettings)) {
                continue;
            }
            writer_.key(key);
            if (value.isSame(overridden)) {
                writeSaved(saved);
            } else if (value.isSame(children) && value.isArray()) {
                writer_.beginArray();
                writeSections(value);
                writer_.endArray();
            } else {
                writer_.copy(value);
            }
        }
        if (!overridden) {
            writer_.key(kOverriddenSettings);
            writeSaved(saved);
        }
        writeMembers(saved.members);
        writer_.endObject();
    }

    void writeMembers(const std::vector<json::Member>& members) {
        for (const auto& [key, value] : members) {
            writer_.key(key);
            writer_.copy(value);
        }
    }

    void writeSaved(const SavedSection& saved) {
        if (saved.subManagerValue) {
            writer_.copy(saved.subManagerValue);
            return;
        }
        writer_.beginArray();
        for (const SavedSection::Value& value : saved.values) {
            writer_.beginObject();
            writer_.key(value.name);
            writer_.text(value.value);
            writer_.endObject();
        }
        writer_.endArray();
    }

    void writeKept(const KeptSection& section) {
        writer_.beginObject();
        writer_.key(kHeader);
        writer_.text(section.header);
        writer_.key(kAttribute);
        writer_.text(section.attributePath);
        writeMembers(section.members);
        writer_.key(kOverriddenSettings);
        if (section.whole) {
            writer_.copy(section.whole);
        } else {
            writeKeptEntries(section.entries);
        }
        writer_.endObject();
    }

    void writeKeptEntries(const std::vector<KeptSection::Entry>& entries) {
        writer_.beginArray();
        for (const KeptSection::Entry& entry : entries) {
            if (!entry.name) {
                writer_.copy(entry.value);
                continue;
            }
            writer_.beginObject();
            writer_.key(*entry.name);
            writer_.copy(entry.value);
            writer_.endObject();
        }
        writer_.endArray();
    }

    /// A section comes before its children here too, so the walk's order is this one.
    std::vector<SavedSection>::const_iterator next_;
    const std::vector<KeptSection>& kept_;
    const std::vector<json::Member>& members_;
    json::PrettyWriter writer_;
};

}  // namespace

std::optional<std::string> userFileText(View defaults, const std::vector<SavedSection>& sections,
                                        const std::vector<KeptSection>& kept, const std::vector<json::Member>& members,
                                        json::Numbers numbers) {
    return UserFileTextWriter(sections, kept, members, numbers).write(defaults);
}

}  // namespace zelutil::prefs
