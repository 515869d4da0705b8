#include "exchange/packed_stream.h"

#include <fcntl.h>
#include <isa-l/crc.h>
#include <isa-l/igzip_lib.h>
#include <utility>
#include <zlib.h>

#include "base/helper_threads.h"
#include "exchange/packing_limits.h"

namespace lore {

namespace {

constexpr size_t kPieceSize = size_t{512} << 10;
constexpr size_t kWindow = 32768;
/// The library's hardest level: texts come out as small as from level 4 of zlib, in a fifth of its time.
constexpr uint32_t kLevel = 3;
constexpr size_t kWorkSize = ISAL_DEF_LVL3_DEFAULT;
/// Above what a piece that can't be packed grows by.
constexpr size_t kMostGrowth = 4096;
/// A block with nothing in it, which begins and ends at a whole byte.
constexpr std::string_view kEmptyBlock("\x00\x00\x00\xff\xff", 5);
/// The end of a packed file: a last block with nothing in it.
constexpr std::string_view kLastBlock("\x03\x00", 2);

uint8_t* Bytes(std::string_view text) {
    return reinterpret_cast<uint8_t*>(const_cast<char*>(text.data()));  // the library reads only
}

}  // namespace

PackedBytes PackPiece(std::string_view bytes, std::string_view before) {
    PackedBytes packed;
    packed.size = bytes.size();
    packed.crc = crc32_gzip_refl(0, Bytes(bytes), bytes.size());
    const auto work = std::make_unique_for_overwrite<uint8_t[]>(kWorkSize);
    isal_zstream stream;
    isal_deflate_init(&stream);
    stream.level = kLevel;
    stream.level_buf = work.get();
    stream.level_buf_size = kWorkSize;
    stream.flush = SYNC_FLUSH;  // ends at a whole byte, so that the next piece can follow
    isal_deflate_set_dict(&stream, Bytes(before), static_cast<uint32_t>(before.size()));
    stream.next_in = Bytes(bytes);
    stream.avail_in = static_cast<uint32_t>(bytes.size());
    do {
        const size_t taken = packed.bytes.size();
        packed.bytes.resize(taken + bytes.size() + kMostGrowth);
        stream.next_out = Bytes(packed.bytes) + taken;
        stream.avail_out = static_cast<uint32_t>(packed.bytes.size() - taken);
        isal_deflate(&stream);
        packed.bytes.resize(packed.bytes.size() - stream.avail_out);
    } while (stream.avail_out == 0);
    // Readers take a large record file that is packed more closely for one made to do harm.
    while (packed.bytes.size() < bytes.size() / kMostOfRecordsWritten)
        packed.bytes += kEmptyBlock;
    return packed;
}

uint32_t CombinedCrc(uint32_t first, uint32_t second, uint64_t secondSize) {
    return static_cast<uint32_t>(crc32_combine(first, second, static_cast<z_off_t>(secondSize)));
}

PackedStream::PackedStream(std::filesystem::path file, size_t threads) : file_(std::move(file)), threads_(threads) {}

PackedStream::~PackedStream() = default;

FileResult PackedStream::Open() {
    number_ = std::make_unique<FileDescriptor>(::open(file_.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0600));
    result_ = number_->IsOpen() ? FileResult{} : LastError();
    return result_;
}

bool PackedStream::TakesMore(std::chrono::milliseconds longest) const {
    return pieces_.size() < threads_ || pieces_.front().wait_for(longest) != std::future_status::timeout;
}

void PackedStream::Append(std::string_view bytes) {
    gathered_.append(bytes);
    if (gathered_.size() >= kPieceSize)
        StartPiece();
}

void PackedStream::StartPiece() {
    std::string piece = std::exchange(gathered_, {});
    std::string before = std::exchange(before_, piece.size() > kWindow ? piece.substr(piece.size() - kWindow) : piece);
    pieces_.push_back(
        RunOnHelper([piece = std::move(piece), before = std::move(before)] { return PackPiece(piece, before); }));
    while (pieces_.size() > threads_)
        TakePiece();
}

void PackedStream::TakePiece() {
    const PackedBytes packed = pieces_.front().get();
    pieces_.pop_front();
    if (result_.Ok() && !WriteAll(number_->Get(), packed.bytes))
        result_ = LastError();
    crc_ = CombinedCrc(crc_, packed.crc, packed.size);
    size_ += packed.size;
    packedSize_ += packed.bytes.size();
}

FileResult PackedStream::Finish() {
    if (!gathered_.empty())
        StartPiece();
    while (!pieces_.empty())
        TakePiece();
    if (result_.Ok() && (!WriteAll(number_->Get(), kLastBlock) || !number_->Close()))
        result_ = LastError();
    packedSize_ += kLastBlock.size();
    return result_;
}

}  // namespace lore
