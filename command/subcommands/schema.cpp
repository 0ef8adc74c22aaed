// zelutil schema: the JSON Schemas of the files that the library reads, for editors and validators.
#include <algorithm>
#include <iterator>
#include <memory>
#include <string>

#include "command/arguments.h"
#include "command/schema/schema_texts.h"
#include "command/subcommands/table.h"

namespace zelutil::command {
namespace {

void printSchema(const std::string& kind, Output& output) {
    const auto* const schema = std::find_if(std::begin(kSchemaTexts), std::end(kSchemaTexts),
                                            [&](const SchemaText& one) { return one.kind == kind; });
    if (schema == std::end(kSchemaTexts)) {
        throw UsageError("\"" + kind + "\" is none of defaults, user, actions and facets.");
    }
    output.printInstead(schema->text);
}

Work declareSchema(CLI::App& arguments) {
    const auto kind = std::make_shared<std::string>();
    addText(arguments, "KIND", *kind, "The kind of file: defaults, user, actions or facets")->required();
    return [kind](Output& output) { printSchema(*kind, output); };
}

}  // namespace

const Subcommand kSchema{"schema", "Print the JSON Schema of a kind of file",
                         "$ zelutil schema user > user.schema.json", FindingsAre::TheResult, declareSchema};

}  // namespace zelutil::command
