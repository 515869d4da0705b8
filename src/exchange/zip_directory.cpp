#include "exchange/zip_directory.h"

#include <algorithm>
#include <limits>
#include <string_view>
#include <unordered_set>

#include "base/ascii.h"
#include "base/text.h"
#include "exchange/packing_limits.h"

namespace lore {

// The end of an archive, numbers with the low byte first:
//
//   file           "PK\3\4", 26 bytes, name, extra fields, packed bytes
//   ...
//   directory      for each file "PK\1\2", 42 bytes, name, extra fields, comment
//   large end      "PK\6\6", 52 bytes, only with more than 65,535 entries or 4 GiB
//   its place      "PK\6\7", 16 bytes, right in front of the end
//   end            "PK\5\6", 18 bytes, comment

namespace {

constexpr size_t kLocalSize = 30, kCentralSize = 46, kEndSize = 22, kLargeEndSize = 56, kLocatorSize = 20;
constexpr uint32_t kLocalMark = 0x04034b50, kCentralMark = 0x02014b50, kEndMark = 0x06054b50;
constexpr uint32_t kLargeEndMark = 0x06064b50, kLocatorMark = 0x07064b50;
constexpr uint32_t kIsLarge32 = 0xffffffff;
constexpr uint32_t kIsLarge16 = 0xffff;
constexpr unsigned kLargeField = 1;
constexpr size_t kLongestComment = 65535;
constexpr unsigned kEncrypted = 1 | 1u << 6 | 1u << 13;
constexpr unsigned kStored = 0, kDeflated = 8;
constexpr unsigned kMadeOnUnix = 3;
constexpr unsigned kFileTypeMask = 0170000, kRegularFile = 0100000, kFolder = 0040000;

constexpr size_t kLongestName = 255;
constexpr uint64_t kAlwaysAllowed = uint64_t{1} << 20;
constexpr uint64_t kLargestDirectory = uint64_t{256} << 20;

/// Numbers at fixed places of a record.
class Fields {
public:
    explicit Fields(std::string_view bytes) : bytes_(bytes) {}
    uint64_t Get(size_t at, size_t width) const {
        uint64_t value = 0;
        for (size_t i = width; i-- > 0;)
            value = value << 8 | static_cast<unsigned char>(bytes_[at + i]);
        return value;
    }
    unsigned Two(size_t at) const { return static_cast<unsigned>(Get(at, 2)); }
    uint32_t Four(size_t at) const { return static_cast<uint32_t>(Get(at, 4)); }

private:
    std::string_view bytes_;
};

struct End {
    uint64_t entries = 0, size = 0, offset = 0;
    uint64_t position = 0;  // where the directory must be over
};

struct Entry {
    ZipItem item;
    unsigned flags = 0, method = 0, madeOn = 0, mode = 0;
    uint64_t offset = 0;
};

bool ReadBytes(const ZipRead& read, uint64_t position, size_t count, std::string& bytes) {
    bytes.resize(count);
    return read(position, {bytes.data(), count});
}

bool BeginsWithDrive(std::string_view name) {
    return name.size() >= 2 && name[1] == ':' && IsLetter(name[0]);
}

/// A name as a message shows it.
std::string Shown(std::string_view rawName) {
    std::string name = ToUtf8(rawName.substr(0, 80));
    std::replace_if(
        name.begin(), name.end(), [](char c) { return static_cast<unsigned char>(c) < 32; }, '?');
    return "\"" + name + "\"";
}

/// Reads the directory of an archive, and refuses it where its entries, sizes or places can't be true.
class DirectoryReader {
public:
    DirectoryReader(uint64_t size, const ZipRead& read) : size_(size), read_(read) {}

    ZipDirectory Run() {
        End end;
        std::vector<Entry> entries;
        if (FindEnd(end) && ReadEntries(end, entries) && CheckEach(entries) && CheckPlaces(entries, end.offset))
            Take(entries);
        return std::move(result_);
    }

private:
    bool Refuse(std::string reason) {
        result_.refusal = std::move(reason);
        return false;
    }

