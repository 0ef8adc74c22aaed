#include "command/lint/sarif.h"

#include <algorithm>

#include "command/json_writer.h"
#include "text/ascii.h"

namespace zelutil::lint {
namespace {

using command::JsonWriter;

constexpr char kSchema[] = "https://json.schemastore.org/sarif-2.1.0.json";

/// Writes a member that is an object.
template <typename WriteMembers>
void object(JsonWriter& json, std::string_view key, WriteMembers writeMembers) {
    json.key(key);
    json.beginObject();
    writeMembers();
    json.endObject();
}

int number(std::size_t value) { return static_cast<int>(value); }

void writeRule(JsonWriter& json, const RuleInfo& rule) {
    json.member("id", rule.number);
    object(json, "shortDescription", [&] { json.member("text", std::string(rule.title) + '.'); });
    object(json, "defaultConfiguration", [&] { json.member("level", command::nameOf(rule.severity)); });
}

void writeTool(JsonWriter& json) {
    object(json, "tool", [&] {
        object(json, "driver", [&] {
            json.member("name", "zelutil");
            json.member("version", ZELUTIL_COMMAND_VERSION);
            json.objects("rules", rules(), [&](const RuleInfo& rule) { writeRule(json, rule); });
        });
    });
}

/// Writes a region, which holds at least one character where the text has one.
void writeRegion(JsonWriter& json, const Finding& finding) {
    object(json, "region", [&] {
        json.member("startLine", number(finding.begin.line));
        json.member("startColumn", number(finding.begin.column));
        if (finding.end.offset > finding.begin.offset) {
            json.member("endLine", number(finding.end.line));
            json.member("endColumn", number(finding.end.column));
        }
    });
}

void writeLocation(JsonWriter& json, const CheckedFile& file, const Finding& finding) {
    object(json, "physicalLocation", [&] {
        object(json, "artifactLocation", [&] { json.member("uri", uriOf(file.path)); });
        writeRegion(json, finding);
    });
}

void writeResult(JsonWriter& json, const CheckedFile& file, const Finding& finding) {
    const RuleInfo& rule = infoOf(finding.rule);
    json.beginObject();
    json.member("ruleId", rule.number);
    json.member("ruleIndex", number(static_cast<std::size_t>(finding.rule)));
    json.member("level", command::nameOf(rule.severity));
    object(json, "message",
           [&] { json.member("text", finding.hint.empty() ? finding.message : finding.message + ' ' + finding.hint); });
    json.objects("locations", std::vector<int>{0}, [&](int) { writeLocation(json, file, finding); });
    json.endObject();
}

void writeRun(JsonWriter& json, const std::vector<CheckedFile>& files) {
    writeTool(json);
    json.member("columnKind", "unicodeCodePoints");
    json.key("results");
    json.beginArray();
    for (const CheckedFile& file : files) {
        for (const Finding& finding : file.findings) {
            writeResult(json, file, finding);
        }
    }
    json.endArray();
}

bool standsForItself(char c) {
    return ascii::isLetter(c) || ascii::isDigit(c) || std::string_view("-._~/").find(c) != std::string_view::npos;
}

std::string percentEncoded(char c) {
    constexpr char kDigits[] = "0123456789ABCDEF";
    const auto byte = static_cast<unsigned char>(c);
    return {'%', kDigits[byte / 16U], kDigits[byte % 16U]};
}

}  // namespace

std::string uriOf(std::string_view path) {
    const bool hasDrive = path.size() > 2 && ascii::isLetter(path[0]) && path[1] == ':';
    std::string uri = hasDrive                   ? "file:///" + std::string(path.substr(0, 2))
                      : path.substr(0, 1) == "/" ? "file://"
                                                 : "";
    const bool isWindows = hasDrive || path.find('/') == std::string_view::npos;
    for (const char c : path.substr(hasDrive ? 2 : 0)) {
        const char sign = isWindows && c == '\\' ? '/' : c;
        uri += standsForItself(sign) ? std::string(1, sign) : percentEncoded(sign);
    }
    return uri;
}

std::optional<std::string> sarifText(const std::vector<CheckedFile>& files) {
    JsonWriter json;
    json.beginObject();
    json.member("$schema", kSchema);
    json.member("version", "2.1.0");
    json.objects("runs", std::vector<int>{0}, [&](int) { writeRun(json, files); });
    json.endObject();
    return json.take();
}

}  // namespace zelutil::lint
