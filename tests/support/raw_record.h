#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "base/record_file.h"

namespace lore {

/// Fields of a record file written one after the other.
class RawRecord {
public:
    RawRecord& Int(int32_t value) {
        WriteFixedInt(&writer_, value);
        return *this;
    }
    RawRecord& Ints(const std::vector<int32_t>& values) {
        for (const int32_t value : values)
            Int(value);
        return *this;
    }
    RawRecord& Real(double value) {
        WriteFixedDouble(&writer_, value);
        return *this;
    }
    RawRecord& Text(std::string_view text) {
        WriteCountedString(&writer_, text);
        return *this;
    }
    RawRecord& Raw(std::string_view bytes) {
        writer_.Append(bytes);
        return *this;
    }
    /// Numbers and texts as they come.
    template <typename... Fields>
    RawRecord& Add(const Fields&... fields) {
        return (Put(fields), ...);
    }
    std::string Bytes() const { return writer_.DiskBytes(); }

private:
    RawRecord& Put(int32_t value) { return Int(value); }
    RawRecord& Put(double value) { return Real(value); }
    RawRecord& Put(std::string_view text) { return Text(text); }

    RecordWriter writer_;
};

}  // namespace lore
