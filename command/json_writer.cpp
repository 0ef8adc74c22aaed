#include "command/json_writer.h"

#include "command/text.h"

namespace zelutil::command {

void JsonWriter::key(std::string_view name) { writer_.key(validUtf8(name)); }

void JsonWriter::text(std::string_view value) { writer_.text(validUtf8(value)); }

void JsonWriter::member(std::string_view name, std::string_view value) {
    key(name);
    text(value);
}

void JsonWriter::member(std::string_view name, int value) {
    key(name);
    integer(value);
}

void JsonWriter::member(std::string_view name, bool value) {
    key(name);
    truth(value);
}

}  // namespace zelutil::command
