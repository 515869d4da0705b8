#include "exchange/zip_target.h"

#include <cerrno>
#include <cstdio>
#include <unistd.h>
#include <zip.h>

namespace lore {

namespace {

constexpr size_t kBufferSize = size_t{1} << 18;

bool WriteAllAt(int descriptor, std::string_view bytes, uint64_t position) {
    while (!bytes.empty()) {
        const ssize_t written = ::pwrite(descriptor, bytes.data(), bytes.size(), static_cast<off_t>(position));
        if (written < 0 && errno == EINTR)
            continue;
        if (written < 0)
            return false;
        bytes.remove_prefix(static_cast<size_t>(written));
        position += static_cast<uint64_t>(written);
    }
    return true;
}

}  // namespace

ZipTarget::ZipTarget(const std::filesystem::path& place) : place_(BehindLinks(place)) {}

ZipTarget::~ZipTarget() {
    if (exists_)
        ::unlink(temporary_.c_str());
}

FileResult ZipTarget::Create() {
    const FileResult result = CreateReplacement(place_, temporary_, file_);
    exists_ = result.Ok();
    return result;
}

zip_source* ZipTarget::MakeSource() {
    const auto serve = [](void* self, void* data, zip_uint64_t length, zip_source_cmd_t command) -> zip_int64_t {
        return Serve(self, data, length, command);
    };
    return zip_source_function_create(serve, this, nullptr);
}

FileResult ZipTarget::Commit() {
    if (!FlushBuffer())
        return {error_};
    if (!Flush(file_->Get()) || !file_->Close() || ::rename(temporary_.c_str(), place_.c_str()) != 0)
        return LastError();
    exists_ = false;
    return FlushFolder(place_.parent_path());
}

/// The library sees an empty archive that it may rewrite.
int64_t ZipTarget::Serve(void* self, void* data, uint64_t length, int command) {
    auto& target = *static_cast<ZipTarget*>(self);
    switch (command) {
        case ZIP_SOURCE_SUPPORTS:
            return ZIP_SOURCE_SUPPORTS_WRITABLE;
        case ZIP_SOURCE_STAT:
            zip_stat_init(static_cast<zip_stat_t*>(data));
            static_cast<zip_stat_t*>(data)->size = 0;
            static_cast<zip_stat_t*>(data)->valid = ZIP_STAT_SIZE;
            return sizeof(zip_stat_t);
        case ZIP_SOURCE_WRITE:
            return target.ServeWrite(data, length);
        case ZIP_SOURCE_SEEK_WRITE:
            return target.ServeSeek(data, length);
        case ZIP_SOURCE_TELL_WRITE:
            return static_cast<int64_t>(target.position_);
        case ZIP_SOURCE_ERROR: {
            auto* const codes = static_cast<int*>(data);
            codes[0] = ZIP_ER_WRITE;
            codes[1] = target.error_;
            return 2 * sizeof(int);
        }
        default:
            return 0;
    }
}

int64_t ZipTarget::ServeWrite(const void* data, uint64_t length) {
    const bool follows = position_ == buffered_ + buffer_.size();
    if ((!follows || buffer_.size() + length > kBufferSize) && !FlushBuffer())
        return -1;
    if (buffer_.empty())
        buffered_ = position_;
    buffer_.append(static_cast<const char*>(data), length);
    position_ += length;
    size_ = std::max(size_, position_);
    return static_cast<int64_t>(length);
}

int64_t ZipTarget::ServeSeek(void* data, uint64_t length) {
    zip_error_t ignored;
    zip_error_init(&ignored);
    const zip_int64_t position = zip_source_seek_compute_offset(position_, size_, data, length, &ignored);
    zip_error_fini(&ignored);
    if (position < 0) {
        error_ = EINVAL;
        return -1;
    }
    position_ = static_cast<uint64_t>(position);
    return 0;
}

bool ZipTarget::FlushBuffer() {
    if (!WriteAllAt(file_->Get(), buffer_, buffered_)) {
        error_ = errno;
        return false;
    }
    buffer_.clear();
    return error_ == 0;
}

}  // namespace lore
