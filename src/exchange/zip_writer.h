#pragma once

#include <filesystem>
#include <functional>
#include <string>
#include <unordered_set>
#include <vector>

#include "exchange/archive_result.h"
#include "exchange/packed_stream.h"

namespace lore {

/// Makes an archive of files, which are streamed: memory doesn't grow with them. What stands at the target is replaced
/// once the archive is whole and on the disk; any failure leaves it as it was.
class ZipWriter {
public:
    /// `level`: how hard files are packed, 1 to 9.
    explicit ZipWriter(int level) : level_(level) {}

    /// A file that was packed before, `head` in front of the stream. It becomes the first one of the archive. The
    /// stream's file stays until Write is over.
    void AddPacked(std::string name, PackedBytes head, const PackedStream& stream);
    /// A file of the disk. Kinds that are packed already are stored as they are; what would pack so well that readers
    /// take it for harmful is packed less. False, and nothing is added, if the archive holds a file of this very name
    /// (UTF-8).
    bool AddFile(const std::string& name, std::filesystem::path path);

    struct Watch {
        std::function<void(double)> progress;  ///< from 0 to 1
        std::function<bool()> cancelled;
    };
    ArchiveResult Write(const std::filesystem::path& target, const Watch& watch);

private:
    struct Member {
        std::string name;
        std::filesystem::path path;
        PackedBytes head;
        const PackedStream* stream = nullptr;  ///< null for a file of the disk
    };
    std::string AddMembers(void* archive);
    int LevelOf(const Member& member) const;

    int level_;
    std::vector<Member> members_;
    std::unordered_set<std::string> names_;
};

/// True for a file that packing makes no smaller, by its ending: pictures, music, films, archives, documents that are
/// archives.
bool IsPackedAlready(std::string_view name);

}  // namespace lore
