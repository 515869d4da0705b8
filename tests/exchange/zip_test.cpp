#include <cstdlib>
#include <gtest/gtest.h>
#include <random>
#include <sys/stat.h>
#include <zlib.h>

#include "exchange/zip_reader.h"
#include "exchange/zip_writer.h"
#include "support/read_world.h"

namespace lore {
namespace {

ZipWriter::Watch Patient() {
    return {[](double) {}, [] { return false; }};
}

std::string RandomBytes(size_t count) {
    std::mt19937 random(1);
    std::string bytes(count, '\0');
    for (char& c : bytes)
        c = static_cast<char>(random());
    return bytes;
}

/// Words that pack well, but not to nothing.
std::string Words(size_t count) {
    std::mt19937 random(2);
    std::string text;
    while (text.size() < count)
        text += "lamp" + std::to_string(random() % 5000) + (random() % 9 == 0 ? "\r\n" : " ");
    return text;
}

/// Packs a text in pieces of this size.
void Pack(PackedStream& stream, std::string_view text, size_t piece) {
    ASSERT_TRUE(stream.Open().Ok());
    for (size_t at = 0; at < text.size(); at += piece)
        stream.Append(text.substr(at, piece));
    ASSERT_TRUE(stream.Finish().Ok());
}

bool Runs(const std::string& command) {
    return std::system((command + " >/dev/null 2>&1").c_str()) == 0;
}

class Zip : public testing::Test {
protected:
    TempFolder folder_;
    std::filesystem::path target_ = folder_ / "made.lbe";
    ZipReader reader_;

