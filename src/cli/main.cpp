#include <clocale>

#include "cli/command.h"
#include "platform/standard_streams.h"

int main(int argc, char** argv) {
    lore::PrepareStandardStreams();
    std::setlocale(LC_CTYPE, "C.UTF-8");
    return lore::RunCommandLine(argc, argv);
}
