#pragma once

#include <cstdint>
#include <functional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace lore {

/// A file in an archive that may be unpacked.
struct ZipItem {
    uint64_t index = 0;   ///< its number in the archive's directory, from 0
    std::string rawName;  ///< as the directory holds it
    std::string name;     ///< its last component, UTF-8; never empty, "." or ".."
    uint64_t size = 0;    ///< unpacked, as announced
    uint64_t packed = 0;
    uint32_t crc = 0;
};

/// What the directory of an archive promises, after everything in it was doubted.
struct ZipDirectory {
    std::string refusal;               ///< why the archive as a whole is refused; empty if it isn't
    uint64_t entries = 0;              ///< all entries, folders too
    std::vector<ZipItem> items;        ///< the files, in directory order; no two names are the same
    std::vector<std::string> leftOut;  ///< one line for each entry that isn't taken, with the reason
};

/// Fills the room from a position of the archive; false if it doesn't hold so many bytes.
using ZipRead = std::function<bool(uint64_t position, std::span<char> room)>;

/// Reads and judges the directory of an archive of `size` bytes without unpacking anything. Up to 65,535 bytes behind
/// its end, the comment counted in, are no part of it. Refused are: a directory that is cut off, or claims more entries
/// than it has room for; parts of several volumes; entries that overlap, reach beyond the archive, or are named
/// differently where they stand; links and devices; encrypted entries; packing other than deflate; sizes above a
/// thousand times what is packed. An entry without a usable name is left out, and so are the later ones of one name.
ZipDirectory ReadZipDirectory(uint64_t size, const ZipRead& read);

/// The name of a file under the name of an entry, UTF-8: its last component by either separator, without the letter of
/// a drive. Empty if it can't be the name of a file.
std::string ZipFileName(std::string_view rawName);

}  // namespace lore
