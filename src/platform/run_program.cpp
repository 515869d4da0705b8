#include "platform/run_program.h"

#include <cerrno>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

namespace lore {

ProgramEnd RunProgram(const std::filesystem::path& program, const std::vector<std::string>& arguments) {
    std::string path = program.string();
    std::vector<std::string> texts = arguments;
    std::vector<char*> argv = {path.data()};
    for (std::string& text : texts)
        argv.push_back(text.data());
    argv.push_back(nullptr);
    pid_t child = 0;
    if (const int error = posix_spawn(&child, path.c_str(), nullptr, nullptr, argv.data(), environ))
        return {error, 0};
    int status = 0;
    while (waitpid(child, &status, 0) < 0) {
        if (errno != EINTR)
            return {errno, 0};
    }
    return {0, WIFEXITED(status) ? WEXITSTATUS(status) : 128 + WTERMSIG(status)};
}

}  // namespace lore
