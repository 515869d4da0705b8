#pragma once

#include <filesystem>
#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "exchange/archive_result.h"
#include "exchange/zip_directory.h"

struct zip;

namespace lore {

class FileDescriptor;

/// Unpacks the files of an archive that may have been made to do harm. Nothing is unpacked before the whole directory
/// was judged (zip_directory.h), and never more than the directory announces.
class ZipReader {
public:
    ZipReader();
    ~ZipReader();
    ZipReader(const ZipReader&) = delete;
    ZipReader& operator=(const ZipReader&) = delete;

    /// With a failure there are no items.
    ArchiveResult Open(const std::filesystem::path& path);

    const std::vector<ZipItem>& Items() const { return directory_.items; }
    /// One line for each entry that wasn't taken.
    const std::vector<std::string>& LeftOut() const { return directory_.leftOut; }
    /// The file with this very name (UTF-8); without one the file that has it in another case, if it is the only one.
    /// Otherwise null.
    const ZipItem* Find(std::string_view name) const;

    using Take = std::function<bool(std::string_view)>;
    /// Unpacks a file piece by piece; stops with a failure once `take` gives false.
    ArchiveResult Unpack(const ZipItem& item, const Take& take);
    /// Unpacks a file into memory; its announced size is taken at once.
    ArchiveResult Read(const ZipItem& item, std::string& bytes);
    /// Unpacks a file to a path where nothing stands yet, and flushes it. A failure leaves nothing there.
    ArchiveResult Extract(const ZipItem& item, const std::filesystem::path& target);
    /// The same over what stands there, under a temporary name first; the folder isn't flushed.
    ArchiveResult ExtractAtomically(const ZipItem& item, const std::filesystem::path& target);

private:
    ArchiveResult Fill(FileDescriptor& file, const std::filesystem::path& path, const ZipItem& item);
    struct Discard {
        void operator()(zip* archive) const;
    };
    bool Agrees() const;
    ArchiveResult Refuse(const std::string& reason);

    std::unique_ptr<zip, Discard> archive_;
    ZipDirectory directory_;
    std::unordered_map<std::string, size_t> byName_;   // position
    std::unordered_map<std::string, size_t> byLower_;  // by lower-cased name; kSeveral where several files have it
};

}  // namespace lore
