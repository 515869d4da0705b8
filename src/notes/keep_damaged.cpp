#include "notes/keep_damaged.h"

#include "base/file_copy.h"

namespace lore {

FileResult KeepDamaged(const std::string& what, const std::filesystem::path& file, const std::string& wrong,
                       FaultNotice& faults) {
    std::filesystem::path kept;
    const FileResult result = KeepCopy(file, kept);
    if (result.Ok())
        faults.Tell(
            {what + " is damaged; what it held is kept in " + kept.filename().string(), file.string(), wrong, true});
    return result.Missing() ? FileResult{} : result;
}

}  // namespace lore
