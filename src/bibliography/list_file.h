#pragma once

#include <filesystem>
#include <memory>

#include "base/file_io.h"
#include "base/record_file.h"

namespace lore {

/// A list that lives in a file of its own: a version, a count and the records.
class ListFile {
public:
    /// False if the file of the last load is there and could not be read, broke off or holds more than its records
    /// show, or one without a number: what it holds isn't all in the list.
    bool ReadWhole() const { return state_.isWhole; }
    /// There was no file at the last load: the list is new, or its file has gone.
    bool IsMissing() const { return isMissing_; }
    const RecordFileState& State() const { return state_; }
    /// What the file held is kept beside; from here on the list is whole.
    void MarkWhole() { state_.isWhole = true; }
    /// What the records refer to is missing, or the file of a list that isn't new: a write would lose it.
    void MarkIncomplete() { state_.isWhole = state_.lacksID = false; }
    /// The version of the file that was read last; 0 if it couldn't be opened.
    double Version() const { return version_; }

protected:
    /// Hands the stream over behind the version. A file that can't be opened is passed over.
    template <typename ReadRecords>
    FileResult LoadFile(const std::filesystem::path& path, ReadRecords&& readRecords) {
        version_ = 0;
        std::unique_ptr<RecordReader> stream;
        const FileResult result = OpenRecordFile(path, stream);
        isMissing_ = result.Missing();
        state_ = {.isWhole = isMissing_};
        if (!result.Ok())
            return result;
        ReadFixedDouble(stream.get(), version_);
        readRecords(stream.get());
        state_ = stream->State();
        return result;
    }

    /// A record without a number was passed over.
    void MarkPassedOver() { state_ = {false, state_.longestText, state_.isWhole || state_.lacksID}; }

private:
    double version_ = 0;
    bool isMissing_ = false;
    RecordFileState state_;
};

}  // namespace lore
