#include "window/editors.h"

#include <zelutil/server/server.h>

#include <QApplication>
#include <QWidget>

namespace viewer {

namespace {

ZelU::Marl::Server& server() { return ZelU::Marl::Server::getInstance(); }

}  // namespace

Editors::Editors(QObject* parent) : QObject(parent) {
    subscription_ = zelutil::host::onActiveApplicationChanged([this](int /*appId*/, bool /*editorSwitch*/) {
        if (activeEditor() != nullptr) {
            emit switched(activeContext());
        }
    });
    connect(qApp, &QApplication::focusChanged, this, [this](QWidget* /*before*/, QWidget* now) { followFocus(now); });
}

void Editors::add(QWidget* editor, const QString& context) {
    server().registerApp(editor);
    editors_.push_back({editor, context, server().getApplicationId(editor)});
}

void Editors::switchTo(QWidget* editor) {
    const Editor* const before = activeEditor();
    if (before == nullptr || before->widget != editor) {
        server().notifyEditorSwitch(editor);
    }
}

void Editors::followFocus(QWidget* now) {
    for (const Editor& editor : editors_) {
        if (now != nullptr && (editor.widget == now || editor.widget->isAncestorOf(now))) {
            switchTo(editor.widget);
            return;
        }
    }
}

const Editors::Editor* Editors::activeEditor() const {
    const int id = server().getActiveAppId();
    for (const Editor& editor : editors_) {
        if (editor.id == id) {
            return &editor;
        }
    }
    return nullptr;
}

QWidget* Editors::active() const {
    const Editor* const editor = activeEditor();
    return editor == nullptr ? nullptr : editor->widget;
}

QString Editors::activeContext() const {
    const Editor* const editor = activeEditor();
    return editor == nullptr ? QString() : editor->context;
}

QString contextTitle(const QString& context) {
    if (context == QLatin1String("ucpedit")) {
        return QStringLiteral("Board");
    }
    if (context == QLatin1String("brisk3d")) {
        return QStringLiteral("3D view");
    }
    return context == QLatin1String("table") ? QStringLiteral("Table") : context;
}

}  // namespace viewer
