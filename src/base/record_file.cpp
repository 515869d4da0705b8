#include "base/record_file.h"

#include <algorithm>
#include <bit>
#include <charconv>
#include <cstring>
#include <limits>
#include <optional>

#include "base/move_text.h"
#include "base/text.h"

namespace lore {

namespace {

constexpr size_t kIntWidth = 16;
constexpr size_t kDoubleWidth = 20;
constexpr size_t kLineRoom = 1999;

/// What a pass over the bytes of a file has met that no writer leaves there.
struct OddBytes {
    bool zero = false;      ///< a zero byte
    bool earlyEnd = false;  ///< a 0x1A with something behind it
};

/// What a text stream yields for the bytes of a file: CR LF becomes LF, and 0x1A ends it. A lone CR stays. One pass
/// does all of this: a search reads whole NoteBooks through it.
OddBytes TranslateFromDisk(std::string& data) {
    char* out = data.data();
    const char* at = out;
    const char* end = at + data.size();
    OddBytes odd;
    while (at < end) {
        MoveText(out, at, end);
        if (at == end)
            break;
        const char c = *at++;
        if (c == kEndOfText) {
            odd.earlyEnd = at < end;
            break;
        }
        odd.zero = odd.zero || c == '\0';
        const bool isLineEnd = c == '\r' && at < end && *at == '\n';
        *out++ = isLineEnd ? *at++ : c;
    }
    data.resize(static_cast<size_t>(out - data.data()));
    return odd;
}

constexpr uint64_t kEightZeros = 0x3030303030303030;

/// The value of eight digits; nothing if one is none.
std::optional<uint32_t> ValueOfEight(uint64_t digits) {
    constexpr uint64_t kHighHalves = 0xF0F0F0F0F0F0F0F0;
    const uint64_t carried = (digits + 0x0606060606060606) & kHighHalves;
    if (((digits & kHighHalves) | carried >> 4) != 0x3333333333333333)
        return std::nullopt;
    // Neighbours are joined to numbers of two, four and eight digits.
    digits = (digits & 0x0F0F0F0F0F0F0F0F) * (10 * 0x100 + 1) >> 8;
    digits = (digits & 0x00FF00FF00FF00FF) * (100 * 0x10000 + 1) >> 16;
    return static_cast<uint32_t>((digits & 0x0000FFFF0000FFFF) * (10000 * 0x100000000 + 1) >> 32);
}

/// The value of a number field that holds digits alone, or after a minus, as nearly all do.
std::optional<int32_t> ValueOfDigits(std::string_view field) {
    if (std::endian::native != std::endian::little || field.size() < kIntWidth)
        return std::nullopt;
    uint64_t halves[2];
    std::memcpy(halves, field.data(), sizeof halves);
    if (halves[0] == kEightZeros) {
        const std::optional<uint32_t> value = ValueOfEight(halves[1]);
        return value ? std::optional(static_cast<int32_t>(*value)) : std::nullopt;
    }
    const bool isNegative = field[0] == '-';
    if (isNegative)
        halves[0] ^= '-' ^ '0';
    const std::optional<uint32_t> high = ValueOfEight(halves[0]), low = ValueOfEight(halves[1]);
    if (!high || !low)
        return std::nullopt;
    const int64_t value = int64_t{*high} * 100000000 + *low;
    constexpr int64_t kHighest = std::numeric_limits<int32_t>::max();
    return static_cast<int32_t>(isNegative ? -std::min(value, kHighest + 1) : std::min(value, kHighest));
}

/// A number field as the C library would convert it: up to the first zero byte.
std::string_view UpToZero(std::string_view text) {
    return text.substr(0, text.find('\0'));
}

}  // namespace

RecordReader::RecordReader(std::string diskBytes) : data_(std::move(diskBytes)) {
    const OddBytes odd = TranslateFromDisk(data_);
    hasZero_ = odd.zero;
    endsEarly_ = odd.earlyEnd;  // what stands behind the 0x1A is read by nobody
}

void RecordReader::Rewind() {
    position_ = longestText_ = 0;
    madeUp_ = 0;
    ranOut_ = false;
}

bool RecordReader::WantsEntry() {
    return !AtEnd() || madeUp_++ < kMaxMadeUpEntries;
}

std::string_view RecordReader::TakeLine(size_t count) {
    std::string_view taken = TakeBytes(count);
    if (const size_t end = taken.find('\n'); end != std::string_view::npos) {
        position_ -= taken.size() - (end + 1);
        taken = taken.substr(0, end + 1);
    }
    return taken;
}

std::string_view RecordReader::TakeBytes(size_t count) {
    const std::string_view taken = Rest().substr(0, count);
    ranOut_ = ranOut_ || taken.size() < count;
    position_ += taken.size();
    return taken;
}

std::string RecordWriter::DiskBytes() const {
    std::string bytes;
    bytes.reserve(data_.size() + static_cast<size_t>(std::count(data_.begin(), data_.end(), '\n')));
    size_t from = 0;
    for (size_t at = data_.find('\n'); at != std::string::npos; at = data_.find('\n', from)) {
        bytes.append(data_, from, at - from).append("\r\n");
        from = at + 1;
    }
    return bytes.append(data_, from);
}

FileResult OpenRecordFile(const std::filesystem::path& path, std::unique_ptr<RecordReader>& reader) {
    reader.reset();
    std::string bytes;
    const FileResult result = ReadFile(path, bytes);
    if (result.Ok())
        reader = std::make_unique<RecordReader>(std::move(bytes));
    return result;
}

FileResult SaveRecordFile(const std::filesystem::path& path, const RecordWriter& writer) {
    return WriteFileAtomically(path, writer.DiskBytes());
}

void WriteFixedInt(RecordWriter* stream, int32_t value) {
    if (!stream)
        return;
    char field[kIntWidth];
    std::fill(std::begin(field), std::end(field), '0');
    int64_t rest = value < 0 ? -int64_t{value} : value;
    for (size_t at = kIntWidth; rest > 0; rest /= 10)
        field[--at] = static_cast<char>('0' + rest % 10);
    if (value < 0)
        field[0] = '-';
    stream->Append({field, kIntWidth});
}

int32_t ReadFixedInt(RecordReader* stream) {
    if (!stream)
        return kNoStream;
    if (const auto value = ValueOfDigits(stream->Rest().substr(0, kIntWidth))) {
        stream->TakeBytes(kIntWidth);
        return *value;
    }
    return ParseInt(UpToZero(stream->TakeLine(kIntWidth)));
}

void ReadFixedInt(RecordReader* stream, int32_t& value) {
    value = ReadFixedInt(stream);
}

void WriteFixedDouble(RecordWriter* stream, double value) {
    if (!stream)
        return;
    char digits[400];
    const auto end = std::to_chars(digits, digits + sizeof digits, value, std::chars_format::fixed, 9).ptr;
    std::string text(digits, end);
    const bool negative = text.starts_with('-');
    if (text.size() < kDoubleWidth)
        text.insert(negative ? 1 : 0, kDoubleWidth - text.size(), '0');
    stream->Append(text);
}

double ReadFixedDouble(RecordReader* stream) {
    return stream ? ParseDouble(UpToZero(stream->TakeLine(kDoubleWidth))) : kNoStream;
}

void ReadFixedDouble(RecordReader* stream, double& value) {
    value = ReadFixedDouble(stream);
}

void WriteCountedString(RecordWriter* stream, std::string_view text) {
    if (!stream)
        return;
    WriteFixedInt(stream, static_cast<int32_t>(text.size()));
    stream->Append(text);
}

std::string_view ReadCountedView(RecordReader* stream) {
    if (!stream)
        return {};
    const int32_t length = ReadFixedInt(stream);
    if (length < 0)
        return {};
    const std::string_view text = stream->TakeBytes(static_cast<size_t>(length));
    stream->CountText(text.size());
    return stream->HasZero() ? UpToZero(text) : text;
}

std::string ReadCountedString(RecordReader* stream) {
    return std::string(ReadCountedView(stream));
}

void ReadCountedString(RecordReader* stream, std::string& text) {
    text.assign(ReadCountedView(stream));
}

void WriteDateField(RecordWriter* stream, const DateTime& date) {
    WriteCountedString(stream, DateFieldText(date));
}

void ReadDateField(RecordReader* stream, DateTime& date) {
    ParseDateFieldText(ReadCountedView(stream), date);
}

bool ReadTextLine(RecordReader* stream, std::string& line) {
    line.clear();
    if (!stream || stream->AtEnd())
        return false;
    const size_t room = std::min(kLineRoom, stream->Rest().size());
    line.assign(TrimRight(UpToZero(stream->TakeLine(room))));
    return true;
}

void WriteLongList(RecordWriter* stream, const LongList& list) {
    WriteFixedInt(stream, static_cast<int32_t>(list.Count()));
    for (const int32_t value : list)
        WriteFixedInt(stream, value);
}

void ReadLongList(RecordReader* stream, LongList& list) {
    if (!stream)
        return;
    list.RemoveAll();
    ReadCounted(stream, [&] { list.AddTail(ReadFixedInt(stream)); });
}

void WriteStoredBool(RecordWriter* stream, bool value) {
    WriteFixedInt(stream, value ? kStoredTrue : 0);
}

bool ReadStoredBool(RecordReader* stream) {
    return ReadFixedInt(stream) > 0;
}

FileResult SaveLongListFile(const LongList& list, const std::filesystem::path& path) {
    RecordWriter writer;
    WriteLongList(&writer, list);
    return SaveRecordFile(path, writer);
}

FileResult LoadLongListFile(LongList& list, const std::filesystem::path& path) {
    list.RemoveAll();
    std::unique_ptr<RecordReader> reader;
    const FileResult result = OpenRecordFile(path, reader);
    ReadLongList(reader.get(), list);
    return result;
}

}  // namespace lore
