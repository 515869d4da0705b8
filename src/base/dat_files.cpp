#include "base/dat_files.h"

#include <algorithm>
#include <cerrno>
#include <dirent.h>
#include <memory>
#include <string_view>
#include <system_error>

#include "base/file_descriptor.h"

namespace lore {

namespace {

/// A link to a folder is one too.
bool IsFolder(const dirent& entry, const std::filesystem::path& folder) {
    std::error_code ignored;
    if (entry.d_type == DT_LNK || entry.d_type == DT_UNKNOWN)
        return std::filesystem::is_directory(folder / entry.d_name, ignored);
    return entry.d_type == DT_DIR;
}

}  // namespace

FileResult ReadDatFiles(const std::filesystem::path& folder, std::vector<std::string>& names) {
    names.clear();
    const std::unique_ptr<DIR, int (*)(DIR*)> entries(::opendir(folder.c_str()), ::closedir);
    if (!entries)
        return LookedBehindLinks(folder, LastError());
    errno = 0;
    while (const dirent* const entry = ::readdir(entries.get())) {
        const std::string_view name = entry->d_name;
        if (name.ends_with("dat") && !IsFolder(*entry, folder))
            names.emplace_back(name);
        errno = 0;
    }
    const FileResult result{errno};
    if (!result.Ok())
        names.clear();
    std::sort(names.begin(), names.end());
    return result;
}

}  // namespace lore
