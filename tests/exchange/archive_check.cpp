#include "exchange/archive_check.h"

#include <set>

#include "exchange/import_archive.h"
#include "support/read_world.h"
#include "support/scripted_ports.h"

namespace lore {

namespace {

constexpr uint64_t kLargest = uint64_t{8} << 20;

std::string CheckItem(ZipReader& reader, const ZipItem& item, const std::filesystem::path& target) {
    if (item.name.empty() || item.name == "." || item.name == ".." ||
        item.name.find_first_of(std::string("/\\\n\0", 4)) != std::string::npos || ZipFileName(item.name) != item.name)
        return "a name that leads elsewhere: " + item.name;
    if (item.size > kLargest)
        return {};
    std::filesystem::remove(target);
    const bool isWhole = reader.Extract(item, target).Ok();
    if (isWhole != std::filesystem::exists(target))
        return "a file is there without being whole, or the other way round";
    if (isWhole && std::filesystem::file_size(target) != item.size)
        return "a file of another size than announced";
    return {};
}

}  // namespace

std::string CheckArchive(const std::string& bytes, const std::filesystem::path& folder) {
    const std::filesystem::path path = folder / "archive.lbe";
    PutBytes(path, bytes);
    ZipReader reader;
    const bool isOpen = reader.Open(path).Ok();
    if (!isOpen && !reader.Items().empty())
        return "items of an archive that was refused";
    std::set<std::string> names;
    for (const ZipItem& item : reader.Items()) {
        if (!names.insert(item.name).second)
            return "a name twice: " + item.name;
        if (const std::string finding = CheckItem(reader, item, folder / "out"); !finding.empty())
            return finding;
    }
    ReadWorld world;
    NotedFaults faults;
    ImportArchive archive;
    const bool isArchive = archive.Open(path, faults).Ok();
    if (isArchive && !isOpen)
        return "an archive that was refused before";
    if (isArchive)
        archive.ReadNotes(
            world.context, faults, [](int) {}, [] {});
    for (const ArchiveNote& entry : archive.notes) {
        if (entry.note.id <= 0 || entry.note.guid.empty())
            return "a note that is none";
    }
    return {};
}

}  // namespace lore
