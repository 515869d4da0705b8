#include "bibliography/output_zip.h"

#include <memory>
#include <zip.h>

namespace lore {

namespace {

struct FreeSource {
    void operator()(zip_source_t* source) const { zip_source_free(source); }
};
using ZipSource = std::unique_ptr<zip_source_t, FreeSource>;

struct Discard {
    void operator()(zip_t* archive) const { zip_discard(archive); }
};
using Archive = std::unique_ptr<zip_t, Discard>;

/// 2 January 1980: the first day that an archive can state in every time zone.
constexpr time_t kMemberTime = 315'619'200;

bool AddMember(zip_t* archive, const ZipMember& member) {
    zip_source_t* const source = zip_source_buffer(archive, member.bytes.data(), member.bytes.size(), 0);
    if (!source)
        return false;
    const zip_int64_t index = zip_file_add(archive, member.name, source, ZIP_FL_ENC_UTF_8);
    if (index < 0) {
        zip_source_free(source);
        return false;
    }
    const auto position = static_cast<zip_uint64_t>(index);
    return zip_set_file_compression(archive, position, member.compressed ? ZIP_CM_DEFLATE : ZIP_CM_STORE, 0) == 0 &&
           zip_file_set_mtime(archive, position, kMemberTime, 0) == 0;
}

std::optional<std::string> BytesOf(zip_source_t* source) {
    zip_stat_t stat;
    if (zip_source_stat(source, &stat) != 0 || (stat.valid & ZIP_STAT_SIZE) == 0 || zip_source_open(source) != 0)
        return std::nullopt;
    std::string bytes(stat.size, '\0');
    const zip_int64_t read = zip_source_read(source, bytes.data(), bytes.size());
    zip_source_close(source);
    if (read < 0 || static_cast<size_t>(read) != bytes.size())
        return std::nullopt;
    return bytes;
}

}  // namespace

std::optional<std::string> MakeZip(std::span<const ZipMember> members) {
    const ZipSource source(zip_source_buffer_create(nullptr, 0, 0, nullptr));
    if (!source)
        return std::nullopt;
    Archive archive(zip_open_from_source(source.get(), ZIP_TRUNCATE, nullptr));
    if (!archive)
        return std::nullopt;
    zip_source_keep(source.get());  // the archive lets go of its own hold when it is closed
    for (const ZipMember& member : members) {
        if (!AddMember(archive.get(), member))
            return std::nullopt;
    }
    if (zip_close(archive.get()) != 0)
        return std::nullopt;
    static_cast<void>(archive.release());
    return BytesOf(source.get());
}

}  // namespace lore
