#include "base/record_file.h"

#include <algorithm>
#include <bit>
#include <charconv>
#include <cstring>
#include <limits>
#include <optional>

#include "base/find_byte.h"
#include "base/text.h"

namespace lore {

namespace {

constexpr size_t kIntWidth = 16;
constexpr size_t kDoubleWidth = 20;
constexpr size_t kLineRoom = 1999;
constexpr char kEndOfText = 0x1A;

/// The bytes up to 0x1A.
struct ControlBytes {
    static constexpr bool Holds(unsigned char c) { return c <= kEndOfText; }
#if defined(__SSE2__)
    static __m128i HeldIn(__m128i bytes) {
        return _mm_cmpeq_epi8(_mm_min_epu8(bytes, _mm_set1_epi8(kEndOfText)), bytes);
    }
#endif
};

/// The first control byte, `end` if there is none. Texts hold few of them beside their line ends.
const char* FindControl(const char* at, const char* end) {
#if defined(__SSE2__)
    const auto load = [](const char* from) { return _mm_loadu_si128(reinterpret_cast<const __m128i*>(from)); };
    for (; end - at >= 64; at += 64) {
        const __m128i lower = _mm_min_epu8(load(at), load(at + 16));
        const __m128i lowest = _mm_min_epu8(lower, _mm_min_epu8(load(at + 32), load(at + 48)));
        if (_mm_movemask_epi8(ControlBytes::HeldIn(lowest)) != 0)
            break;
    }
#endif
    return at + FindByte<ControlBytes>({at, static_cast<size_t>(end - at)}, 0);
}

/// What a pass over the bytes of a file has met that no writer leaves there.
struct OddBytes {
    bool zero = false;      ///< a zero byte
    bool earlyEnd = false;  ///< a 0x1A with something behind it
};

/// What a text stream yields for the bytes of a file: CR LF becomes LF, and 0x1A ends it. A lone CR stays. One pass
/// does all of this: a search reads whole NoteBooks through it.
OddBytes TranslateFromDisk(std::string& data) {
    char* out = data.data();
    const char* run = out;  // what isn't in its place yet
    const char* end = run + data.size();
    OddBytes odd;
    const auto place = [&](const char* to) {
        const auto length = static_cast<size_t>(to - run);
        if (out != run)
            std::memmove(out, run, length);
        out += length;
    };
    for (const char* at = FindControl(run, end); at < end; at = FindControl(at, end)) {
        if (*at == kEndOfText) {
            odd.earlyEnd = end - at > 1;
            end = at;
        } else if (*at == '\r' && end - at > 1 && at[1] == '\n') {
            place(at);
            run = at + 1;
            at += 2;
        } else {
            odd.zero = odd.zero || *at == '\0';
            ++at;
        }
    }
    place(end);
    data.resize(static_cast<size_t>(out - data.data()));
    return odd;
}

/// The value of a number field that holds digits alone, or after a minus, as nearly all do.
std::optional<int32_t> ValueOfDigits(std::string_view field) {
    if (std::endian::native != std::endian::little || field.size() < kIntWidth)
        return std::nullopt;
    constexpr uint64_t kHighHalves = 0xF0F0F0F0F0F0F0F0;
    uint64_t halves[2];
    std::memcpy(halves, field.data(), sizeof halves);
    const bool isNegative = field[0] == '-';
    if (isNegative)
        halves[0] ^= '-' ^ '0';
    int64_t value = 0;
    for (uint64_t eight : halves) {
        const uint64_t carried = (eight + 0x0606060606060606) & kHighHalves;
        if (((eight & kHighHalves) | carried >> 4) != 0x3333333333333333)
            return std::nullopt;
        // Neighbours are joined to numbers of two, four and eight digits.
        eight = (eight & 0x0F0F0F0F0F0F0F0F) * (10 * 0x100 + 1) >> 8;
        eight = (eight & 0x00FF00FF00FF00FF) * (100 * 0x10000 + 1) >> 16;
        eight = (eight & 0x0000FFFF0000FFFF) * (10000 * 0x100000000 + 1) >> 32;
        value = value * 100000000 + static_cast<int64_t>(eight);
    }
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
