#include <clocale>

#include "cli/command.h"

int main(int argc, char** argv) {
    std::setlocale(LC_CTYPE, "C.UTF-8");
    return lore::RunCommandLine(argc, argv);
}
