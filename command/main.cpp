#include "command/command_line.h"
#include "command/system/console.h"

int main(int count, char** values) {
    zelutil::command::keepOutputForResults();
    return static_cast<int>(zelutil::command::run(zelutil::command::argumentsOfProgram(count, values)));
}
