#include "exchange/zip_writer.h"

#include <algorithm>
#include <array>
#include <cstring>
#include <fcntl.h>
#include <memory>
#include <system_error>
#include <unistd.h>
#include <zip.h>
#include <zlib.h>

#include "base/text.h"
#include "exchange/packing_limits.h"
#include "exchange/zip_target.h"

namespace lore {

namespace {

constexpr std::string_view kPackedEndings[] = {
    "7z",  "aac",  "apk",  "avi",  "br",   "bz2",  "cbz",   "docm", "docx", "dotx", "epub", "flac", "flv", "gif",
    "gz",  "heic", "jar",  "jfif", "jpeg", "jpg",  "lbe",   "m4a",  "m4p",  "m4v",  "mkv",  "mov",  "mp2", "mp3",
    "mp4", "mpeg", "mpg",  "odg",  "odp",  "ods",  "odt",   "ogg",  "opus", "pdf",  "png",  "pptx", "rar", "svgz",
    "tgz", "webm", "webp", "wma",  "wmv",  "woff", "woff2", "xlsm", "xlsx", "xz",   "zip",  "zst"};

/// Smaller files have heads that are large enough beside them.
constexpr uintmax_t kSmallFile = uintmax_t{256} << 10;
/// Takes only matches that lie some way off, so that it never packs better than 1:230.
constexpr int kWeakLevel = 1;

/// True if a file would pack too well at this level. The more it takes packed, the less of it is looked at.
bool PacksTooWell(const std::filesystem::path& path, int level) {
    std::error_code error;
    const uintmax_t size = std::filesystem::file_size(path, error);
    if (error || size <= kSmallFile)
        return false;
    const FileDescriptor file(::open(path.c_str(), O_RDONLY | O_CLOEXEC));
    z_stream stream = {};
    if (!file.IsOpen() ||
        deflateInit2(&stream, level, Z_DEFLATED, -MAX_WBITS, MAX_MEM_LEVEL, Z_DEFAULT_STRATEGY) != Z_OK)
        return false;
    const std::unique_ptr<z_stream, decltype(&deflateEnd)> end(&stream, deflateEnd);
    std::array<Bytef, size_t{1} << 16> piece, packed;
    ssize_t got = 0;
    do {
        got = ::read(file.Get(), piece.data(), piece.size());
        stream.next_in = piece.data();
        stream.avail_in = got > 0 ? static_cast<uInt>(got) : 0;
        do {
            stream.next_out = packed.data();
            stream.avail_out = static_cast<uInt>(packed.size());
            deflate(&stream, got > 0 ? Z_NO_FLUSH : Z_FINISH);
        } while (stream.avail_out == 0);
    } while (got > 0 && stream.total_out <= size / kMostPerByteWritten);
    return stream.total_out <= size / kMostPerByteWritten;
}

/// Hands the library bytes that are packed already: those of a head, then those of a file.
class PackedSource {
public:
    PackedSource(const PackedBytes& head, const PackedStream& stream) : head_(head), stream_(stream) {}

    static zip_int64_t Serve(void* self, void* data, zip_uint64_t length, zip_source_cmd_t command) {
        auto& source = *static_cast<PackedSource*>(self);
        switch (command) {
            case ZIP_SOURCE_SUPPORTS:
                return ZIP_SOURCE_SUPPORTS_READABLE | ZIP_SOURCE_MAKE_COMMAND_BITMASK(ZIP_SOURCE_SUPPORTS);
            case ZIP_SOURCE_STAT:
                source.State(*static_cast<zip_stat_t*>(data));
                return sizeof(zip_stat_t);
            case ZIP_SOURCE_OPEN:
                return source.Open() ? 0 : -1;
            case ZIP_SOURCE_READ:
                return source.Read(static_cast<char*>(data), length);
            case ZIP_SOURCE_CLOSE:
                source.number_.reset();
                return 0;
            case ZIP_SOURCE_ERROR: {
                auto* const codes = static_cast<int*>(data);
                codes[0] = ZIP_ER_READ;
                codes[1] = source.error_;
                return 2 * sizeof(int);
            }
            case ZIP_SOURCE_FREE:
                delete &source;
                return 0;
            default:
                return -1;
        }
    }

private:
    void State(zip_stat_t& stat) const {
        zip_stat_init(&stat);
        stat.size = head_.size + stream_.Size();
        stat.comp_size = head_.bytes.size() + stream_.PackedSize();
        stat.crc = CombinedCrc(head_.crc, stream_.Crc(), stream_.Size());
        stat.comp_method = ZIP_CM_DEFLATE;
        stat.valid = ZIP_STAT_SIZE | ZIP_STAT_COMP_SIZE | ZIP_STAT_CRC | ZIP_STAT_COMP_METHOD;
    }
    bool Open() {
        headTaken_ = 0;
        number_ = std::make_unique<FileDescriptor>(::open(stream_.File().c_str(), O_RDONLY | O_CLOEXEC));
        error_ = number_->IsOpen() ? 0 : LastError().error;
        return number_->IsOpen();
    }
    zip_int64_t Read(char* room, zip_uint64_t length) {
        if (const size_t left = head_.bytes.size() - headTaken_; left > 0) {
            const size_t taken = std::min<size_t>(left, length);
            std::memcpy(room, head_.bytes.data() + headTaken_, taken);
            headTaken_ += taken;
            return static_cast<zip_int64_t>(taken);
        }
        const ssize_t got = ::read(number_->Get(), room, length);
        error_ = got < 0 ? LastError().error : 0;
        return got;
    }

