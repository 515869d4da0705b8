#include "app/sample_files.h"

#include <algorithm>

namespace lore {

std::string_view SampleFileBytes(std::string_view name) {
    const auto files = SampleFiles();
    const auto found = std::ranges::find(files, name, &SampleFile::name);
    return found == files.end() ? std::string_view() : found->bytes;
}

}  // namespace lore
