#include <gtest/gtest.h>

#include "exchange/archive_check.h"
#include "exchange/raw_zip.h"
#include "exchange/zip_reader.h"
#include "support/data_files.h"
#include "support/each.h"
#include "support/read_world.h"

namespace lore {
namespace {

class HostileZip : public testing::Test {
protected:
    TempFolder folder_;
    ZipReader reader_;

    ArchiveResult Open(const std::string& bytes) {
        PutBytes(folder_ / "a.lbe", bytes);
        return reader_.Open(folder_ / "a.lbe");
    }
    std::vector<std::string> Names() const { return Each(reader_.Items(), &ZipItem::name); }
};

RawEntry Plain(std::string name, std::string bytes = "content") {
    RawEntry entry;
    entry.name = std::move(name);
    entry.bytes = std::move(bytes);
    return entry;
}

template <typename Change>
RawEntry Changed(Change change) {
    RawEntry entry = Plain("x.txt");
    change(entry);
    return entry;
}

TEST_F(HostileZip, CutsNamesToTheirLastComponent) {
    using Case = std::pair<std::string, const char*>;  // no name: left out
    for (const auto& [name, taken] : {Case{"a.txt", "a.txt"},
                                      Case{"../../a.txt", "a.txt"},
                                      Case{"..\\..\\a.txt", "a.txt"},
                                      Case{"/etc/passwd", "passwd"},
                                      Case{"C:\\windows\\a.txt", "a.txt"},
                                      Case{"C:a.txt", "a.txt"},
                                      Case{"a b.txt", "a b.txt"},
                                      Case{"folder/a.txt:stream", "a.txt:stream"},
                                      Case{"0000001.12:30", "0000001.12:30"},
                                      Case{"C:0000001.12:30", "0000001.12:30"},
                                      Case{"c:D:a.txt", "a.txt"},
                                      Case{"1:a.txt", "1:a.txt"},
                                      Case{":a.txt", ":a.txt"},
                                      Case{"[:a.txt", "[:a.txt"},
                                      Case{"{:a.txt", "{:a.txt"},
                                      Case{"c:..", nullptr},
                                      Case{"a/..", nullptr},
                                      Case{"..", nullptr},
                                      Case{".", nullptr},
                                      Case{"c:", nullptr},
                                      Case{std::string("a\0.txt", 6), nullptr},
                                      Case{"a\n.txt", nullptr},
                                      Case{"", nullptr},
                                      Case{std::string(5000, 'n'), nullptr},
                                      Case{"d/" + std::string(255, 'n'), nullptr},
                                      Case{"caf\xE9.txt", "caf\xC3\xA9.txt"},
                                      Case{"caf\xC3\xA9.txt", "caf\xC3\xA9.txt"}}) {
        SCOPED_TRACE(name.substr(0, 40));
        ASSERT_TRUE(Open(RawZip({Plain(name), Plain("other")})).Ok());
        if (name.size() == 257) {
            EXPECT_EQ(Names().size(), 2u) << "255 bytes are a name";
            continue;
        }
        EXPECT_EQ(Names(), taken ? (std::vector<std::string>{taken, "other"}) : std::vector<std::string>{"other"});
        EXPECT_EQ(reader_.LeftOut().size(), taken ? 0u : 1u);
    }
    ASSERT_TRUE(Open(RawZip({Plain("a \x1f\n")})).Ok());
    EXPECT_EQ(reader_.LeftOut(), std::vector<std::string>{"The entry \"a ??\" has no name that a file could have"});
}

TEST_F(HostileZip, PassesFoldersOverAndTakesTheFirstOfEqualNames) {
    RawEntry folder = Plain("things/", "");
    RawEntry unixFolder = Plain("more", "");
    unixFolder.mode = 0040755;
    ASSERT_TRUE(Open(RawZip({folder, unixFolder, Plain("of windows\\", ""), Plain("a.txt", "first"),
                             Plain("A.TXT", "second"), Plain("x/a.txt", "third")}))
                    .Ok());
    EXPECT_EQ(Names(), (std::vector<std::string>{"a.txt", "A.TXT"}));
    EXPECT_EQ(reader_.LeftOut(),
              std::vector<std::string>{"The entry \"x/a.txt\" stands twice; the first one was taken"});
    for (const auto& [name, content] : {std::pair("a.txt", "first"), std::pair("A.TXT", "second")}) {
        std::string bytes;
        ASSERT_TRUE(reader_.Read(*reader_.Find(name), bytes).Ok());
        EXPECT_EQ(bytes, content);
    }
}

TEST_F(HostileZip, TakesEntriesInTheOrderOfTheDirectory) {
    ASSERT_TRUE(Open(RawZip({Plain("a.txt", "one"), Plain("b.txt", "two")}, {.isBackwards = true})).Ok());
    EXPECT_EQ(Names(), (std::vector<std::string>{"b.txt", "a.txt"}));
    std::string bytes;
    ASSERT_TRUE(reader_.Read(*reader_.Find("b.txt"), bytes).Ok());
    EXPECT_EQ(bytes, "two");
    // Nothing of one archive is left when the next one is opened.
    ASSERT_TRUE(Open(RawZip({Plain("c.txt")})).Ok());
    EXPECT_EQ(reader_.Find("a.txt"), nullptr);
    EXPECT_EQ(reader_.Find("A.TXT"), nullptr);
}

TEST_F(HostileZip, RefusesTheWholeArchive) {
    const std::string zeros(80'000'000, '\0');
    RawEntry bomb = Plain("bomb", zeros);
    bomb.deflated = true;
    RawEntry second = Plain("b");
    second.offset = 0;
    second.localName = "a";
    RawEntry again = Plain("a");
    again.offset = 0;
    RawEntry inside = Plain("in.txt");
    inside.offset = 3;
    std::string noDirectory = RawZip({Plain("a")});
    noDirectory[noDirectory.find("PK\1\2") + 3] = 3;
    const struct {
        const char* what;
        std::string bytes, says;
    } cases[] = {
        {"nothing", "", "breaks off"},
        {"text", std::string(100, 'x'), "not an archive"},
        {"link", RawZip({Changed([](RawEntry& e) { e.mode = 0120777; })}), "link or a device"},
        {"device", RawZip({Changed([](RawEntry& e) { e.mode = 0020666; })}), "link or a device"},
        {"pipe", RawZip({Changed([](RawEntry& e) { e.mode = 0010666; })}), "link or a device"},
        {"encrypted", RawZip({Changed([](RawEntry& e) { e.flags = 1; })}), "encrypted"},
        {"strong encryption", RawZip({Changed([](RawEntry& e) { e.flags = 0x41; })}), "encrypted"},
        {"method", RawZip({Changed([](RawEntry& e) { e.method = 12; })}), "isn't known here"},
        {"two sizes", RawZip({Changed([](RawEntry& e) { e.announced = 6; })}), "two sizes"},
        {"two names", RawZip({Changed([](RawEntry& e) { e.localName = "y.txt"; })}), "two names"},
        {"longer name", RawZip({Changed([](RawEntry& e) { e.localName = "x.txt1"; })}), "two names"},
        {"4 GB claim", RawZip({Changed([](RawEntry& e) {
             e.deflated = true;
             e.announced = 0xfffffffe;
         })}),
         "thousand times"},
        {"large number without a field", RawZip({Changed([](RawEntry& e) { e.announced = 0xffffffff; })}), "entry 1"},
        {"bomb", RawZip({bomb}), "thousand times"},
        {"beyond the end", RawZip({Changed([](RawEntry& e) { e.announced = e.announcedPacked = 5000; })}),
         "beyond its end"},
        {"offset beyond", RawZip({Changed([](RawEntry& e) { e.offset = 70000; })}), "where the directory says"},
        {"offset inside", RawZip({Plain("a"), inside}), "where the directory says"},
        {"overlap", RawZip({Plain("a"), again}), "overlap"},
        {"overlap by another name", RawZip({Plain("a"), second}), "two names"},
        {"too many entries", RawZip({Plain("a")}, {.entries = 65534}), "claims 65534"},
        {"more entries than the directory", RawZip({Plain("a"), Plain("b")}, {.entries = 3}), "directory"},
        {"no directory", noDirectory, "damaged at entry 1"},
        {"directory too long", RawZip({Plain("a")}, {.size = 5000}), "breaks off"},
        {"directory elsewhere", RawZip({Plain("a")}, {.offset = 0}), "damaged"},
        {"volumes", RawZip({Plain("a")}, {.disk = 3}), "volumes"},
        {"no room for the large form", RawZip({}, {.entries = 65535}), "claims 65535"},
        {"many small bombs", RawZip({2, Changed([](RawEntry& e) {
                                         e.deflated = true;
                                         e.announced = 1 << 20;
                                     })}),
         "it would unpack"},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.what);
        const ArchiveResult result = Open(c.bytes);
        EXPECT_EQ(result.kind, ArchiveResult::Kind::Failed);
        EXPECT_NE(result.reason.find(c.says), std::string::npos) << result.reason;
        EXPECT_TRUE(reader_.Items().empty());
    }
}

TEST_F(HostileZip, TakesBytesBehindTheEndForNoPartOfIt) {
    const std::string good = RawZip({Plain("a.txt")}), most(65535, '\0');
    std::string commented = good + "PK\5\6" + std::string(18, '\0') + "ab";
    commented[good.size() - 2] = 24;
    const std::pair<std::string, bool> cases[] = {{good + "\n", true}, {good + "\r\n-- \r\nlist\r\n", true},
                                                  {good + most, true}, {good + most + '\0', false},
                                                  {commented, true},   {commented + "\n", false}};
    for (const auto& [bytes, isTaken] : cases) {
        EXPECT_EQ(Open(bytes).Ok(), isTaken) << bytes.size();
        EXPECT_EQ(Names(), isTaken ? std::vector<std::string>{"a.txt"} : std::vector<std::string>{});
    }
}

/// Archives whose ends take the form for large archives.
TEST_F(HostileZip, JudgesTheEndOfLargeArchives) {
    const struct {
        size_t marked;  // place in the end of what says that the large form counts
        uint64_t entries, mark, beyond, locator;
        const char* says;
    } cases[] = {{8, uint64_t{1} << 32, 0x06064b50, 0, 0x07064b50, "claims 4294967296"},
                 {8, 1, 0x06064b50, 0, 0x07064b50, ""},
                 {12, 1, 0x06064b50, 0, 0x07064b50, ""},
                 {16, 1, 0x06064b50, 0, 0x07064b50, ""},
                 {8, 1, 0x06064b51, 0, 0x07064b50, "its directory is damaged"},
                 {8, 1, 0x06064b50, 1, 0x07064b50, "its directory is damaged"},
                 {8, 1, 0x06064b50, 1 << 20, 0x07064b50, "its directory is damaged"},
                 {8, 1, 0x06064b50, 0, 0x07064b51, "claims 65535"}};
    const std::string small = RawZip({Plain("a")});
    for (const auto& c : cases) {
        std::string bytes = small.substr(0, small.size() - 22), end = small.substr(small.size() - 22);
        const uint64_t place = bytes.size();
        PutNumber(bytes, c.mark, 4);
        PutNumber(bytes, 44, 8);
        PutNumber(bytes, 45 | 45 << 16, 4);
        PutNumber(bytes, 0, 8);
        for (const uint64_t number : {c.entries, c.entries, uint64_t{47}, uint64_t{38}})
            PutNumber(bytes, number, 8);
        PutNumber(bytes, c.locator, 4);
        PutNumber(bytes, 0, 4);
        PutNumber(bytes, place + c.beyond, 8);
        PutNumber(bytes, 1, 4);
        end.replace(c.marked, 4, "\xff\xff\xff\xff");
        const ArchiveResult result = Open(bytes + end);
        EXPECT_EQ(result.Ok(), *c.says == '\0') << result.reason;
        EXPECT_NE(result.reason.find(c.says), std::string::npos) << result.reason;
    }
}

TEST_F(HostileZip, NeverUnpacksMoreThanIsAnnouncedAndChecksTheSum) {
    RawEntry lying = Plain("x.txt", std::string(100'000, 'a'));
    lying.deflated = true;
    lying.announced = 10;
    RawEntry shorter = lying;
    shorter.announced = 200'000;
    RawEntry wrong = Plain("x.txt");
    wrong.wrongCrc = true;
    for (const RawEntry& entry : {lying, shorter, wrong}) {
        if (!Open(RawZip({entry})).Ok())
            continue;
        EXPECT_FALSE(reader_.Extract(reader_.Items()[0], folder_ / "out").Ok());
        EXPECT_FALSE(std::filesystem::exists(folder_ / "out")) << "nothing is left behind";
        std::string bytes;
        EXPECT_FALSE(reader_.Read(reader_.Items()[0], bytes).Ok());
        EXPECT_TRUE(bytes.empty());
    }
}

TEST_F(HostileZip, SurvivesACutAndAChangeAtEveryByte) {
    RawEntry packed = Plain("0000001.txt", std::string(300, 'a'));
    packed.deflated = true;
    const std::string good = RawZip({Plain("_ExpNotes.dat", "records"), packed});
    const auto readAll = [&](const std::string& bytes) {
        if (!Open(bytes).Ok())
            return;
        for (const ZipItem& item : reader_.Items()) {
            std::string unpacked;
            const bool isRead = reader_.Read(item, unpacked).Ok();
            EXPECT_EQ(unpacked.size(), isRead ? item.size : 0);
        }
    };
    for (size_t length = 0; length < good.size(); ++length) {
        readAll(good.substr(0, length));
        EXPECT_TRUE(reader_.Items().empty()) << "cut at " << length;
    }
    for (size_t at = 0; at < good.size(); ++at) {
        for (const int value : {0, 1, 0x7f, 0x80, 0xff}) {
            std::string bytes = good;
            bytes[at] = static_cast<char>(value);
            readAll(bytes);
        }
    }
}

/// What the fuzz program starts from, and what it found.
TEST(ArchiveCorpus, IsReadWithoutHarm) {
    const TempFolder folder(MemoryFolder());
    for (const std::filesystem::path& file : CorpusFiles(LORE_TEST_DATA, "archive"))
        EXPECT_EQ(CheckArchive(BytesOf(file), folder.Path()), "") << file;
}

}  // namespace
}  // namespace lore
