#include "prefs/user_file_text.h"

#include <utility>

#include "json/writer.h"
#include "prefs/section_walk.h"

namespace zelutil::prefs {
namespace {

using json::View;

/// Writes what the host's door puts into the text: entries, and what means nothing to the defaults.
class WholeContent {
public:
    WholeContent(const std::vector<SavedSection>& sections, const std::vector<KeptSection>& kept,
                 const std::vector<json::Member>& members)
        : next_(sections.begin()), kept_(kept), members_(members) {}

    /// Returns what is passed back for the section whose turn it is in a walk.
    const SavedSection& nextSection() { return *next_++; }

    static void writeOverridden(json::PrettyWriter& writer, const SavedSection& saved) {
        if (saved.subManagerValue) {
            writer.copy(saved.subManagerValue);
            return;
        }
        writer.beginArray();
        for (const SavedSection::Value& value : saved.values) {
            writer.beginObject();
            writer.key(value.name);
            writer.text(value.value);
            writer.endObject();
        }
        writeKeptEntries(writer, saved.kept);
        writer.endArray();
    }

    static void endSection(json::PrettyWriter& writer, const SavedSection& saved) {
        writeMembers(writer, saved.members);
    }

    void endSections(json::PrettyWriter& writer) const {
        for (const KeptSection& section : kept_) {
            writeKept(writer, section);
        }
    }

    void endText(json::PrettyWriter& writer) const { writeMembers(writer, members_); }

private:
    static void writeMembers(json::PrettyWriter& writer, const std::vector<json::Member>& members) {
        for (const auto& [key, value] : members) {
            writer.key(key);
            writer.copy(value);
        }
    }

    static void writeKept(json::PrettyWriter& writer, const KeptSection& section) {
        writer.beginObject();
        writer.key(kHeader);
        writer.text(section.header);
        writer.key(kAttribute);
        writer.text(section.attributePath);
        writeMembers(writer, section.members);
        writer.key(kOverriddenSettings);
        if (section.whole) {
            writer.copy(section.whole);
        } else {
            writer.beginArray();
            writeKeptEntries(writer, section.entries);
            writer.endArray();
        }
        writer.endObject();
    }

    static void writeKeptEntries(json::PrettyWriter& writer, const std::vector<KeptEntry>& entries) {
        for (const KeptEntry& entry : entries) {
            if (!entry.name) {
                writer.copy(entry.value);
                continue;
            }
            writer.beginObject();
            writer.key(*entry.name);
            writer.copy(entry.value);
            writer.endObject();
        }
    }

    /// A section comes before its children here too, so the walk's order is this one.
    std::vector<SavedSection>::const_iterator next_;
    const std::vector<KeptSection>& kept_;
    const std::vector<json::Member>& members_;
};

/// Writes gaps in the places of the contents, and nothing else.
class Gaps {
public:
    std::size_t nextSection() {
        form_.depths.push_back(0);
        return form_.depths.size() - 1;
    }

    void writeOverridden(json::PrettyWriter& writer, std::size_t section) {
        form_.gaps.push_back({writer.gap(), section});
        form_.depths[section] = writer.depth();
    }

    void endSection(json::PrettyWriter&, std::size_t) const {}
    void endSections(json::PrettyWriter&) const {}
    void endText(json::PrettyWriter&) const {}

    UserFileForm& form() { return form_; }

private:
    UserFileForm form_;
};

/// Writes the text. Where several members have one name, the first is meant and the others are copied as they stand.
template <typename Content>
class UserFileTextWriter {
public:
    UserFileTextWriter(Content& content, json::Numbers numbers) : content_(content), writer_(numbers) {}

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
        content_.endText(writer_);
        writer_.endObject();
        return writer_.take();
    }

private:
    void writeMeta(View sections) {
        writer_.beginArray();
        writeSections(sections);
        content_.endSections(writer_);
        writer_.endArray();
    }

    void writeSections(View sections) {
        for (const View element : sections.elements()) {
            if (sectionNames(element)) {
                writeSection(element);
            } else {
                writer_.copy(element);
            }
        }
    }

    void writeSection(View section) {
        const auto& saved = content_.nextSection();
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
                content_.writeOverridden(writer_, saved);
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
            content_.writeOverridden(writer_, saved);
        }
        content_.endSection(writer_, saved);
        writer_.endObject();
    }

    Content& content_;
    json::PrettyWriter writer_;
};

}  // namespace

std::optional<std::string> userFileText(View defaults, const std::vector<SavedSection>& sections,
                                        const std::vector<KeptSection>& kept, const std::vector<json::Member>& members,
                                        json::Numbers numbers) {
    WholeContent content(sections, kept, members);
    return UserFileTextWriter(content, numbers).write(defaults);
}

UserFileForm userFileForm(View defaults) {
    Gaps gaps;
    auto text = UserFileTextWriter(gaps, json::Numbers::Fast).write(defaults);
    gaps.form().text = std::move(text);
    return std::move(gaps.form());
}

}  // namespace zelutil::prefs
