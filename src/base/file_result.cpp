#include "base/file_result.h"

#include <cerrno>
#include <system_error>

namespace lore {

bool FileResult::Missing() const {
    return error == ENOENT;
}

std::string FileResult::Reason() const {
    if (error == kNoRegularFile)
        return "Not a regular file";
    if (error == kDeadLink)
        return "The link leads to nothing; bring back what it leads to, or remove it";
    return std::generic_category().message(error);
}

}  // namespace lore