    const PackedBytes& head_;
    const PackedStream& stream_;
    std::unique_ptr<FileDescriptor> number_;
    size_t headTaken_ = 0;
    int error_ = 0;
};

struct Discard {
    void operator()(zip_t* archive) const { zip_discard(archive); }
};
using Archive = std::unique_ptr<zip_t, Discard>;

void RegisterWatch(zip_t* archive, const ZipWriter::Watch& watch) {
    constexpr double kSmallestStep = 0.005;
    void* const state = const_cast<ZipWriter::Watch*>(&watch);
    zip_register_progress_callback_with_state(
        archive, kSmallestStep,
        [](zip_t*, double part, void* told) { static_cast<const ZipWriter::Watch*>(told)->progress(part); }, nullptr,
        state);
    zip_register_cancel_callback_with_state(
        archive, [](zip_t*, void* told) { return static_cast<const ZipWriter::Watch*>(told)->cancelled() ? 1 : 0; },
        nullptr, state);
}

ArchiveResult FailureOf(zip_t* archive) {
    if (zip_error_code_zip(zip_get_error(archive)) == ZIP_ER_CANCELLED)
        return {ArchiveResult::Kind::Cancelled, {}};
    return ArchiveResult::Failure(zip_strerror(archive));
}

}  // namespace

bool IsPackedAlready(std::string_view name) {
    const std::string ending = ToLower(FileExtension(name));
    return std::find(std::begin(kPackedEndings), std::end(kPackedEndings), ending) != std::end(kPackedEndings);
}

void ZipWriter::AddPacked(std::string name, PackedBytes head, const PackedStream& stream) {
    names_.insert(name);
    members_.insert(members_.begin(), {std::move(name), {}, std::move(head), &stream});
}

bool ZipWriter::AddFile(const std::string& name, std::filesystem::path path) {
    if (!names_.insert(name).second)
        return false;
    members_.push_back({name, std::move(path), {}, nullptr});
    return true;
}

/// 0 for a file that is stored as it is.
int ZipWriter::LevelOf(const Member& member) const {
    if (IsPackedAlready(member.name))
        return 0;
    return PacksTooWell(member.path, level_) ? kWeakLevel : level_;
}

/// Gives the reason of a failure, or nothing.
std::string ZipWriter::AddMembers(void* opened) {
    auto* const archive = static_cast<zip_t*>(opened);
    for (const Member& member : members_) {
        zip_source_t* const source = member.stream ? zip_source_function(archive, PackedSource::Serve,
                                                                         new PackedSource(member.head, *member.stream))
                                                   : zip_source_file(archive, member.path.c_str(), 0, -1);
        const zip_int64_t index =
            source ? zip_file_add(archive, member.name.c_str(), source, ZIP_FL_ENC_UTF_8) : zip_int64_t{-1};
        if (index < 0) {
            zip_source_free(source);
            return "\"" + member.name + "\": " + zip_strerror(archive);
        }
        if (member.stream)
            continue;
        const int level = LevelOf(member);
        if (zip_set_file_compression(archive, static_cast<zip_uint64_t>(index),
                                     level == 0 ? ZIP_CM_STORE : ZIP_CM_DEFLATE, static_cast<zip_uint32_t>(level)) != 0)
            return "\"" + member.name + "\": " + zip_strerror(archive);
    }
    return {};
}

ArchiveResult ZipWriter::Write(const std::filesystem::path& target, const Watch& watch) {
    ZipTarget file(target);
    if (const FileResult created = file.Create(); !created.Ok())
        return ArchiveResult::Failure(target.string() + ": " + created.Reason());
    zip_source_t* const source = file.MakeSource();
    Archive archive(source ? zip_open_from_source(source, ZIP_CREATE | ZIP_TRUNCATE, nullptr) : nullptr);
    if (!archive) {
        zip_source_free(source);
        return ArchiveResult::Failure(target.string() + ": the archive could not be started");
    }
    if (std::string reason = AddMembers(archive.get()); !reason.empty())
        return ArchiveResult::Failure(std::move(reason));
    RegisterWatch(archive.get(), watch);
    if (zip_close(archive.get()) != 0)
        return FailureOf(archive.get());
    static_cast<void>(archive.release());
    const FileResult committed = file.Commit();
    return committed.Ok() ? ArchiveResult{} : ArchiveResult::Failure(target.string() + ": " + committed.Reason());
}

}  // namespace lore
