#include "base/file_result.h"

#include <cerrno>
#include <system_error>

namespace lore {

bool FileResult::Missing() const {
    return error == ENOENT || error == ENOTDIR;
}

std::string FileResult::Reason() const {
    if (error == kNoRegularFile)
        return "Not a regular file";
    return std::generic_category().message(error);
}

}  // namespace lore
