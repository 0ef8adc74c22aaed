#include "command/lint/sarif.h"

#include <zelutil/version.h>

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

void writeText(JsonWriter& json, std::string_view key, const std::string& text) {
    object(json, key, [&] { json.member("text", messageText(text)); });
}

/// Writes a rule with all descriptions that code hosts ask for, some of which refuse a file without them.
void writeRule(JsonWriter& json, const RuleInfo& rule) {
    const std::string title = std::string(rule.title) + '.';
    json.member("id", rule.number);
    writeText(json, "shortDescription", title);
    writeText(json, "fullDescription", title);
    writeText(json, "help",
              std::string("The page docs/lint.md has a bad and a good example below ") + rule.number + '.');
    object(json, "defaultConfiguration", [&] { json.member("level", command::nameOf(rule.severity)); });
}

void writeTool(JsonWriter& json) {
    object(json, "tool", [&] {
        object(json, "driver", [&] {
            json.member("name", "zelutil");
            json.member("version", ZELUTIL_VERSION);
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
    const std::string text = finding.hint.empty() ? finding.message : finding.message + ' ' + finding.hint;
    writeText(json, "message", text);
    json.objects("locations", std::vector<int>{0}, [&](int) { writeLocation(json, file, finding); });
    json.endObject();
}

/// Writes whether all files were checked. Without this, a run over files that could not be read looks clean.
void writeInvocation(JsonWriter& json, const std::string& failure) {
    json.beginObject();
    json.member("executionSuccessful", failure.empty());
    if (!failure.empty()) {
        json.objects("toolExecutionNotifications", std::vector<int>{0}, [&](int) {
            json.member("level", "error");
            writeText(json, "message", failure);
        });
    }
    json.endObject();
}

void writeRun(JsonWriter& json, const std::vector<CheckedFile>& files, const std::string& failure) {
    writeTool(json);
    json.key("invocations");
    json.beginArray();
    writeInvocation(json, failure);
    json.endArray();
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

std::string encodedPath(std::string_view path) {
    std::string encoded;
    for (const char c : path) {
        encoded += standsForItself(c) ? std::string(1, c) : percentEncoded(c);
    }
    return encoded;
}

bool takeBeginning(std::string_view& text, std::string_view beginning) {
    const bool begins = text.substr(0, beginning.size()) == beginning;
    text.remove_prefix(begins ? beginning.size() : 0);
    return begins;
}

}  // namespace

std::string messageText(std::string_view text) {
    std::string escaped;
    for (const char c : text) {
        const bool isBrace = c == '{' || c == '}';
        const bool isOfLink = c == '[' || c == ']' || c == '\\';
        escaped += isBrace ? std::string(2, c) : (isOfLink ? "\\" : "") + std::string(1, c);
    }
    return escaped;
}

std::string uriOf(std::string_view path, PathForm form) {
    if (form == PathForm::Posix) {
        return (path.substr(0, 1) == "/" ? "file://" : "") + encodedPath(path);
    }
    std::string slashes(path);
    std::replace(slashes.begin(), slashes.end(), '\\', '/');
    std::string_view rest = slashes;
    // Paths that the system is to take as they stand begin so; one of a server goes on with "UNC".
    const bool isVerbatim = takeBeginning(rest, "//?/");
    const bool isOfServer = isVerbatim ? takeBeginning(rest, "UNC/") : takeBeginning(rest, "//");
    if (isOfServer) {
        return "file://" + encodedPath(rest);
    }
    const bool hasDrive = rest.size() > 2 && ascii::isLetter(rest[0]) && rest[1] == ':' && rest[2] == '/';
    return hasDrive ? "file:///" + std::string(rest.substr(0, 2)) + encodedPath(rest.substr(2)) : encodedPath(rest);
}

std::optional<std::string> sarifText(const std::vector<CheckedFile>& files, const std::string& failure) {
    JsonWriter json;
    json.beginObject();
    json.member("$schema", kSchema);
    json.member("version", "2.1.0");
    json.objects("runs", std::vector<int>{0}, [&](int) { writeRun(json, files, failure); });
    json.endObject();
    return json.take();
}

}  // namespace zelutil::lint
