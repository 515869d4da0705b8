#pragma once

#include <filesystem>
#include <string>
#include <vector>

namespace lore {

/// How a program that was waited for ended.
struct ProgramEnd {
    int error = 0;   ///< the system's number (errno) if it could not be started or waited for, otherwise 0
    int status = 0;  ///< its exit status, 128 and more if a signal ended it
    bool Ok() const { return error == 0 && status == 0; }
};

/// Runs a program to its end. It shares the standard streams of this one.
ProgramEnd RunProgram(const std::filesystem::path& program, const std::vector<std::string>& arguments);

}  // namespace lore
