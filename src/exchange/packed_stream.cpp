#include "exchange/packed_stream.h"

#include <fcntl.h>
#include <utility>
#include <zlib.h>

namespace lore {

namespace {

constexpr size_t kPieceSize = size_t{512} << 10;
constexpr size_t kWindow = 32768;
constexpr int kRawDeflate = -15;
constexpr int kMemoryLevel = 9;
/// The end of a packed file: a last block with nothing in it.
constexpr std::string_view kLastBlock("\x03\x00", 2);

Bytef* Bytes(std::string_view text) {
    return reinterpret_cast<Bytef*>(const_cast<char*>(text.data()));  // zlib reads only
}

}  // namespace

PackedBytes PackPiece(std::string_view bytes, std::string_view before, int level) {
    PackedBytes packed;
    packed.size = bytes.size();
    packed.crc = static_cast<uint32_t>(crc32_z(0, Bytes(bytes), bytes.size()));
    z_stream stream = {};
    if (deflateInit2(&stream, level, Z_DEFLATED, kRawDeflate, kMemoryLevel, Z_DEFAULT_STRATEGY) != Z_OK)
        throw std::bad_alloc();
    deflateSetDictionary(&stream, Bytes(before), static_cast<uInt>(before.size()));
    packed.bytes.resize(deflateBound(&stream, static_cast<uLong>(bytes.size())) + 16);
    stream.next_in = Bytes(bytes);
    stream.avail_in = static_cast<uInt>(bytes.size());
    stream.next_out = Bytes(packed.bytes);
    stream.avail_out = static_cast<uInt>(packed.bytes.size());
    deflate(&stream, Z_SYNC_FLUSH);  // ends at a whole byte, so that the next piece can follow
    packed.bytes.resize(packed.bytes.size() - stream.avail_out);
    deflateEnd(&stream);
    return packed;
}

uint32_t CombinedCrc(uint32_t first, uint32_t second, uint64_t secondSize) {
    return static_cast<uint32_t>(crc32_combine(first, second, static_cast<z_off_t>(secondSize)));
}

PackedStream::PackedStream(std::filesystem::path file, int level, size_t threads)
    : file_(std::move(file)), level_(level), threads_(threads) {}

PackedStream::~PackedStream() = default;

FileResult PackedStream::Open() {
    number_ = std::make_unique<FileNumber>(::open(file_.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0600));
    result_ = number_->IsOpen() ? FileResult{} : LastError();
    return result_;
}

void PackedStream::Append(std::string_view bytes) {
    gathered_.append(bytes);
    if (gathered_.size() >= kPieceSize)
        StartPiece();
}

void PackedStream::StartPiece() {
    std::string piece = std::exchange(gathered_, {});
    std::string before = std::exchange(before_, piece.size() > kWindow ? piece.substr(piece.size() - kWindow) : piece);
    pieces_.push_back(std::async(std::launch::async, [piece = std::move(piece), before = std::move(before),
                                                      level = level_] { return PackPiece(piece, before, level); }));
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
