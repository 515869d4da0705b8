#include "exchange/zip_reader.h"

#include <array>
#include <cstdint>
#include <cstdio>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>
#include <zip.h>

#include "base/file_descriptor.h"
#include "base/text.h"

namespace lore {

namespace {

constexpr size_t kSeveral = SIZE_MAX;

struct CloseFile {
    void operator()(zip_file_t* file) const { zip_fclose(file); }
};
using OpenFile = std::unique_ptr<zip_file_t, CloseFile>;

bool ReadAt(int number, uint64_t position, std::span<char> room) {
    while (!room.empty()) {
        const ssize_t got = ::pread(number, room.data(), room.size(), static_cast<off_t>(position));
        if (got < 0 && errno == EINTR)
            continue;
        if (got <= 0)
            return false;
        room = room.subspan(static_cast<size_t>(got));
        position += static_cast<uint64_t>(got);
    }
    return true;
}

std::string ErrorText(int code) {
    zip_error_t error;
    zip_error_init_with_code(&error, code);
    std::string text = zip_error_strerror(&error);
    zip_error_fini(&error);
    return text;
}

ArchiveResult ItemFailure(const ZipItem& item, const std::string& reason) {
    return ArchiveResult::Failure("\"" + item.name + "\": " + reason);
}

}  // namespace

void ZipReader::Discard::operator()(zip* archive) const {
    zip_discard(archive);
}

ZipReader::ZipReader() = default;
ZipReader::~ZipReader() = default;

ArchiveResult ZipReader::Refuse(const std::string& reason) {
    archive_.reset();
    directory_ = {};
    byName_.clear();
    byLower_.clear();
    return ArchiveResult::Failure(reason);
}

ArchiveResult ZipReader::Open(const std::filesystem::path& path) {
    Refuse({});
    // Without waiting, so that a pipe is refused and not read for ever.
    FileDescriptor file(::open(path.c_str(), O_RDONLY | O_NONBLOCK | O_CLOEXEC));
    struct stat info = {};
    if (!file.IsOpen() || ::fstat(file.Get(), &info) != 0)
        return Refuse(LastError().Reason());
    if (!S_ISREG(info.st_mode))
        return Refuse("it is not a file");
    directory_ = ReadZipDirectory(static_cast<uint64_t>(info.st_size), [&](uint64_t position, std::span<char> room) {
        return ReadAt(file.Get(), position, room);
    });
    if (!directory_.refusal.empty())
        return Refuse(std::string(directory_.refusal));
    int code = 0;
    const int number = ::dup(file.Get());
    archive_.reset(number < 0 ? nullptr : zip_fdopen(number, 0, &code));
    if (!archive_) {
        if (number >= 0)
            ::close(number);
        return Refuse(ErrorText(code));
    }
    if (!Agrees())
        return Refuse("it can be read in two ways");
    for (size_t i = 0; i < directory_.items.size(); ++i) {
        byName_.emplace(directory_.items[i].name, i);
        const auto [place, isFirst] = byLower_.emplace(ToLower(directory_.items[i].name), i);
        if (!isFirst)
            place->second = kSeveral;
    }
    return {};
}

/// The library must see the archive that was judged.
bool ZipReader::Agrees() const {
    if (static_cast<uint64_t>(zip_get_num_entries(archive_.get(), 0)) != directory_.entries)
        return false;
    for (const ZipItem& item : directory_.items) {
        zip_stat_t stat;
        const char* const name = zip_get_name(archive_.get(), item.index, ZIP_FL_ENC_RAW);
        if (!name || item.rawName != name || zip_stat_index(archive_.get(), item.index, 0, &stat) != 0 ||
            stat.size != item.size || stat.comp_size != item.packed)
            return false;
    }
    return true;
}

const ZipItem* ZipReader::Find(std::string_view name) const {
    if (const auto found = byName_.find(std::string(name)); found != byName_.end())
        return &directory_.items[found->second];
    const auto found = byLower_.find(ToLower(name));
    return found == byLower_.end() || found->second == kSeveral ? nullptr : &directory_.items[found->second];
}

ArchiveResult ZipReader::Unpack(const ZipItem& item, const Take& take) {
    const OpenFile file(zip_fopen_index(archive_.get(), item.index, 0));
    if (!file)
        return ItemFailure(item, zip_strerror(archive_.get()));
    std::array<char, size_t{1} << 16> piece;
    uint64_t have = 0;
    while (true) {
        const zip_int64_t got = zip_fread(file.get(), piece.data(), piece.size());
        if (got < 0)
            return ItemFailure(item, zip_file_strerror(file.get()));
        if (got == 0)
            break;
        have += static_cast<uint64_t>(got);
        if (have > item.size)
            return ItemFailure(item, "it holds more than it announces");
        if (!take({piece.data(), static_cast<size_t>(got)}))
            return ItemFailure(item, LastError().Reason());
    }
    return have == item.size ? ArchiveResult{} : ItemFailure(item, "it holds less than it announces");
}

ArchiveResult ZipReader::Read(const ZipItem& item, std::string& bytes) {
    bytes.clear();
    bytes.reserve(item.size);
    ArchiveResult result = Unpack(item, [&](std::string_view piece) {
        bytes.append(piece);
        return true;
    });
    if (!result.Ok())
        bytes.clear();
    return result;
}

ArchiveResult ZipReader::Extract(const ZipItem& item, const std::filesystem::path& target) {
    FileDescriptor file(::open(target.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_NOFOLLOW | O_CLOEXEC, 0666));
    return Fill(file, target, item);
}

ArchiveResult ZipReader::ExtractAtomically(const ZipItem& item, const std::filesystem::path& target) {
    std::filesystem::path temporary;
    const std::unique_ptr<FileDescriptor> file = MakeTemporary(target, 0666, temporary);
    ArchiveResult result = Fill(*file, temporary, item);
    if (result.Ok() && ::rename(temporary.c_str(), target.c_str()) != 0) {
        result = ArchiveResult::Failure(LastError().Reason());
        ::unlink(temporary.c_str());
    }
    return result;
}

/// Of a file that has just been opened, or couldn't be.
ArchiveResult ZipReader::Fill(FileDescriptor& file, const std::filesystem::path& path, const ZipItem& item) {
    if (!file.IsOpen())
        return ItemFailure(item, LastError().Reason());
    ArchiveResult result = Unpack(item, [&](std::string_view piece) { return WriteAll(file.Get(), piece); });
    if (result.Ok() && (!Flush(file.Get()) || !file.Close()))
        result = ItemFailure(item, LastError().Reason());
    if (!result.Ok())
        ::unlink(path.c_str());
    return result;
}

}  // namespace lore
