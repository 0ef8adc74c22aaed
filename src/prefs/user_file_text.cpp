#include "prefs/user_file_text.h"

#include "json/writer.h"
#include "prefs/section_walk.h"

namespace zelutil::prefs {
namespace {

using json::View;

/// Writes the text. Where several members have one name, the first is meant and the others are copied as they stand.
class UserFileTextWriter {
public:
    explicit UserFileTextWriter(const std::vector<SavedSection>& sections) : next_(sections.begin()) {}

    std::optional<std::string> write(View defaults) {
        const View meta = defaults.member(kMeta);
        writer_.beginObject();
        for (const auto& [key, value] : defaults.members()) {
            writer_.key(key);
            writeSectionsOrCopy(value, meta);
        }
        writer_.endObject();
        return writer_.take();
    }

private:
    void writeSectionsOrCopy(View value, View sections) {
        if (!value.isSame(sections) || !value.isArray()) {
            writer_.copy(value);
            return;
        }
        writer_.beginArray();
        for (const View element : value.elements()) {
            if (sectionNames(element)) {
                writeSection(element, *next_++);
            } else {
                writer_.copy(element);
            }
        }
        writer_.endArray();
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
            } else {
                writeSectionsOrCopy(value, children);
            }
        }
        if (!overridden) {
            writer_.key(kOverriddenSettings);
            writeSaved(saved);
        }
        writer_.endObject();
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

    /// A section comes before its children here too, so the walk's order is this one.
    std::vector<SavedSection>::const_iterator next_;
    json::PrettyWriter writer_;
};

}  // namespace

std::optional<std::string> userFileText(View defaults, const std::vector<SavedSection>& sections) {
    return UserFileTextWriter(sections).write(defaults);
}

}  // namespace zelutil::prefs
