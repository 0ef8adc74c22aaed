#ifndef QT_BOARD_KEYS_KEY_TEXT_H
#define QT_BOARD_KEYS_KEY_TEXT_H

#include <QKeySequence>
#include <QString>
#include <optional>

/// The catalogue of actions keeps a shortcut as a text and compares it byte by byte; Qt has keys. This is how they
/// belong together:
///
///     shortcut  up to four presses, joined by ", "
///     press     modifiers, each followed by "+", and a key
///     modifier  Ctrl, Alt, Shift, Meta (also Control, Super, Win), each at most once, in any order
///     key       one visible character, F1 to F35, or a name: Space, Tab, Backspace, Return, Enter, Esc, Ins, Del,
///     Home,
///               End, PgUp, PgDown, Left, Right, Up, Down, Pause, Print, Menu (also Escape, Insert, Delete, PageUp,
///               PageDown, PgDn)
///
/// The case of letters does not matter to `keyOf`. `textOf` returns one text for each key: the names and the order of
/// modifiers as they stand first above, letters large.
namespace viewer {

/// Returns the key of a text; the empty one for the empty text, nothing for a text that makes no key.
std::optional<QKeySequence> keyOf(const QString& text);

/// Returns the text of a key; empty for the empty key and for one that has no text here.
QString textOf(const QKeySequence& key);

}  // namespace viewer

#endif
