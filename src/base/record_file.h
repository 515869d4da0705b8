#pragma once

#include <algorithm>
#include <cstdint>
#include <filesystem>
#include <memory>
#include <string>
#include <string_view>

#include "base/date_time.h"
#include "base/file_io.h"
#include "base/long_list.h"

namespace lore {

// A record file is a plain stream of fields without names or marks; only the order in which a reader asks gives it its
// structure:
//
//   FixedInt       16 characters, "%.16d", negative "%.15d"
//   FixedDouble    20 characters, "%020.9f"
//   CountedString  FixedInt length, then that many bytes
//   DateField      CountedString "%Y-%m-%d-%H-%M-%S"
//   LongList       FixedInt count, then count x FixedInt
//   TextLine       up to a line break (read only)
//
// On disk 0x0A stands as 0x0D 0x0A, and 0x1A ends the file. Lengths count the bytes before that translation.
// Nothing here reports: past the end numbers read as 0 and strings as empty.

/// The version that every writer puts in front, as a text and as a number. On disk; never change.
inline constexpr char kDataVersionText[] = "11.56";
inline constexpr double kDataVersion = 11.56;
/// How true is stored where a format doesn't store 1. On disk; never change.
inline constexpr int32_t kStoredTrue = 2112;
/// What a number reads as when no stream was open. It never stands in a file.
inline constexpr int32_t kNoStream = -21122112;
inline constexpr size_t kMaxStringLength = 500000;  ///< bytes of the longest string that may be written
inline constexpr size_t kEmptyFileSize = 36;        ///< bytes of a file that holds its version and no record
/// How many entries a reader makes up past the end of a file whose counts promise more, and how deep records may nest.
inline constexpr int kMaxMadeUpEntries = 1000;
inline constexpr int kMaxNesting = 1000;

/// What a record file shows beside its records, once they are read.
struct RecordFileState {
    bool isWhole = true;     ///< no field was cut or missing, and nothing stood behind the last one
    size_t longestText = 0;  ///< bytes of its longest counted string
    bool lacksID = false;    ///< all that is wrong is a record without a number, which was passed over
};

/// The logical stream of a record file that is being read: the whole file in memory, line ends translated.
class RecordReader {
public:
    /// A reader over the bytes as they stand on disk.
    explicit RecordReader(std::string diskBytes);
    /// Gives up the stream and its room, for a reader of the next file.
    std::string TakeRoom() { return std::move(data_); }
    void Rewind();  ///< begins anew, as if nothing had been read

    bool AtEnd() const { return position_ >= data_.size(); }
    size_t Position() const { return position_; }
    size_t Size() const { return data_.size(); }
    /// True if a field was asked for that the file didn't hold whole.
    bool RanOut() const { return ranOut_; }
    bool ReadWhole() const { return !ranOut_ && AtEnd() && !hasZero_ && !endsEarly_; }
    RecordFileState State() const { return {.isWhole = ReadWhole(), .longestText = longestText_}; }
    void CountText(size_t bytes) { longestText_ = std::max(longestText_, bytes); }
    /// True if there is a zero byte anywhere in the stream: it ends the field that it stands in.
    bool HasZero() const { return hasZero_; }
    /// One more entry of a counted list: true unless the end is reached and all made-up entries are used up.
    bool WantsEntry();

    /// Up to `count` bytes, stopping behind a line feed: what fgets would give.
    std::string_view TakeLine(size_t count);
    /// Exactly `count` bytes, fewer at the end.
    std::string_view TakeBytes(size_t count);
    /// The bytes from here on, without taking them.
    std::string_view Rest() const { return std::string_view(data_).substr(position_); }

private:
    std::string data_;
    size_t position_ = 0, longestText_ = 0;
    int madeUp_ = 0;
    bool ranOut_ = false, hasZero_ = false, endsEarly_ = false;
};

/// Collects the logical stream of a record file that is being written.
class RecordWriter {
public:
    void Append(std::string_view bytes) { data_.append(bytes); }
    /// Makes room for so many bytes, so that a large file is collected without moving.
    void Reserve(size_t bytes) { data_.reserve(bytes); }
    const std::string& Logical() const { return data_; }
    /// The bytes for the disk, line ends translated.
    std::string DiskBytes() const;

private:
    std::string data_;
};

/// Opens and reads a file. With a failure `reader` is left empty; a loader then stops before reading anything.
FileResult OpenRecordFile(const std::filesystem::path& path, std::unique_ptr<RecordReader>& reader);
/// Writes what the writer collected, as WriteFileAtomically does.
FileResult SaveRecordFile(const std::filesystem::path& path, const RecordWriter& writer);

// The field functions take a stream that may be null: nothing is written then, and a read leaves its result as told.

void WriteFixedInt(RecordWriter* stream, int32_t value);
/// kNoStream without a stream.
void ReadFixedInt(RecordReader* stream, int32_t& value);
int32_t ReadFixedInt(RecordReader* stream);

void WriteFixedDouble(RecordWriter* stream, double value);
/// kNoStream without a stream.
void ReadFixedDouble(RecordReader* stream, double& value);
double ReadFixedDouble(RecordReader* stream);

void WriteCountedString(RecordWriter* stream, std::string_view text);
/// Empties the string first. The string ends at the first zero byte, and the whole length is taken from the stream.
void ReadCountedString(RecordReader* stream, std::string& text);
std::string ReadCountedString(RecordReader* stream);
/// The same without a copy; the view lives as long as the reader.
std::string_view ReadCountedView(RecordReader* stream);

void WriteDateField(RecordWriter* stream, const DateTime& date);
/// Leaves the date as it stood unless the text has the right form.
void ReadDateField(RecordReader* stream, DateTime& date);

/// True if a line was read: at most 1999 bytes, trimmed at the right. False at the end of the file.
bool ReadTextLine(RecordReader* stream, std::string& line);

void WriteLongList(RecordWriter* stream, const LongList& list);
/// Empties the list first; without a stream it stays as it stood.
void ReadLongList(RecordReader* stream, LongList& list);

/// Booleans that stand as 2112 or 0; anything above 0 reads as true.
void WriteStoredBool(RecordWriter* stream, bool value);
bool ReadStoredBool(RecordReader* stream);

/// Reads a count, then calls `entry()` so often, at most kMaxMadeUpEntries times past the end of the file.
template <typename Entry>
void ReadCounted(RecordReader* stream, Entry entry) {
    const int32_t count = ReadFixedInt(stream);
    for (int32_t i = 0; i < count && stream->WantsEntry(); ++i)
        entry();
}

FileResult SaveLongListFile(const LongList& list, const std::filesystem::path& path);
/// Empties the list whether or not the file opens.
FileResult LoadLongListFile(LongList& list, const std::filesystem::path& path);

}  // namespace lore
