#include "keys/key_capture.h"

#include <QKeyEvent>

#include "keys/key_text.h"

namespace viewer {

namespace {

bool isModifier(int key) {
    return key == Qt::Key_Control || key == Qt::Key_Shift || key == Qt::Key_Alt || key == Qt::Key_Meta ||
           key == Qt::Key_AltGr || key == Qt::Key_CapsLock || key == Qt::Key_NumLock;
}

/// A sign that needs Shift on this keyboard is the sign alone: Shift+1 is "!" on one keyboard and not on another.
bool isShiftPartOfSign(const QKeyEvent& event) {
    const QString text = event.text();
    return text.size() == 1 && text[0].isPrint() && !text[0].isSpace() && !text[0].isLetter();
}

QKeySequence keyOfPress(const QKeyEvent& event) {
    Qt::KeyboardModifiers modifiers = event.modifiers() & ~Qt::KeypadModifier & ~Qt::GroupSwitchModifier;
    if (isShiftPartOfSign(event)) {
        modifiers &= ~Qt::ShiftModifier;
    }
    return QKeySequence(QKeyCombination(modifiers, static_cast<Qt::Key>(event.key())));
}

}  // namespace

KeyCapture::KeyCapture(QWidget* parent) : QLineEdit(parent) {
    setObjectName(QStringLiteral("keyCapture"));
    setReadOnly(true);
    setPlaceholderText(tr("Click here and press the key"));
    setContextMenuPolicy(Qt::NoContextMenu);
}

bool KeyCapture::event(QEvent* event) {
    // A key that is a shortcut elsewhere comes here as a key, too.
    if (event->type() == QEvent::ShortcutOverride) {
        event->accept();
        return true;
    }
    return QLineEdit::event(event);
}

void KeyCapture::keyPressEvent(QKeyEvent* event) {
    event->accept();
    if (isModifier(event->key()) || event->key() == 0 || event->key() == Qt::Key_unknown) {
        return;
    }
    const QString text = textOf(keyOfPress(*event));
    setText(text);
    emit captured(text);
}

}  // namespace viewer
