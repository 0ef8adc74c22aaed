// Takes and gives back its turn for the file that its argument names, as its standard input tells it.
#include <iostream>
#include <optional>
#include <string>

#include "platform/file_turn.h"

int main(int, char** arguments) {
    std::optional<zelutil::platform::FileTurn> turn;
    std::string line;
    while (std::getline(std::cin, line)) {
        turn.reset();
        if (line == "take") {
            turn.emplace(arguments[1]);
        }
        std::cout << (turn && turn->isTaken() ? "has it" : "has it not") << std::endl;
    }
}
