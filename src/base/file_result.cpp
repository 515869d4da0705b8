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
    if (error == kUnknownEncoding)
        return "The text is in an encoding that can't be told; save it as UTF-8 and try again";
    return std::generic_category().message(error);
}

}  // namespace lore
