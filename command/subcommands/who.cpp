// zelutil who: the action that a shortcut runs.
#include <algorithm>
#include <memory>

#include "command/arguments.h"
#include "command/shortcuts/columns.h"
#include "command/shortcuts/key_answer.h"
#include "command/shortcuts/known_shortcuts.h"
#include "command/subcommands/table.h"

namespace zelutil::command {
namespace {

using shortcuts::Cell;
using shortcuts::KeyAnswer;
using shortcuts::KnownShortcuts;

struct KeyQuestion {
    std::vector<std::string> keys;
    std::string context;
};

std::vector<Cell> cellsOfAnswer(const KeyAnswer& answer, const KnownShortcuts& known) {
    const int id = answer.actionWithFallback;
    return {{answer.shortcut, Role::Value},
            {id == 0 ? "-" : std::to_string(id), Role::Faint},
            {answer.commandWithFallback, Role::Name},
            {whyOf(answer, known.rows()), Role::Faint}};
}

/// A key that runs nothing may be meant in the spelling of another one.
void tellSpellings(const KeyAnswer& answer, Output& output) {
    if (answer.actionWithFallback == 0 && !answer.otherSpellings.empty()) {
        output.add({Severity::Note, shortcuts::differenceOf(answer.shortcut, answer.otherSpellings.front()),
                    shortcuts::kHowCompared, std::nullopt});
    }
}

void answerKeys(const KeyQuestion& question, Output& output) {
    if (std::find(question.keys.begin(), question.keys.end(), "") != question.keys.end()) {
        throw UsageError("\"\" is no shortcut.");
    }
    const KnownShortcuts known(output);
    if (!known.areThere() || !known.hasContext(question.context, output)) {
        return;
    }
    std::vector<KeyAnswer> answers;
    std::vector<std::vector<Cell>> lines;
    for (const std::string& key : question.keys) {
        answers.push_back(shortcuts::answerOf(key, question.context, known.rows()));
        lines.push_back(cellsOfAnswer(answers.back(), known));
        tellSpellings(answers.back(), output);
    }
    shortcuts::showColumns({"SHORTCUT", "ID", "COMMAND", "WHY"}, lines, output);
    output.members([&](JsonWriter& json) {
        json.objects("answers", answers, [&](const KeyAnswer& answer) {
            writeAnswer(json, answer);
            json.member("why", whyOf(answer, known.rows()));
        });
    });
}

Work declareWho(CLI::App& arguments) {
    const auto question = std::make_shared<KeyQuestion>();
    addTexts(arguments, "KEY", question->keys, "Shortcuts, such as Ctrl+S")->required();
    addName(arguments, "--context", question->context, "The context in which they are pressed")
        ->required()
        ->type_name("CONTEXT");
    return [question](Output& output) { answerKeys(*question, output); };
}

}  // namespace

const Subcommand kWho{"who", "Say what a shortcut runs in a context, and why",
                      "$ zelutil who Ctrl+S --context constraints\n"
                      "SHORTCUT  ID  COMMAND      WHY\n"
                      "Ctrl+S    3   design save  no action of constraints holds it; ucpedit is the fallback; shipped",
                      FindingsAre::BesideResult, declareWho};

}  // namespace zelutil::command
