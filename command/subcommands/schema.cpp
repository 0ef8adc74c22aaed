// zelutil schema: the JSON Schemas of the files that the library reads, for editors and validators.
#include <algorithm>
#include <iterator>
#include <memory>
#include <string>

#include "command/arguments.h"
#include "command/schema/schema_texts.h"
#include "command/subcommands/table.h"
#include "json/document.h"

namespace zelutil::command {
namespace {

void printSchema(const std::string& kind, Output& output) {
    const auto* const schema = std::find_if(std::begin(kSchemaTexts), std::end(kSchemaTexts),
                                            [&](const SchemaText& one) { return one.kind == kind; });
    if (schema == std::end(kSchemaTexts)) {
        throw UsageError("\"" + kind + "\" is none of defaults, user, actions and facets.");
    }
    output.line("{}", std::string_view(schema->text).substr(0, std::string_view(schema->text).size() - 1));
    output.members([&](JsonWriter& json) {
        const json::Document document(schema->text);
        json.member("kind", kind);
        json.key("schema");
        json.copy(document.root());
    });
}

std::vector<std::string> kindsOfSchemas(std::string_view option) {
    std::vector<std::string> kinds;
    for (const SchemaText& one : kSchemaTexts) {
        kinds.emplace_back(one.kind);
    }
    return option.empty() ? kinds : std::vector<std::string>();
}

Work declareSchema(CLI::App& arguments) {
    const auto kind = std::make_shared<std::string>();
    addText(arguments, "KIND", *kind, "The kind of file: defaults, user, actions or facets")->required();
    return [kind](Output& output) { printSchema(*kind, output); };
}

}  // namespace

const Subcommand kSchema{"schema",
                         "Print the JSON Schema of a kind of file",
                         "$ zelutil schema user > user.schema.json",
                         FindingsAre::TheResult,
                         declareSchema,
                         Completes::Files,
                         false,
                         kindsOfSchemas};

}  // namespace zelutil::command
