#include "command/sheet/keyboard.h"

#include <algorithm>

namespace zelutil::command::sheet {
namespace {

/// A row of keys that stand side by side.
struct Row {
    double x;
    double y;
    std::vector<Key> keys;
};

// The coordinates of a key are filled in by its row.
const std::vector<Row>& rows() {
    static const std::vector<Row> all{
        {0, 0, {{"escape", "Esc", ""}}},
        {2, 0, {{"f1", "F1", ""}, {"f2", "F2", ""}, {"f3", "F3", ""}, {"f4", "F4", ""}}},
        {6.5, 0, {{"f5", "F5", ""}, {"f6", "F6", ""}, {"f7", "F7", ""}, {"f8", "F8", ""}}},
        {11, 0, {{"f9", "F9", ""}, {"f10", "F10", ""}, {"f11", "F11", ""}, {"f12", "F12", ""}}},
        {15.5, 0, {{"print", "Print", ""}, {"scrolllock", "Scroll", ""}, {"pause", "Pause", ""}}},
        {0,
         1.3,
         {{"`", "`", "~"},
          {"1", "1", "!"},
          {"2", "2", "@"},
          {"3", "3", "#"},
          {"4", "4", "$"},
          {"5", "5", "%"},
          {"6", "6", "^"},
          {"7", "7", "&"},
          {"8", "8", "*"},
          {"9", "9", "("},
          {"0", "0", ")"},
          {"-", "-", "_"},
          {"=", "=", "+"},
          {"backspace", "Backspace", "", 0, 0, 2}}},
        {0,
         2.3,
         {{"tab", "Tab", "", 0, 0, 1.5},
          {"q", "Q", ""},
          {"w", "W", ""},
          {"e", "E", ""},
          {"r", "R", ""},
          {"t", "T", ""},
          {"y", "Y", ""},
          {"u", "U", ""},
          {"i", "I", ""},
          {"o", "O", ""},
          {"p", "P", ""},
          {"[", "[", "{"},
          {"]", "]", "}"},
          {"\\", "\\", "|", 0, 0, 1.5}}},
        {0,
         3.3,
         {{"capslock", "Caps Lock", "", 0, 0, 1.75},
          {"a", "A", ""},
          {"s", "S", ""},
          {"d", "D", ""},
          {"f", "F", ""},
          {"g", "G", ""},
          {"h", "H", ""},
          {"j", "J", ""},
          {"k", "K", ""},
          {"l", "L", ""},
          {";", ";", ":"},
          {"'", "'", "\""},
          {"enter", "Enter", "", 0, 0, 2.25}}},
        {0,
         4.3,
         {{"shift", "Shift", "", 0, 0, 2.25},
          {"z", "Z", ""},
          {"x", "X", ""},
          {"c", "C", ""},
          {"v", "V", ""},
          {"b", "B", ""},
          {"n", "N", ""},
          {"m", "M", ""},
          {",", ",", "<"},
          {".", ".", ">"},
          {"/", "/", "?"},
          {"shift", "Shift", "", 0, 0, 2.75}}},
        {0,
         5.3,
         {{"ctrl", "Ctrl", "", 0, 0, 1.25},
          {"meta", "Meta", "", 0, 0, 1.25},
          {"alt", "Alt", "", 0, 0, 1.25},
          {"space", "Space", "", 0, 0, 6.25},
          {"altgr", "AltGr", "", 0, 0, 1.25},
          {"meta", "Meta", "", 0, 0, 1.25},
          {"menu", "Menu", "", 0, 0, 1.25},
          {"ctrl", "Ctrl", "", 0, 0, 1.25}}},
        {15.5, 1.3, {{"insert", "Ins", ""}, {"home", "Home", ""}, {"pageup", "PgUp", ""}}},
        {15.5, 2.3, {{"delete", "Del", ""}, {"end", "End", ""}, {"pagedown", "PgDn", ""}}},
        {16.5, 4.3, {{"up", "Up", ""}}},
        {15.5, 5.3, {{"left", "Left", ""}, {"down", "Down", ""}, {"right", "Right", ""}}},
    };
    return all;
}

std::vector<Key> placed() {
    std::vector<Key> keys;
    for (const Row& row : rows()) {
        double x = row.x;
        for (Key key : row.keys) {
            key.x = x;
            key.y = row.y;
            x += key.width;
            keys.push_back(key);
        }
    }
    return keys;
}

}  // namespace

const std::vector<Key>& keyboard() {
    static const std::vector<Key> keys = placed();
    return keys;
}

int keyNumber(std::string_view name) {
    const std::vector<Key>& keys = keyboard();
    const auto key = std::find_if(keys.begin(), keys.end(), [=](const Key& candidate) {
        return !name.empty() && (candidate.name == name || candidate.shifted == name);
    });
    return key == keys.end() ? -1 : static_cast<int>(key - keys.begin());
}

}  // namespace zelutil::command::sheet
