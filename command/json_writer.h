#ifndef ZELUTIL_COMMAND_JSON_WRITER_H
#define ZELUTIL_COMMAND_JSON_WRITER_H

#include <optional>
#include <string>
#include <string_view>

#include "json/writer.h"

namespace zelutil::command {

/// The library's writer for what programs read: every text in it is valid UTF-8, as JSON has to be.
class JsonWriter {
public:
    void beginObject() { writer_.beginObject(); }
    void endObject() { writer_.endObject(); }
    void beginArray() { writer_.beginArray(); }
    void endArray() { writer_.endArray(); }
    void key(std::string_view name);
    void text(std::string_view value);
    void integer(int value) { writer_.integer(value); }
    void copy(json::View value) { writer_.copy(value); }
    void truth(bool value) { writer_.truth(value); }

    /// Writes a member with its value.
    void member(std::string_view name, std::string_view value);
    void member(std::string_view name, const char* value) { member(name, std::string_view(value)); }
    void member(std::string_view name, int value);
    void member(std::string_view name, bool value);

    /// Writes a member that is an array with one element for each of the list. `writeElement` writes one of them.
    template <typename List, typename WriteElement>
    void list(std::string_view name, const List& elements, WriteElement writeElement) {
        key(name);
        beginArray();
        for (const auto& element : elements) {
            writeElement(element);
        }
        endArray();
    }

    /// The same with an object for each; `writeMembers` writes its members.
    template <typename List, typename WriteMembers>
    void objects(std::string_view name, const List& elements, WriteMembers writeMembers) {
        list(name, elements, [&](const auto& element) {
            beginObject();
            writeMembers(element);
            endObject();
        });
    }

    /// Returns the text, or nothing when it is larger than the library's reader takes.
    std::optional<std::string> take() { return writer_.take(); }

private:
    json::PrettyWriter writer_;
};

}  // namespace zelutil::command

#endif