    bool FindEnd(End& end) {
        if (size_ < kEndSize)
            return Refuse("it is not an archive, or it breaks off");
        const auto tailSize = static_cast<size_t>(std::min<uint64_t>(size_, kEndSize + kLongestComment));
        std::string tail;
        if (!ReadBytes(read_, size_ - tailSize, tailSize, tail))
            return Refuse("it could not be read to its end");
        // An end with which the file ends comes before one that has bytes behind it, as mail programs put there.
        for (const bool hasMore : {false, true}) {
            for (size_t at = tailSize - kEndSize + 1; at-- > 0;) {
                const Fields fields(std::string_view(tail).substr(at));
                const size_t behind = at + kEndSize + fields.Two(20);
                if (fields.Four(0) == kEndMark && (hasMore ? behind < tailSize : behind == tailSize))
                    return ReadEnd(fields, size_ - tailSize + at, end);
            }
        }
        return Refuse("it is not an archive, or it breaks off");
    }

    bool ReadEnd(const Fields& fields, uint64_t position, End& end) {
        if (fields.Two(4) != fields.Two(6) || (fields.Two(4) != 0 && fields.Two(4) != kIsLarge16))
            return Refuse("it is one of several volumes");
        end = {fields.Two(10), fields.Four(12), fields.Four(16), position};
        const bool isLarge = end.entries == kIsLarge16 || end.size == kIsLarge32 || end.offset == kIsLarge32;
        if (isLarge && !ReadLargeEnd(end))
            return false;
        if (end.offset > end.position || end.size > end.position - end.offset)
            return Refuse("its directory breaks off");
        if (end.entries > end.size / kCentralSize || end.size > kLargestDirectory)
            return Refuse("its directory claims " + std::to_string(end.entries) + " entries and has no room for them");
        return true;
    }

    bool ReadLargeEnd(End& end) {
        std::string bytes;
        if (end.position < kLocatorSize || !ReadBytes(read_, end.position - kLocatorSize, kLocatorSize, bytes) ||
            Fields(bytes).Four(0) != kLocatorMark)
            return true;  // the numbers may just be that large
        const uint64_t place = Fields(bytes).Get(8, 8);
        if (place > end.position - kLocatorSize || end.position - kLocatorSize - place < kLargeEndSize ||
            !ReadBytes(read_, place, kLargeEndSize, bytes) || Fields(bytes).Four(0) != kLargeEndMark)
            return Refuse("its directory is damaged");
        const Fields fields(bytes);
        end = {fields.Get(32, 8), fields.Get(40, 8), fields.Get(48, 8), place};
        return true;
    }

    bool ReadEntries(const End& end, std::vector<Entry>& entries) {
        std::string bytes;
        if (!ReadBytes(read_, end.offset, static_cast<size_t>(end.size), bytes))
            return Refuse("its directory could not be read");
        std::string_view rest = bytes;
        for (uint64_t i = 0; i < end.entries; ++i) {
            Entry entry;
            entry.item.index = i;
            if (!ReadEntry(rest, entry))
                return Refuse("its directory is damaged at entry " + std::to_string(i + 1));
            entries.push_back(std::move(entry));
        }
        result_.entries = end.entries;
        return true;
    }

    static bool ReadEntry(std::string_view& rest, Entry& entry) {
        if (rest.size() < kCentralSize || Fields(rest).Four(0) != kCentralMark)
            return false;
        const Fields fields(rest);
        const size_t name = fields.Two(28), extra = fields.Two(30), comment = fields.Two(32);
        if (rest.size() - kCentralSize < name + extra + comment)
            return false;
        entry.madeOn = fields.Two(4) >> 8;
        entry.flags = fields.Two(8);
        entry.method = fields.Two(10);
        entry.mode = fields.Four(38) >> 16;
        entry.offset = fields.Four(42);
        entry.item.crc = fields.Four(16);
        entry.item.packed = fields.Four(20);
        entry.item.size = fields.Four(24);
        entry.item.rawName = rest.substr(kCentralSize, name);
        const bool isWhole = ReadLargeNumbers(rest.substr(kCentralSize + name, extra), entry);
        rest.remove_prefix(kCentralSize + name + extra + comment);
        return isWhole;
    }

    /// Numbers that don't fit into 32 bits stand in an extra field, in this order.
    static bool ReadLargeNumbers(std::string_view extra, Entry& entry) {
        std::string_view numbers;
        while (extra.size() >= 4) {
            const Fields field(extra);
            const std::string_view content = extra.substr(4, field.Two(2));
            if (field.Two(0) == kLargeField)
                numbers = content;
            extra.remove_prefix(std::min(extra.size(), 4 + size_t{field.Two(2)}));
        }
        for (uint64_t* number : {&entry.item.size, &entry.item.packed, &entry.offset}) {
            if (*number != kIsLarge32)
                continue;
            if (numbers.size() < 8)
                return false;
            *number = Fields(numbers).Get(0, 8);
            numbers.remove_prefix(8);
        }
        return true;
    }