    std::string Unpacked(const std::string& name) {
        const ZipItem* const item = reader_.Find(name);
        std::string bytes;
        return item && reader_.Read(*item, bytes).Ok() ? bytes : "(not there)";
    }
};

TEST_F(Zip, MakesArchivesThatCommonToolsOpen) {
    const std::string records = Words(3'000'000), picture = RandomBytes(100'000), text = Words(70'000);
    PutBytes(folder_ / "0000001.JPG", picture);
    PutBytes(folder_ / "0000002.txt", text);
    PutBytes(folder_ / "0000003.", "");
    PackedStream stream(folder_ / "spool", 2);
    Pack(stream, records, 99'991);
    ZipWriter writer(4);
    for (const char* name : {"0000001.JPG", "0000002.txt", "0000003."})
        EXPECT_TRUE(writer.AddFile(name, folder_ / name));
    EXPECT_FALSE(writer.AddFile("0000001.JPG", folder_ / "0000002.txt")) << "stands there already";
    writer.AddPacked("_ExpNotes.dat", PackPiece("head", {}), stream);
    double last = 0;
    ASSERT_TRUE(writer.Write(target_, {[&](double part) { last = part; }, [] { return false; }}).Ok());
    EXPECT_EQ(last, 1.0);

    ASSERT_TRUE(reader_.Open(target_).Ok());
    ASSERT_EQ(reader_.Items().size(), 4u);
    EXPECT_EQ(reader_.Items()[0].name, "_ExpNotes.dat");
    EXPECT_EQ(Unpacked("_expnotes.DAT"), "head" + records);
    EXPECT_EQ(Unpacked("0000001.JPG"), picture);
    EXPECT_EQ(Unpacked("0000002.txt"), text);
    EXPECT_EQ(Unpacked("0000003."), "");
    EXPECT_EQ(reader_.Find("0000001.JPG")->packed, picture.size()) << "stored";
    EXPECT_LT(reader_.Find("_ExpNotes.dat")->packed, records.size() / 2);
    EXPECT_TRUE(Runs("unzip -t " + target_.string()));
    EXPECT_TRUE(Runs("python3 -m zipfile -t " + target_.string()));
}

TEST_F(Zip, PacksTheSameBytesOnAnyNumberOfThreads) {
    const std::string text = Words(2'000'000);
    std::vector<std::string> packed;
    for (const size_t threads : {size_t{0}, size_t{1}, size_t{4}}) {
        PackedStream stream(folder_ / "spool", threads);
        Pack(stream, text, 700'000);
        EXPECT_EQ(stream.Crc(), crc32(0, reinterpret_cast<const Bytef*>(text.data()), static_cast<uInt>(text.size())));
        EXPECT_EQ(stream.Size(), text.size());
        packed.push_back(BytesOf(folder_ / "spool"));
        EXPECT_EQ(stream.PackedSize(), packed.back().size());
    }
    EXPECT_EQ(packed[0], packed[1]);
    EXPECT_EQ(packed[0], packed[2]);
}

TEST_F(Zip, PacksWhatCannotGetSmallerAndWhatIsNearlyNothing) {
    const std::string far = RandomBytes(32'768);
    const std::string texts[] = {"x", RandomBytes(1'300'000), std::string(3'000'000, '\0'), far + far + far + far,
                                 RandomBytes(524'288) + Words(524'288) + RandomBytes(1)};
    for (const std::string& text : texts) {
        PackedStream stream(folder_ / "spool", 2);
        Pack(stream, text, 70'001);
        ZipWriter writer(4);
        writer.AddPacked("text", PackPiece("head", {}), stream);
        ASSERT_TRUE(writer.Write(target_, Patient()).Ok());
        ASSERT_TRUE(reader_.Open(target_).Ok());
        EXPECT_TRUE(Unpacked("text") == "head" + text) << text.size();
        EXPECT_LE(stream.PackedSize(), text.size() + text.size() / 100 + 64);
        EXPECT_TRUE(Runs("unzip -tq " + target_.string()));
    }
}

TEST_F(Zip, NeverPacksSoWellThatItsOwnArchiveIsRefused) {
    std::string rows;
    while (rows.size() < 3'000'000)
        rows += std::string(1'000, '\xff') + std::string(2, '\0');
    const struct {
        const char* what;
        std::string bytes;
        size_t least, most;  // how many bytes one packed byte may stand for
    } cases[] = {{"a white picture", std::string(30'000'000, '\xff'), 100, 500},
                 {"a file just above the small ones", std::string((256 << 10) + 1, '\0'), 100, 500},
                 {"a small file", std::string(256 << 10, '\0'), 500, 1050},
                 {"rows with an edge", rows, 100, 500},
                 {"words", Words(3'000'000), 2, 10},
                 {"noise", RandomBytes(300'000), 0, 1},
                 {"words behind zeros", std::string(20'000'000, '\0') + Words(3'000'000), 7, 100}};
    for (const auto& c : cases) {
        SCOPED_TRACE(c.what);
        for (const int level : {4, 9}) {
            PutBytes(folder_ / "file", c.bytes);
            ZipWriter writer(level);
            for (int i = 0; i < 2; ++i)
                ASSERT_TRUE(writer.AddFile("000000" + std::to_string(i) + ".bmp", folder_ / "file"));
            ASSERT_TRUE(writer.Write(target_, Patient()).Ok());
            const ArchiveResult opened = reader_.Open(target_);
            ASSERT_TRUE(opened.Ok()) << opened.reason;
            const ZipItem& item = *reader_.Find("0000000.bmp");
            EXPECT_GE(item.size / item.packed, c.least);
            EXPECT_LE(item.size / item.packed, c.most);
            EXPECT_TRUE(Unpacked("0000001.bmp") == c.bytes);
        }
        PackedStream stream(folder_ / "spool", 2);
        Pack(stream, c.bytes, 300'001);
        EXPECT_LT(stream.Size() / stream.PackedSize(), 100u) << "a record file is held closer";
    }
}

TEST_F(Zip, TellsThatThereWasNoRoomForWhatIsPacked) {
    PackedStream stream("/dev/full", 1);
    ASSERT_TRUE(stream.Open().Ok());
    for (int i = 0; i < 4; ++i)
        stream.Append(RandomBytes(1'000'000));
    EXPECT_EQ(stream.Finish().error, ENOSPC);
}

TEST_F(Zip, FindsTheNameItselfAndAnotherCaseOnlyWhereItIsTheOnlyOne) {
    ZipWriter writer(4);
    for (const std::string name : {"a.txt", "A.txt", "One.txt"}) {
        PutBytes(folder_ / name, name);
        ASSERT_TRUE(writer.AddFile(name, folder_ / name));
    }
    ASSERT_TRUE(writer.Write(target_, Patient()).Ok());
    ASSERT_TRUE(reader_.Open(target_).Ok());
    const std::pair<const char*, const char*> cases[] = {{"a.txt", "a.txt"},     {"A.txt", "A.txt"},
                                                         {"a.TXT", nullptr},     {"One.txt", "One.txt"},
                                                         {"oNE.TXT", "One.txt"}, {"b.txt", nullptr}};
    for (const auto& [name, found] : cases)
        EXPECT_EQ(Unpacked(name), found ? found : "(not there)") << name;
}

TEST_F(Zip, LeavesTheOldFileAndNothingElseWhenItFails) {
    PutBytes(target_, "old");
    PutBytes(folder_ / "a.txt", "text");
    ZipWriter writer(4);
    writer.AddFile("a.txt", folder_ / "a.txt");
    writer.AddFile("b.txt", folder_ / "gone.txt");
    const ArchiveResult failed = writer.Write(target_, Patient());
    EXPECT_EQ(failed.kind, ArchiveResult::Kind::Failed);
    EXPECT_FALSE(failed.reason.empty());
    ZipWriter odd(4);
    odd.AddFile("no text \xff", folder_ / "a.txt");
    EXPECT_EQ(odd.Write(target_, Patient()).kind, ArchiveResult::Kind::Failed);
    ZipWriter cancelled(4);
    cancelled.AddFile("a.txt", folder_ / "a.txt");
    EXPECT_EQ(cancelled.Write(target_, {[](double) {}, [] { return true; }}).kind, ArchiveResult::Kind::Cancelled);
    EXPECT_EQ(cancelled.Write(folder_ / "none" / "x.lbe", Patient()).kind, ArchiveResult::Kind::Failed);
    EXPECT_EQ(BytesOf(target_), "old");
    EXPECT_EQ(NamesIn(folder_.Path()), (std::set<std::string>{"a.txt", "made.lbe"}));
}

TEST_F(Zip, ExtractsNeverOverWhatIsThereNorThroughALink) {
    PutBytes(folder_ / "a.txt", "text");
    ZipWriter writer(4);
    writer.AddFile("a.txt", folder_ / "a.txt");
    ASSERT_TRUE(writer.Write(target_, Patient()).Ok());
    ASSERT_TRUE(reader_.Open(target_).Ok());
    const ZipItem& item = *reader_.Find("a.txt");
    EXPECT_TRUE(reader_.Extract(item, folder_ / "out").Ok());
    EXPECT_EQ(BytesOf(folder_ / "out"), "text");
    ASSERT_EQ(mkfifo((folder_ / "pipe").c_str(), 0600), 0);
    for (const std::string name : {"gone", "pipe", "."})
        EXPECT_FALSE(ZipReader().Open(folder_ / name).Ok()) << name;
    PutBytes(folder_ / "other", "kept");
    EXPECT_FALSE(reader_.Extract(item, folder_ / "other").Ok());
    ZipItem elsewhere = item;
    elsewhere.index = 1;
    EXPECT_FALSE(reader_.Extract(elsewhere, folder_ / "new").Ok());
    std::filesystem::create_symlink(folder_ / "new", folder_ / "link");
    EXPECT_FALSE(reader_.Extract(item, folder_ / "link").Ok());
    EXPECT_EQ(BytesOf(folder_ / "other"), "kept");
    EXPECT_FALSE(std::filesystem::exists(folder_ / "new"));
}

}  // namespace
}  // namespace lore
