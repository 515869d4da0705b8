#pragma once

#include <algorithm>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>
#include <zlib.h>

namespace lore {

/// An entry of an archive made by hand. What isn't set is what an honest archive would hold.
struct RawEntry {
    std::string name, bytes;
    bool deflated = false;
    uint16_t flags = 0, method = 0, madeOn = 3;
    uint32_t mode = 0100644;
    int64_t announced = -1, announcedPacked = -1;  ///< sizes in the directory; -1 for the true ones
    int64_t offset = -1;
    std::string localName;  ///< empty for the same name
    bool wrongCrc = false;
};

inline void PutNumber(std::string& out, uint64_t value, int width) {
    for (int i = 0; i < width; ++i)
        out += static_cast<char>(value >> (8 * i));
}

inline std::string Deflated(std::string_view bytes) {
    z_stream stream = {};
    deflateInit2(&stream, 9, Z_DEFLATED, -15, 9, Z_DEFAULT_STRATEGY);
    std::string out(deflateBound(&stream, bytes.size()), '\0');
    stream.next_in = reinterpret_cast<Bytef*>(const_cast<char*>(bytes.data()));
    stream.avail_in = static_cast<uInt>(bytes.size());
    stream.next_out = reinterpret_cast<Bytef*>(out.data());
    stream.avail_out = static_cast<uInt>(out.size());
    deflate(&stream, Z_FINISH);
    out.resize(stream.total_out);
    deflateEnd(&stream);
    return out;
}

/// The end of an archive.
struct RawEnd {
    int64_t entries = -1;
    int64_t size = -1, offset = -1;
    uint16_t disk = 0;
    bool isBackwards = false;  ///< the directory names the last entry first
};

/// Writes an archive as told, sense or nonsense.
inline std::string RawZip(const std::vector<RawEntry>& entries, const RawEnd& end = {}) {
    std::string out, directory;
    std::vector<std::string> records;
    for (const RawEntry& entry : entries) {
        const std::string packed = entry.deflated ? Deflated(entry.bytes) : entry.bytes;
        const uint64_t offset = entry.offset < 0 ? out.size() : static_cast<uint64_t>(entry.offset);
        const auto crc = static_cast<uint32_t>(crc32(0, reinterpret_cast<const Bytef*>(entry.bytes.data()),
                                                     static_cast<uInt>(entry.bytes.size()))) ^
                         (entry.wrongCrc ? 1u : 0u);
        std::string common;
        PutNumber(common, 20, 2);
        PutNumber(common, entry.flags, 2);
        PutNumber(common, entry.method ? entry.method : entry.deflated ? 8 : 0, 2);
        PutNumber(common, 0x00210000, 4);
        PutNumber(common, crc, 4);
        PutNumber(common, entry.announcedPacked < 0 ? packed.size() : static_cast<uint64_t>(entry.announcedPacked), 4);
        PutNumber(common, entry.announced < 0 ? entry.bytes.size() : static_cast<uint64_t>(entry.announced), 4);
        const std::string& localName = entry.localName.empty() ? entry.name : entry.localName;
        PutNumber(out, 0x04034b50, 4);
        out += common;
        PutNumber(out, localName.size(), 2);
        PutNumber(out, 0, 2);
        out += localName + packed;
        std::string& record = records.emplace_back();
        PutNumber(record, 0x02014b50, 4);
        PutNumber(record, 20u | unsigned{entry.madeOn} << 8, 2);
        record += common;
        PutNumber(record, entry.name.size(), 2);
        PutNumber(record, 0, 8);  // extra, comment, disk, inner attributes
        PutNumber(record, uint64_t{entry.mode} << 16, 4);
        PutNumber(record, offset, 4);
        record += entry.name;
    }
    if (end.isBackwards)
        std::reverse(records.begin(), records.end());
    for (const std::string& record : records)
        directory += record;
    const uint64_t place = out.size();
    out += directory;
    PutNumber(out, 0x06054b50, 4);
    PutNumber(out, end.disk, 2);
    PutNumber(out, 0, 2);
    const auto count = end.entries < 0 ? entries.size() : static_cast<uint64_t>(end.entries);
    PutNumber(out, count, 2);
    PutNumber(out, count, 2);
    PutNumber(out, end.size < 0 ? directory.size() : static_cast<uint64_t>(end.size), 4);
    PutNumber(out, end.offset < 0 ? place : static_cast<uint64_t>(end.offset), 4);
    PutNumber(out, 0, 2);
    return out;
}

}  // namespace lore
