// The data of the report's page.
#include <algorithm>

#include "command/doctor/candidate_text.h"
#include "command/json_writer.h"
#include "command/report/report_content.h"
#include "command/sheet/sheet_rows.h"
#include "command/text.h"
#include "json/document.h"

namespace zelutil::command::report {
namespace {

using shortcuts::ShortcutRow;

void writePosition(JsonWriter& json, const char* name, const json::Position& position) {
    json.key(name);
    json.beginArray();
    json.integer(static_cast<int>(position.line));
    json.integer(static_cast<int>(position.column));
    json.endArray();
}

void writeFiles(JsonWriter& json, const Content& content) {
    json.key("files");
    json.beginObject();
    json.key("defaults");
    json.beginObject();
    json.member("path", content.defaultsFile);
    json.endObject();
    json.key("user");
    json.beginObject();
    json.member("path", content.userFile);
    json.member("unread", content.isUserFileUnread);
    json.endObject();
    json.endObject();
}

void writeSetting(JsonWriter& json, const Setting& setting) {
    json.member("name", setting.info.fullName);
    json.list("bare", setting.info.bareNames, [&](const std::string& name) { json.text(name); });
    json.member("section", setting.info.section);
    json.member("default", setting.info.defaultValue);
    json.member("value", setting.info.value);
    json.member("user", setting.info.setByUser);
    if (setting.definedAt) {
        writePosition(json, "at", *setting.definedAt);
    }
    if (setting.setAt) {
        writePosition(json, "userAt", *setting.setAt);
    }
    json.list("notes", setting.notes, [&](const std::string& note) { json.text(note); });
}

void writeStray(JsonWriter& json, const Stray& stray) {
    json.member("name", stray.name);
    json.member("value", stray.value);
    if (stray.at) {
        writePosition(json, "at", *stray.at);
    }
    json.member("why", stray.why);
}

void writeAction(JsonWriter& json, const ShortcutRow& row, const std::vector<ShortcutRow>& rows) {
    json.member("id", row.action.id);
    json.member("context", row.action.item.context);
    json.member("name", sheet::nameOf(row, rows));
    json.member("command", row.action.item.command);
    json.member("shortcut", row.action.shortcut);
    json.member("shortcutWithoutUser", row.shortcutWithoutUser);
    json.member("changedByUser", row.changedByUser);
    json.member("inMenu", row.action.inMenu);
    json.member("menuChangedByUser", row.menuChangedByUser);
    json.member("why", row.why);
}

void writeConflict(JsonWriter& json, const Conflict& conflict) {
    json.member("shortcut", conflict.shortcut);
    json.member("context", conflict.context);
    json.member("action", conflict.action);
    json.member("effect", conflict.effect);
}

void writeStep(JsonWriter& json, const SearchStep& step) {
    json.member("title", step.title);
    json.member("result", step.result.empty() ? "" : nativeOrAsItStands(step.result));
    json.objects("candidates", step.candidates, [&](const text::Candidate& candidate) {
        json.member("taken", candidate.verdict == text::Candidate::Verdict::Taken);
        json.member("text", lineOf(candidate));
    });
    json.member("file", step.file ? lineOf(*step.file) : "");
}

void writeFinding(JsonWriter& json, const Finding& finding) {
    json.member("severity", nameOf(finding.severity));
    json.member("text", finding.text);
    json.member("advice", finding.advice);
}

void writeDiagnosis(JsonWriter& json, const Diagnosis& diagnosis) {
    json.objects("steps", diagnosis.steps, [&](const SearchStep& step) { writeStep(json, step); });
    json.objects("findings", diagnosis.symptoms, [&](const Symptom& symptom) { writeFinding(json, symptom.finding); });
}

}  // namespace

std::optional<std::string> jsonOf(const Content& content) {
    JsonWriter json;
    json.beginObject();
    writeFiles(json, content);
    json.objects("settings", content.settings, [&](const Setting& setting) { writeSetting(json, setting); });
    json.objects("strays", content.strays, [&](const Stray& stray) { writeStray(json, stray); });
    json.list("sections", content.sections, [&](const std::string& path) { json.text(path); });
    json.objects("actions", content.actions, [&](const ShortcutRow& row) { writeAction(json, row, content.actions); });
    json.objects("conflicts", content.conflicts, [&](const Conflict& conflict) { writeConflict(json, conflict); });
    writeDiagnosis(json, content.diagnosis);
    json.endObject();
    const std::optional<std::string> pretty = json.take();
    return pretty ? json::compactText(json::Document(*pretty).root()) : std::nullopt;
}

}  // namespace zelutil::command::report
