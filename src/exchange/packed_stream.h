#pragma once

#include <chrono>
#include <cstdint>
#include <deque>
#include <filesystem>
#include <future>
#include <memory>
#include <string>
#include <string_view>

#include "base/file_descriptor.h"
#include "base/file_io.h"

namespace lore {

/// Bytes in the form in which archives hold packed files.
struct PackedBytes {
    std::string bytes;
    uint32_t crc = 0;
    uint64_t size = 0;  ///< unpacked
};

/// Packs a long text as it comes, in pieces on other threads, into a file, so that little of it stands in memory. The
/// result is the same whatever the number of threads. What was packed last is finished by the end mark of Finish.
class PackedStream {
public:
    /// Nothing is written before Open.
    PackedStream(std::filesystem::path file, size_t threads);
    ~PackedStream();
    PackedStream(const PackedStream&) = delete;
    PackedStream& operator=(const PackedStream&) = delete;

    /// Creates the file, over what stands there.
    FileResult Open();
    /// Waits so long at most; false if Append would have to wait on.
    bool TakesMore(std::chrono::milliseconds longest) const;
    void Append(std::string_view bytes);
    /// Packs what is left and closes the file. Fails if any write has failed.
    FileResult Finish();

    const std::filesystem::path& File() const { return file_; }
    uint32_t Crc() const { return crc_; }
    uint64_t Size() const { return size_; }
    uint64_t PackedSize() const { return packedSize_; }

private:
    void StartPiece();
    void TakePiece();

    std::filesystem::path file_;
    size_t threads_;
    std::unique_ptr<FileDescriptor> number_;
    std::string gathered_, before_;
    std::deque<std::future<PackedBytes>> pieces_;
    FileResult result_;
    uint32_t crc_ = 0;
    uint64_t size_ = 0, packedSize_ = 0;
};

/// Packs one piece that others follow. `before` is the end of the piece in front of it, to whose words it may refer.
/// What packs to next to nothing is filled up with empty blocks, to a size at which no reader refuses it.
PackedBytes PackPiece(std::string_view bytes, std::string_view before);

/// The CRC of two pieces in a row.
uint32_t CombinedCrc(uint32_t first, uint32_t second, uint64_t secondSize);

}  // namespace lore
