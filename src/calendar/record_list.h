#pragma once

#include <filesystem>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "base/loaded.h"
#include "base/record_file.h"

namespace lore {

// What the two files of the calendar share: a version that no field depends on, a count, and records whose fields stand
// in the order in which Visit...Fields names them.

/// Reads or writes one field by its kind, as a visitor of the fields of a record.
struct FieldReader {
    RecordReader& stream;
    void operator()(const char*, int32_t& field) const { ReadFixedInt(&stream, field); }
    void operator()(const char*, bool& field) const { field = ReadStoredBool(&stream); }
    void operator()(const char*, DateTime& field) const { ReadDateField(&stream, field); }
    void operator()(const char*, LongList& field) const { ReadLongList(&stream, field); }
    void operator()(const char*, std::string& field) const { ReadCountedString(&stream, field); }
};

struct FieldWriter {
    RecordWriter& stream;
    void operator()(const char*, int32_t field) const { WriteFixedInt(&stream, field); }
    void operator()(const char*, bool field) const { WriteStoredBool(&stream, field); }
    void operator()(const char*, const DateTime& field) const { WriteDateField(&stream, field); }
    void operator()(const char*, const LongList& field) const { WriteLongList(&stream, field); }
    void operator()(const char*, const std::string& field) const { WriteCountedString(&stream, field); }
};

/// No undamaged record is smaller than the first, and few are larger than the second; memory that is set aside by them
/// and not used costs nothing.
inline constexpr size_t kSmallestRecord = 256, kTypicalRecord = 1024;

/// Which records of a file a reader keeps: all of them.
struct KeepAll {
    template <typename Record>
    bool operator()(const Record&) const {
        return true;
    }
};

/// Appends the records that `readOne(stream, record)` fills and `keep(record)` wants. Returns the file's version.
template <typename Record, typename ReadOne, typename Keep = KeepAll>
double ReadRecordList(RecordReader& stream, std::vector<Record>& list, ReadOne readOne, Keep keep = {}) {
    const double version = ReadFixedDouble(&stream);
    list.reserve(list.size() + stream.Size() / kSmallestRecord);
    ReadCounted(&stream, [&] {
        Record record;
        readOne(stream, record);
        if (keep(record))
            list.push_back(std::move(record));
    });
    return version;
}

template <typename Record, typename WriteOne>
void WriteRecordList(RecordWriter& stream, const std::vector<Record>& list, WriteOne writeOne) {
    stream.Reserve(list.size() * kTypicalRecord);
    WriteFixedDouble(&stream, kDataVersion);
    WriteFixedInt(&stream, static_cast<int32_t>(list.size()));
    for (const Record& record : list)
        writeOne(record);
}

/// The same for a file. One that doesn't open has no records.
template <typename Record, typename ReadOne, typename Keep = KeepAll>
Loaded<std::vector<Record>> LoadRecordFile(const std::filesystem::path& path, ReadOne readOne, Keep keep = {}) {
    std::unique_ptr<RecordReader> stream;
    Loaded<std::vector<Record>> loaded;
    loaded.file = OpenRecordFile(path, stream);
    if (stream) {
        ReadRecordList(*stream, loaded.value, readOne, keep);
        loaded.isWhole = stream->ReadWhole();
    }
    return loaded;
}

}  // namespace lore