    bool CheckEach(const std::vector<Entry>& entries) {
        uint64_t total = 0;
        for (const Entry& entry : entries) {
            const ZipItem& item = entry.item;
            const std::string name = Shown(item.rawName);
            const unsigned kind = entry.mode & kFileTypeMask;
            if (entry.madeOn == kMadeOnUnix && kind != 0 && kind != kRegularFile && kind != kFolder)
                return Refuse("its entry " + name + " is a link or a device");
            if ((entry.flags & kEncrypted) != 0)
                return Refuse("its entry " + name + " is encrypted");
            if (entry.method != kStored && entry.method != kDeflated)
                return Refuse("its entry " + name + " is packed in a way that isn't known here");
            if (entry.method == kStored && item.size != item.packed)
                return Refuse("its entry " + name + " states two sizes");
            if (IsTooLarge(item.size, item.packed))
                return Refuse("its entry " + name + " would unpack to more than a thousand times its size");
            total += std::min(item.size, std::numeric_limits<uint64_t>::max() - total);
        }
        return !IsTooLarge(total, size_) || Refuse("it would unpack to more than a thousand times its size");
    }

    static bool IsTooLarge(uint64_t size, uint64_t packed) {
        return size > kAlwaysAllowed && (size - kAlwaysAllowed) / kMostPerByteRead > packed;
    }

    /// Where the entries stand: each under its own name, one after the other.
    bool CheckPlaces(const std::vector<Entry>& entries, uint64_t directory) {
        std::vector<std::pair<uint64_t, uint64_t>> places;
        for (const Entry& entry : entries) {
            std::string head;
            const std::string name = Shown(entry.item.rawName);
            if (entry.offset > directory || directory - entry.offset < kLocalSize ||
                !ReadBytes(read_, entry.offset, kLocalSize, head) || Fields(head).Four(0) != kLocalMark)
                return Refuse("its entry " + name + " isn't where the directory says");
            const uint64_t begins = kLocalSize + Fields(head).Two(26) + Fields(head).Two(28);
            const uint64_t room = directory - entry.offset;
            if (begins > room || entry.item.packed > room - begins)
                return Refuse("its entry " + name + " reaches beyond its end");
            if (Fields(head).Two(26) != entry.item.rawName.size() ||
                !ReadBytes(read_, entry.offset + kLocalSize, entry.item.rawName.size(), head) ||
                head != entry.item.rawName)
                return Refuse("its entry " + name + " has two names");
            places.emplace_back(entry.offset, entry.offset + begins + entry.item.packed);
        }
        std::sort(places.begin(), places.end());
        for (size_t i = 1; i < places.size(); ++i) {
            if (places[i].first < places[i - 1].second)
                return Refuse("its entries overlap");
        }
        return true;
    }

    void Take(std::vector<Entry>& entries) {
        std::unordered_set<std::string> names;
        for (Entry& entry : entries) {
            const bool isFolder = entry.item.rawName.ends_with('/') || entry.item.rawName.ends_with('\\') ||
                                  (entry.madeOn == kMadeOnUnix && (entry.mode & kFileTypeMask) == kFolder);
            if (isFolder)
                continue;
            const std::string shown = Shown(entry.item.rawName);
            entry.item.name = ZipFileName(entry.item.rawName);
            if (entry.item.name.empty())
                result_.leftOut.push_back("The entry " + shown + " has no name that a file could have");
            else if (!names.insert(entry.item.name).second)
                result_.leftOut.push_back("The entry " + shown + " stands twice; the first one was taken");
            else
                result_.items.push_back(std::move(entry.item));
        }
    }

    uint64_t size_;
    const ZipRead& read_;
    ZipDirectory result_;
};

}  // namespace

ZipDirectory ReadZipDirectory(uint64_t size, const ZipRead& read) {
    return DirectoryReader(size, read).Run();
}

std::string ZipFileName(std::string_view rawName) {
    std::string_view last = LastPathComponent(rawName);
    while (BeginsWithDrive(last))
        last.remove_prefix(2);
    const bool hasControl =
        std::any_of(rawName.begin(), rawName.end(), [](char c) { return static_cast<unsigned char>(c) < 32; });
    if (hasControl || last.empty() || last == "." || last == "..")
        return {};
    std::string name = ToUtf8(last);
    return name.size() > kLongestName ? std::string() : name;
}

}  // namespace lore
