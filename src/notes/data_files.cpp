#include "notes/data_files.h"

#include <algorithm>
#include <array>
#include <string_view>
#include <system_error>

#include "base/text.h"

namespace lore {

namespace {

namespace fs = std::filesystem;

constexpr std::string_view kEndings[] = {"dat", "nbf", "bmp", "kept"};

/// A path without links in its folders, whether or not a file is there.
fs::path PlaceOf(const fs::path& path) {
    std::error_code error;
    const fs::path whole = fs::absolute(path, error);
    return fs::weakly_canonical(whole.parent_path(), error) / whole.filename();
}

bool IsBelow(const fs::path& file, const fs::path& folder) {
    return std::mismatch(folder.begin(), folder.end(), file.begin(), file.end()).first == folder.end();
}

bool IsAt(const DataPaths& data, const fs::path& place) {
    for (const fs::path& folder : {data.Databases(), data.Lexicons(), data.ExportTemp(), data.ImportTemp()}) {
        if (IsBelow(place, PlaceOf(folder)))
            return true;
    }
    if (place.parent_path() == PlaceOf(data.DataFiles()))
        return std::ranges::count(kEndings, ToLower(FileExtension(place.string()))) > 0;
    return place == PlaceOf(data.root / kSettingsName) || place == PlaceOf(data.root / kLockName);
}

}  // namespace

bool IsDataFile(const DataPaths& data, const fs::path& file) {
    std::error_code error;
    const std::array places = {PlaceOf(file), fs::weakly_canonical(fs::absolute(file, error), error)};
    return std::any_of(places.begin(), places.end(), [&](const fs::path& place) { return IsAt(data, place); });
}

}  // namespace lore
