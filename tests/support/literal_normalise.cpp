#include "support/literal_normalise.h"

namespace zelutil::test {
namespace {

struct PassResult {
    bool invalid;
    bool blank;
};

PassResult passOverCharacters(std::string& text, std::size_t start) {
    bool blank = false;
    for (std::size_t position = start; position < text.size(); position = position + 1) {
        const char c = text[position];
        if (c == '\n' || c == '\r' || c == '*' || c == '<' || c == '>' || c == '?' || c == '|') {
            text = "";
            return {true, false};
        }
        if (c == ' ') {
            blank = true;
        }
        if (c == '"') {
            text.erase(position, 1);
        }
        if (c == '/' || c == '\\') {
            const bool followsBackslash = position > 0 && text[position - 1] == '\\';
            if (followsBackslash && position != 1) {
                text.erase(position, 1);
            } else {
                text[position] = '\\';
            }
        }
    }
    return {false, blank};
}

void removeTrailingBackslashes(std::string& text) {
    while (text.size() > 0 && text[text.size() - 1] == '\\') {
        text.erase(text.size() - 1, 1);
    }
}

bool isLetter(char c) {
    const std::string letters = "abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ";
    return letters.find(c) != std::string::npos;
}

bool isAbsolute(const std::string& text) {
    const bool drive = text.size() >= 2 && isLetter(text[0]) && text[1] == ':';
    const bool network = text.size() >= 2 && text[0] == '\\' && text[1] == '\\';
    return drive || network;
}

void makeAbsolute(LiteralPath& path, std::string directory) {
    const PassResult pass = passOverCharacters(directory, 0);
    removeTrailingBackslashes(directory);
    if (directory == "") {
        path = {"", false, path.absolute};
        return;
    }
    path.hasSpace = path.hasSpace || pass.blank;
    path.text = directory + "\\" + path.text;
    path.absolute = true;
}

void walkOverComponents(LiteralPath& path, std::size_t start) {
    std::string& text = path.text;
    std::size_t position = start;
    while (position < text.size()) {
        if (text[position] == '\\') {
            position = position + 1;
        }
        std::size_t end = position;
        while (end < text.size() && text[end] != '\\') {
            end = end + 1;
        }
        const std::string component = text.substr(position, end - position);
        const bool beginsHere = position == 0 || text[position - 1] == '\\';
        if (beginsHere && component == ".") {
            text.erase(position, 1);
            if (position > 0) {
                position = position - 1;
                text.erase(position, 1);
            }
        } else if (beginsHere && component == "..") {
            if (position == 0 || position == 1) {
                path = {"", false, path.absolute};
                return;
            }
            const std::size_t before = text.rfind('\\', position - 2);
            if (before == std::string::npos) {
                path = {"", false, path.absolute};
                return;
            }
            text.erase(before, end - before);
            position = before;
        } else {
            position = end;
        }
    }
}

}  // namespace

void literalNormalise(LiteralPath& path, std::size_t start, const std::string& currentDirectory) {
    const PassResult pass = passOverCharacters(path.text, start);
    if (pass.invalid) {
        path.hasSpace = false;
    } else if (start == 0) {
        path.hasSpace = pass.blank;
    } else {
        path.hasSpace = path.hasSpace || pass.blank;
    }

    removeTrailingBackslashes(path.text);

    if (path.text == "") {
        return;
    }

    if (!isAbsolute(path.text) && !path.absolute) {
        makeAbsolute(path, currentDirectory);
    }

    if (path.text.find("\\.") == std::string::npos) {
        return;
    }
    walkOverComponents(path, start);
}

}  // namespace zelutil::test
