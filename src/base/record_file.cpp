#include "base/record_file.h"

#include <algorithm>
#include <charconv>
#include <cstring>

#include "base/text.h"

namespace lore {

namespace {

constexpr size_t kIntWidth = 16;
constexpr size_t kDoubleWidth = 20;
constexpr size_t kLineRoom = 1999;
constexpr char kEndOfText = 0x1A;

/// What a text stream yields for the bytes of a file: CR LF becomes LF, and 0x1A ends it. A lone CR stays.
void TranslateFromDisk(std::string& data) {
    if (const size_t end = data.find(kEndOfText); end != std::string::npos)
        data.resize(end);
    size_t cut = data.find("\r\n");
    if (cut == std::string::npos)
        return;
    char* const begin = data.data();
    const char* const end = begin + data.size();
    char* out = begin + cut;
    const char* in = out + 1;  // the CR before the LF goes
    while (true) {
        const char* next = in;
        do {
            next = static_cast<const char*>(std::memchr(next + 1, '\n', static_cast<size_t>(end - next - 1)));
        } while (next && next[-1] != '\r');
        const size_t length = static_cast<size_t>((next ? next - 1 : end) - in);
        std::memmove(out, in, length);
        out += length;
        if (!next)
            break;
        in = next;
    }
    data.resize(static_cast<size_t>(out - begin));
}

/// A number field as the C library would convert it: up to the first zero byte.
std::string_view UpToZero(std::string_view text) {
    return text.substr(0, text.find('\0'));
}

}  // namespace

RecordReader::RecordReader(std::string diskBytes) : data_(std::move(diskBytes)) {
    TranslateFromDisk(data_);
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
    return stream ? ParseInt(UpToZero(stream->TakeLine(kIntWidth))) : kNoStream;
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
    return length < 0 ? std::string_view{} : UpToZero(stream->TakeBytes(static_cast<size_t>(length)));
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
