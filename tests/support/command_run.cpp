// Runs commands of lorebinder-cli one after the other in one process, for tests that look at thousands of data folders:
// a line of standard input holds the arguments of one, between tabs; the answer is "STATUS BYTES", a line end, and what
// the command has printed.

#include <clocale>
#include <cstdio>
#include <iostream>
#include <string>
#include <sys/mman.h>
#include <unistd.h>
#include <vector>

#include "cli/command.h"

namespace {

std::vector<char*> Arguments(std::string& line) {
    std::vector<char*> arguments{line.data()};
    for (char& sign : line)
        if (sign == '\t') {
            sign = '\0';
            arguments.push_back(&sign + 1);
        }
    return arguments;
}

std::string Taken(int file) {
    std::fflush(stdout);
    std::string bytes(static_cast<size_t>(::lseek(file, 0, SEEK_CUR)), '\0');
    const bool whole = ::pread(file, bytes.data(), bytes.size(), 0) == static_cast<ssize_t>(bytes.size()) &&
                       ::ftruncate(file, 0) == 0 && ::lseek(file, 0, SEEK_SET) == 0;
    return whole ? bytes : std::string();
}

}  // namespace

int main() {
    std::setlocale(LC_CTYPE, "C.UTF-8");
    const int answers = ::dup(STDOUT_FILENO), printed = ::memfd_create("printed", MFD_CLOEXEC);
    if (answers < 0 || printed < 0 || ::dup2(printed, STDOUT_FILENO) < 0)
        return 3;
    for (std::string line; std::getline(std::cin, line);) {
        line.insert(0, "lorebinder-cli\t");
        std::vector<char*> arguments = Arguments(line);
        const int status = lore::RunCommandLine(static_cast<int>(arguments.size()), arguments.data());
        const std::string bytes = Taken(printed);
        const std::string answer = std::to_string(status) + " " + std::to_string(bytes.size()) + "\n" + bytes;
        for (size_t at = 0; at < answer.size();) {
            const ssize_t count = ::write(answers, answer.data() + at, answer.size() - at);
            if (count <= 0)
                return 3;
            at += static_cast<size_t>(count);
        }
    }
    return 0;
}
