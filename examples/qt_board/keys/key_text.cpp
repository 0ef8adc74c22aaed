#include "keys/key_text.h"

#include <QStringList>

namespace viewer {

namespace {

struct KeyName {
    Qt::Key key;
    const char* name;
};

/// The first name of a key is the one that `textOf` returns.
constexpr KeyName kKeyNames[] = {
    {Qt::Key_Space, "Space"},     {Qt::Key_Tab, "Tab"},           {Qt::Key_Backspace, "Backspace"},
    {Qt::Key_Return, "Return"},   {Qt::Key_Enter, "Enter"},       {Qt::Key_Escape, "Esc"},
    {Qt::Key_Escape, "Escape"},   {Qt::Key_Insert, "Ins"},        {Qt::Key_Insert, "Insert"},
    {Qt::Key_Delete, "Del"},      {Qt::Key_Delete, "Delete"},     {Qt::Key_Home, "Home"},
    {Qt::Key_End, "End"},         {Qt::Key_PageUp, "PgUp"},       {Qt::Key_PageUp, "PageUp"},
    {Qt::Key_PageDown, "PgDown"}, {Qt::Key_PageDown, "PageDown"}, {Qt::Key_PageDown, "PgDn"},
    {Qt::Key_Left, "Left"},       {Qt::Key_Right, "Right"},       {Qt::Key_Up, "Up"},
    {Qt::Key_Down, "Down"},       {Qt::Key_Pause, "Pause"},       {Qt::Key_Print, "Print"},
    {Qt::Key_Menu, "Menu"},
};

struct ModifierName {
    Qt::KeyboardModifier modifier;
    const char* name;
};

constexpr ModifierName kModifierNames[] = {
    {Qt::ControlModifier, "Ctrl"}, {Qt::AltModifier, "Alt"},         {Qt::ShiftModifier, "Shift"},
    {Qt::MetaModifier, "Meta"},    {Qt::ControlModifier, "Control"}, {Qt::MetaModifier, "Super"},
    {Qt::MetaModifier, "Win"},
};

constexpr int kFirstModifiers = 4;
constexpr int kFunctionKeys = 35;
constexpr int kMostPresses = 4;

bool isSame(const QString& text, const char* name) {
    return text.compare(QLatin1String(name), Qt::CaseInsensitive) == 0;
}

std::optional<Qt::Key> functionKey(const QString& name) {
    bool isNumber = false;
    const int number = name.mid(1).toInt(&isNumber);
    const bool isOne = name.startsWith(u'F', Qt::CaseInsensitive) && isNumber && number >= 1 &&
                       number <= kFunctionKeys && name.size() == 1 + QString::number(number).size();
    return isOne ? std::optional(static_cast<Qt::Key>(Qt::Key_F1 + number - 1)) : std::nullopt;
}

bool isVisible(QChar character) { return character.isPrint() && !character.isSpace() && !character.isSurrogate(); }

std::optional<Qt::Key> keyNamed(const QString& name) {
    for (const KeyName& row : kKeyNames) {
        if (isSame(name, row.name)) {
            return row.key;
        }
    }
    if (name.size() == 1 && isVisible(name[0])) {
        return static_cast<Qt::Key>(name[0].toUpper().unicode());
    }
    return functionKey(name);
}

/// Takes a modifier from the front of the text. Returns none where none stands there.
Qt::KeyboardModifier takeModifier(QString& text) {
    for (const ModifierName& row : kModifierNames) {
        const QString front = QLatin1String(row.name) + u'+';
        if (text.startsWith(front, Qt::CaseInsensitive)) {
            text.remove(0, front.size());
            return row.modifier;
        }
    }
    return Qt::NoModifier;
}

std::optional<QKeyCombination> pressOf(QString text) {
    Qt::KeyboardModifiers modifiers;
    while (const Qt::KeyboardModifier modifier = takeModifier(text)) {
        if (modifiers.testFlag(modifier)) {
            return {};
        }
        modifiers |= modifier;
    }
    const std::optional<Qt::Key> key = keyNamed(text);
    return key ? std::optional(QKeyCombination(modifiers, *key)) : std::nullopt;
}

QString nameOf(Qt::Key key) {
    for (const KeyName& row : kKeyNames) {
        if (row.key == key) {
            return QString::fromLatin1(row.name);
        }
    }
    if (key >= Qt::Key_F1 && key < Qt::Key_F1 + kFunctionKeys) {
        return u'F' + QString::number(key - Qt::Key_F1 + 1);
    }
    const auto code = static_cast<char16_t>(key);
    return key < 0x10000 && isVisible(QChar(code)) ? QString(QChar(code)) : QString();
}

QString textOf(QKeyCombination press) {
    QString text = nameOf(press.key());
    if (text.isEmpty()) {
        return {};
    }
    for (int i = kFirstModifiers - 1; i >= 0; --i) {
        if (press.keyboardModifiers().testFlag(kModifierNames[i].modifier)) {
            text.prepend(QLatin1String(kModifierNames[i].name) + u'+');
        }
    }
    return text;
}

}  // namespace

std::optional<QKeySequence> keyOf(const QString& text) {
    if (text.isEmpty()) {
        return QKeySequence();
    }
    const QStringList presses = text.split(QStringLiteral(", "));
    int keys[kMostPresses] = {};
    int count = 0;
    for (const QString& press : presses) {
        const std::optional<QKeyCombination> key = pressOf(press);
        if (!key || count == kMostPresses) {
            return {};
        }
        keys[count++] = key->toCombined();
    }
    return QKeySequence(keys[0], keys[1], keys[2], keys[3]);
}

QString textOf(const QKeySequence& key) {
    QStringList texts;
    for (int i = 0; i < key.count(); ++i) {
        texts << textOf(key[static_cast<uint>(i)]);
        if (texts.last().isEmpty()) {
            return {};
        }
    }
    return texts.join(QStringLiteral(", "));
}

}  // namespace viewer
