// Shortcuts looked up and checked for conflicts, against the tables a host would keep itself.
#include <zelutil/actions/action_manager.h>

#include <QHash>
#include <QKeySequence>
#include <QPair>
#include <QString>
#include <boost/unordered/unordered_flat_map.hpp>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "action_corpus.h"
#include "settings_corpus.h"
#include "support/comparison.h"

namespace {

using zelutil::bench::Comparison;
using zelutil::bench::CorpusAction;

constexpr std::size_t kContexts = 10;
constexpr std::size_t kActionsPerContext = 500;

using NamePair = std::pair<std::string_view, std::string_view>;

struct Tables {
    boost::unordered_flat_map<NamePair, std::pair<std::string, int>> flat;
    std::unordered_map<std::string, std::unordered_map<std::string, std::pair<std::string, int>>> standard;
    QHash<QString, QHash<QKeySequence, QPair<QString, int>>> qt;
};

Tables makeTables(const std::vector<CorpusAction>& actions) {
    Tables tables;
    for (const CorpusAction& action : actions) {
        tables.flat[NamePair(action.context, action.shortcut)] = {action.command, action.id};
        tables.standard[action.context][action.shortcut] = {action.command, action.id};
        tables.qt[QString::fromStdString(action.context)][QKeySequence(QString::fromStdString(action.shortcut))] = {
            QString::fromStdString(action.command), action.id};
    }
    return tables;
}

/// A shortcut in a context, in the form each side takes, and another action of that context, which would like to have
/// it.
struct Question {
    std::string context;
    std::string shortcut;
    QString qtContext;
    QKeySequence keys;
    int asker;
    std::size_t action;
};

std::vector<Question> makeQuestions(const std::vector<CorpusAction>& actions) {
    std::vector<Question> questions;
    for (const std::size_t i : zelutil::bench::randomOrder(actions.size())) {
        const CorpusAction& action = actions[i];
        const bool lastOfContext = (i + 1) % kActionsPerContext == 0;
        questions.push_back({action.context, action.shortcut, QString::fromStdString(action.context),
                             QKeySequence(QString::fromStdString(action.shortcut)),
                             lastOfContext ? action.id - 1 : action.id + 1, i});
    }
    return questions;
}

template <typename Answer>
auto asking(const std::vector<Question>& questions, Answer answer) {
    return [&questions, answer] {
        std::uint64_t digest = 0;
        for (const Question& question : questions) {
            digest = digest * 31 + static_cast<std::uint64_t>(answer(question));
        }
        return digest;
    };
}

}  // namespace

void zelutil::bench::addComparisons() {
    static const std::vector<CorpusAction> actions = makeActions(kContexts, kActionsPerContext);
    static const Tables tables = makeTables(actions);
    static const std::vector<Question> questions = makeQuestions(actions);
    static UCPActionManager& manager = UCPActionManager::instance();
    manager.load(actionText(actions), "");

    // Every side answers a copy of the command, as getCommand does.
    Comparison("getCommand, 10 x 500 actions", questions.size())
        .zelutil(asking(questions,
                        [](const Question& q) { return manager.getCommand(q.context, q.shortcut, false).size(); }))
        .peer("nested unordered_map",
              asking(questions,
                     [](const Question& q) {
                         const std::string command =
                             tables.standard.find(q.context)->second.find(q.shortcut)->second.first;
                         return command.size();
                     }))
        .peer("flat map of pairs", asking(questions,
                                          [](const Question& q) {
                                              const std::string command =
                                                  tables.flat.find(NamePair(q.context, q.shortcut))->second.first;
                                              return command.size();
                                          }))
        .peer("limit: copy of the command", asking(questions,
                                                   [](const Question& q) {
                                                       const std::string command = actions[q.action].command;
                                                       benchmark::DoNotOptimize(command.data());
                                                       return command.size();
                                                   }))
        .peer("QHash, QKeySequence of the text", asking(questions,
                                                        [](const Question& q) {
                                                            const QKeySequence keys(q.shortcut.c_str());
                                                            const QString command =
                                                                tables.qt.find(q.qtContext)->find(keys)->first;
                                                            return static_cast<std::size_t>(command.size());
                                                        }))
        .peer("QHash, QKeySequence made before", asking(questions, [](const Question& q) {
                  const QString command = tables.qt.find(q.qtContext)->find(q.keys)->first;
                  return static_cast<std::size_t>(command.size());
              }));

    // The peers answer the holder and know nothing of links, parents and children.
    Comparison("isShortcutTaken, 10 x 500 actions", questions.size())
        .zelutil(asking(questions, [](const Question& q) { return manager.isShortcutTaken(q.asker, q.shortcut); }))
        .peer("nested unordered_map",
              asking(questions,
                     [](const Question& q) {
                         return tables.standard.find(q.context)->second.find(q.shortcut)->second.second;
                     }))
        .peer("flat map of pairs", asking(questions,
                                          [](const Question& q) {
                                              return tables.flat.find(NamePair(q.context, q.shortcut))->second.second;
                                          }))
        .peer("QHash, QKeySequence of the text",
              asking(questions,
                     [](const Question& q) {
                         return tables.qt.find(q.qtContext)->find(QKeySequence(q.shortcut.c_str()))->second;
                     }))
        .peer("QHash, QKeySequence made before",
              asking(questions, [](const Question& q) { return tables.qt.find(q.qtContext)->find(q.keys)->second; }));
}
