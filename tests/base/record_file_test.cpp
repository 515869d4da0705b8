#include "base/record_file.h"

#include <algorithm>
#include <climits>
#include <gtest/gtest.h>
#include <random>

#include "base/text.h"
#include "support/read_world.h"

namespace lore {
namespace {

TEST(FixedInt, IsWrittenInSixteenCharacters) {
    using Case = std::pair<int32_t, const char*>;
    const Case cases[] = {Case{0, "0000000000000000"}, Case{2112, "0000000000002112"}, Case{-1, "-000000000000001"},
                          Case{INT_MIN, "-000002147483648"}, Case{INT_MAX, "0000002147483647"}};
    for (const auto& [value, text] : cases) {
        RecordWriter writer;
        WriteFixedInt(&writer, value);
        EXPECT_EQ(writer.Logical(), text);
        RecordReader reader(text);
        EXPECT_EQ(ReadFixedInt(&reader), value);
        EXPECT_FALSE(reader.RanOut());
    }
}

TEST(FixedInt, ReadsWhatStandsThereAsFarAsItIsANumber) {
    using Case = std::pair<std::string, int32_t>;
    for (const auto& [bytes, value] :
         {Case{"", 0}, Case{"12", 12}, Case{"   12xyz........", 12}, Case{"abcdefghijklmnop", 0},
          Case{"9999999999999999", INT_MAX}, Case{"-999999999999999", INT_MIN}, Case{"0000002147483648", INT_MAX},
          Case{"1234567812345678", INT_MAX}, Case{"0000000012345678", 12345678}, Case{"00000000:0000001", 0},
          Case{"0000000/00000001", 0}, Case{"000000000000+7--", 0}, Case{std::string("0000000000000\00021", 16), 0},
          Case{"+000000000000021", 21}, Case{"- 00000000000021", 0}}) {
        RecordReader reader(bytes);
        EXPECT_EQ(ReadFixedInt(&reader), value) << bytes;
    }
    RecordReader lines("12\r\n0000000000000034");
    EXPECT_EQ(ReadFixedInt(&lines), 12);
    EXPECT_EQ(ReadFixedInt(&lines), 34);
}

TEST(FixedDouble, IsWrittenWithNineDecimals) {
    using Case = std::pair<double, const char*>;
    for (const auto& [value, text] : {Case{1.5, "0000000001.500000000"}, Case{-1.5, "-000000001.500000000"},
                                      Case{11.56, "0000000011.560000000"}, Case{1e10, "10000000000.000000000"}}) {
        RecordWriter writer;
        WriteFixedDouble(&writer, value);
        EXPECT_EQ(writer.Logical(), text);
    }
    RecordReader reader("0000000011.560000000");
    EXPECT_EQ(ReadFixedDouble(&reader), kDataVersion);
    EXPECT_EQ(ParseDouble(kDataVersionText), kDataVersion);
    EXPECT_EQ(ReadFixedDouble(&reader), 0.0);
}

TEST(NullStream, GivesTheMarkAndWritesNothing) {
    int32_t number = 5;
    ReadFixedInt(nullptr, number);
    EXPECT_EQ(number, kNoStream);
    double real = 5;
    ReadFixedDouble(nullptr, real);
    EXPECT_EQ(real, -21122112.0);
    LongList list{1, 2};
    ReadLongList(nullptr, list);
    EXPECT_EQ(list.Count(), 2u);
    std::string text = "x";
    ReadCountedString(nullptr, text);
    EXPECT_TRUE(text.empty());
    WriteFixedDouble(nullptr, real);
    WriteLongList(nullptr, list);
    WriteCountedString(nullptr, "x");
}

TEST(CountedString, KeepsLaterFieldsInStep) {
    const std::string hundred(100001, 'a');
    const std::string withZero = std::string("0123456789\0abcdefghi", 20);
    const std::pair<std::string, std::string> cases[] = {
        {hundred, hundred}, {withZero, "0123456789"}, {"a\nb", "a\nb"}, {"", ""}, {"\r\n\r", "\r\n\r"}};
    for (const auto& [written, read] : cases) {
        RecordWriter writer;
        WriteCountedString(&writer, written);
        WriteFixedInt(&writer, 77);
        RecordReader reader(writer.DiskBytes());
        EXPECT_EQ(ReadCountedString(&reader), read);
        EXPECT_EQ(ReadFixedInt(&reader), 77);
    }
}

TEST(CountedString, StopsAtTheEndOfTheFileAndTakesNothingBelowZero) {
    RecordReader negative("-0000000000000010000000000000009"), reader("0000000400000000abc");
    EXPECT_EQ(ReadCountedString(&negative), "");
    EXPECT_EQ(ReadFixedInt(&negative), 9) << "only its length was taken";
    EXPECT_EQ(ReadCountedString(&reader), "abc");
    EXPECT_TRUE(reader.RanOut());
    EXPECT_EQ(ReadCountedString(&reader), "");
}

TEST(TextStream, WritesLineEndsOfTwoBytes) {
    const std::pair<const char*, const char*> cases[] = {{"a\nb", "a\r\nb"},   {"a\r\nb", "a\r\r\nb"},
                                                         {"\n\n", "\r\n\r\n"}, {"a\rb", "a\rb"},
                                                         {"\r", "\r"},         {"x\n", "x\r\n"}};
    for (const auto& [logical, disk] : cases) {
        RecordWriter writer;
        writer.Append(logical);
        EXPECT_EQ(writer.DiskBytes(), disk);
    }
}

/// The stream as a reader of single bytes would see it.
std::string Translated(const std::string& disk) {
    std::string logical;
    for (size_t i = 0; i < disk.size() && disk[i] != '\x1A'; ++i) {
        if (disk[i] != '\r' || i + 1 == disk.size() || disk[i + 1] != '\n')
            logical += disk[i];
    }
    return logical;
}

TEST(TextStream, ReadsWhatAReaderOfSingleBytesReads) {
    std::mt19937 random(7);
    const std::string rare("\r\n\r\n\r\t\0\x1A\x1B\xFF", 10);
    for (int round = 0; round < 4000; ++round) {
        std::string disk(random() % 300, 'a');
        const unsigned rarity = 1u << (1 + round % 7);
        for (char& c : disk) {
            // The end comes seldom, so that there is something after the other bytes.
            if (random() % rarity == 0)
                c = rare[random() % (random() % 8 == 0 ? rare.size() : 6)];
        }
        RecordReader reader(disk);
        const std::string logical = Translated(disk);
        ASSERT_EQ(reader.Rest(), logical) << testing::PrintToString(disk);
        EXPECT_EQ(reader.HasZero(), logical.find('\0') != std::string::npos) << testing::PrintToString(disk);
        reader.TakeBytes(reader.Size());
        const size_t end = disk.find('\x1A');
        const bool endsAtItsEnd = end == std::string::npos || end + 1 == disk.size();
        EXPECT_EQ(reader.ReadWhole(), endsAtItsEnd && !reader.HasZero()) << testing::PrintToString(disk);
    }
}

TEST(DateField, ReadsOnlySixNumbers) {
    using Case = std::pair<const char*, DateTime>;
    const DateTime before(2000, 1, 2, 3, 4, 5);
    for (const auto& [shown, expected] :
         {Case{"2011-07-12-14-20-24", DateTime(2011, 7, 12, 14, 20, 24)},
          Case{"2011-02-30-10-00-00", DateTime::Invalid()}, Case{"2011-02-03", before}, Case{"", before},
          Case{"Invalid DateTime", before}, Case{"2011-07-12-14-20-24-1", before},
          Case{"99-01-01-00-00-00", DateTime::Invalid()}, Case{"100-01-01-00-00-00", DateTime(100, 1, 1)},
          Case{"9999-12-31-23-59-59", DateTime(9999, 12, 31, 23, 59, 59)},
          Case{"10000-01-01-00-00-00", DateTime::Invalid()}, Case{"2012-02-29-24-00-00", DateTime::Invalid()},
          Case{"-----", DateTime::Invalid()}}) {
        RecordWriter writer;
        WriteCountedString(&writer, shown);
        RecordReader reader(writer.DiskBytes());
        DateTime date = before;
        ReadDateField(&reader, date);
        EXPECT_EQ(date, expected) << shown;
        EXPECT_TRUE(reader.AtEnd());
        const std::string_view text = shown;
        EXPECT_EQ(ParseDateFieldText(text, date), std::count(text.begin(), text.end(), '-') == 5) << text;
    }
}

TEST(DateField, WritesTheThreeStatuses) {
    const std::pair<DateTime, const char*> cases[] = {{DateTime(2011, 7, 2, 4, 2, 4), "2011-07-02-04-02-04"},
                                                      {DateTime::Invalid(), "Invalid DateTime"},
                                                      {DateTime(), ""},
                                                      {DateTime(987, 1, 1), "0987-01-01-00-00-00"}};
    for (const auto& [date, text] : cases) {
        RecordWriter writer;
        WriteDateField(&writer, date);
        RecordReader reader(writer.DiskBytes());
        EXPECT_EQ(ReadCountedString(&reader), text);
    }
}

TEST(TextLine, ComesInPiecesOf1999Bytes) {
    RecordReader reader("first  \r\n" + std::string(2500, 'x') + "\r\n\r\nlast");
    std::string line;
    std::vector<size_t> lengths;
    while (ReadTextLine(&reader, line))
        lengths.push_back(line.size());
    EXPECT_EQ(lengths, (std::vector<size_t>{5, 1999, 501, 0, 4}));
}

TEST(LongListFile, IsWrittenAndReadAsItIs) {
    const TempFolder folder;
    const LongList list{5, -3, 0, INT_MAX, INT_MIN, 5};
    ASSERT_TRUE(SaveLongListFile(list, folder / "list.dat").Ok());
    LongList read{1};
    EXPECT_TRUE(LoadLongListFile(read, folder / "list.dat").Ok());
    EXPECT_EQ(read, list);
    EXPECT_TRUE(LoadLongListFile(read, folder / "none.dat").Missing());
    EXPECT_TRUE(read.IsEmpty());
    std::unique_ptr<RecordReader> reader;
    EXPECT_TRUE(OpenRecordFile(folder / "list.dat", reader).Ok());
    EXPECT_FALSE(OpenRecordFile(folder / "none.dat", reader).Ok());
    EXPECT_EQ(reader, nullptr) << "what was open before";
    EXPECT_FALSE(SaveLongListFile(list, folder / "none" / "list.dat").Ok());
}

TEST(StoredBool, IsAnyNumberAboveZero) {
    RecordWriter writer;
    WriteStoredBool(&writer, true);
    WriteStoredBool(&writer, false);
    WriteFixedInt(&writer, -1);
    WriteFixedInt(&writer, 1);
    RecordReader reader(writer.DiskBytes());
    for (const bool wanted : {true, false, false, true, false})
        EXPECT_EQ(ReadStoredBool(&reader), wanted);
}

TEST(LongListFile, HoldsGiantCountsToTheFile) {
    RecordReader reader(
        "0000002000000000"
        "0000000000000008");
    LongList list;
    ReadLongList(&reader, list);
    EXPECT_EQ(list.Count(), 1u + kMaxMadeUpEntries);
    RecordReader negative("-000000000000005"), filledUp("00000000000000030000000000000008");
    ReadLongList(&negative, list);
    EXPECT_TRUE(list.IsEmpty());
    ReadLongList(&filledUp, list);
    EXPECT_EQ(list, (LongList{8, 0, 0}));
}

}  // namespace
}  // namespace lore
