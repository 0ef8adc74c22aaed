#include "window/outcome.h"

namespace viewer {

namespace {

QString nameOf(const zelutil::host::Conflict& conflict) {
    return conflict.setting.empty() ? QStringLiteral("action %1").arg(conflict.action)
                                    : QString::fromStdString(conflict.setting);
}

}  // namespace

void tellOutcome(const zelutil::host::SaveResult& result, MessageLog& messages) {
    for (const zelutil::host::NotRestored& item : result.notRestored) {
        messages.warn(QString::fromStdString(item.text));
    }
    for (const zelutil::host::Conflict& conflict : result.conflicts) {
        messages.warn(
            QStringLiteral("Another program had saved \"%1\" for %2; the file has \"%3\" now.")
                .arg(QString::fromStdString(conflict.theirs), nameOf(conflict), QString::fromStdString(conflict.ours)));
    }
    QString text = QString::fromStdString(result.text);
    if (!result.keptCopy.empty()) {
        text += QStringLiteral(" The file that could not be read is kept as %1.")
                    .arg(QString::fromStdString(result.keptCopy));
    }
    if (result.ok()) {
        messages.tell(text);
    } else {
        messages.warn(text);
    }
}

}  // namespace viewer
