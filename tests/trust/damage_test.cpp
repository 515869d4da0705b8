#include <algorithm>
#include <cctype>
#include <cstdlib>
#include <gtest/gtest.h>
#include <iterator>
#include <ostream>

#include "base/record_file.h"
#include "support/data_files.h"
#include "trust/record_kinds.h"

// Every kind of record file, damaged all over: whatever stands in a file, reading it neither breaks nor hangs.

namespace lore {

void PrintTo(const RecordKind& kind, std::ostream* stream) {
    *stream << kind.name;
}

namespace {

/// The steps of the two longest runs. Both are prime to the number of bits and of control bytes, so that every one of
/// these is met all over a file. LORE_ALL_DAMAGE leaves nothing out, and takes minutes.
size_t Stride() {
    return std::getenv("LORE_ALL_DAMAGE") ? 1 : 7;
}

class DamagedFile : public testing::TestWithParam<RecordKind> {
protected:
    void ExpectReadable(const std::string& bytes, const std::string& damage) {
        const std::string finding = bench_.Check(GetParam(), bytes);
        if (!finding.empty())
            ADD_FAILURE() << GetParam().name << ", " << damage << ": " << finding;
    }
    /// Where a number field may stand: sixteen characters of a number.
    std::vector<size_t> NumberFields() const {
        std::vector<size_t> fields;
        for (size_t at = 0; at + 16 <= sample_.size(); ++at) {
            const bool number = std::all_of(sample_.begin() + static_cast<ptrdiff_t>(at) + 1,
                                            sample_.begin() + static_cast<ptrdiff_t>(at) + 16,
                                            [](unsigned char c) { return std::isdigit(c) != 0; });
            if (number && (sample_[at] == '0' || sample_[at] == '-'))
                fields.push_back(at);
        }
        return fields;
    }

    RecordBench bench_;
    /// The file of the corpus that has the name of the kind, behind the number that picks the kind.
    const std::string sample_ = BytesOf(CorpusFolder(LORE_TEST_DATA, "record") / GetParam().name).substr(1);
};

TEST_P(DamagedFile, IsUndamagedAtFirst) {
    EXPECT_GE(sample_.size(), 100u);
    EXPECT_LE(sample_.size(), 4096u);
    ExpectReadable(sample_, "undamaged");
    EXPECT_EQ(bench_.Saved() == sample_, GetParam().present);
}

TEST_P(DamagedFile, CutAtEachByte) {
    for (size_t length = 0; length < sample_.size(); ++length)
        ExpectReadable(sample_.substr(0, length), "cut to " + std::to_string(length));
}

TEST_P(DamagedFile, WithBitsFlipped) {
    for (size_t bit = 0; bit < sample_.size() * 8; bit += Stride()) {
        std::string bytes = sample_;
        bytes[bit / 8] = static_cast<char>(bytes[bit / 8] ^ 1 << bit % 8);
        ExpectReadable(bytes, "bit " + std::to_string(bit));
    }
}

TEST_P(DamagedFile, WithEachNumberAtItsLimits) {
    const char* const numbers[] = {"-000000000000001", "0000000000000000", "0000002147483647",
                                   "-000002147483648", "1000000000000000", "0000000400000000"};
    for (const size_t at : NumberFields()) {
        for (const char* number : numbers) {
            std::string bytes = sample_;
            ExpectReadable(bytes.replace(at, 16, number), std::string(number) + " at " + std::to_string(at));
        }
    }
}

TEST_P(DamagedFile, WithControlBytes) {
    const char controls[] = {'\x00', '\x0A', '\x0D', '\x1A', '\xFF'};
    for (size_t at = 0; at < sample_.size() * std::size(controls); at += Stride()) {
        for (const size_t replaced : {1, 0}) {
            std::string bytes = sample_;
            bytes.replace(at / std::size(controls), replaced, 1, controls[at % std::size(controls)]);
            ExpectReadable(bytes, (replaced ? "control byte " : "control byte between ") + std::to_string(at));
        }
    }
}

TEST_P(DamagedFile, UnderEveryOtherVersion) {
    for (const double version : {-1.0, 0.0,  0.95, 0.951, 0.982, 1.02, 1.1,   1.2,   1.3,   1.4,   9.9,
                                 10.0, 10.9, 11.2, 11.3,  11.36, 11.4, 11.45, 11.47, 11.56, 11.57, 99999.0}) {
        RecordWriter head;
        WriteFixedDouble(&head, version);
        std::string bytes = sample_;
        ExpectReadable(bytes.replace(0, 20, head.Logical()), "version " + std::to_string(version));
    }
}

INSTANTIATE_TEST_SUITE_P(EachKind, DamagedFile, testing::ValuesIn(RecordKinds()),
                         [](const auto& kind) { return std::string(kind.param.name); });

}  // namespace
}  // namespace lore
