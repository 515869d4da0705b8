#include "base/file_io.h"

#include <algorithm>
#include <chrono>
#include <csignal>
#include <fstream>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <thread>
#include <unistd.h>

#include "base/dat_files.h"
#include "base/file_copy.h"
#include "base/file_descriptor.h"
#include "support/read_world.h"

namespace {
bool refusesOwners = false;  // as a file system does that knows none
}

extern "C" int fchown(int number, uid_t owner, gid_t group) noexcept {
    errno = EPERM;
    return refusesOwners ? -1 : static_cast<int>(::syscall(SYS_fchown, number, owner, group));
}

namespace lore {
namespace {

class FileIo : public ::testing::Test {
protected:
    std::string Content(const char* name) const { return BytesOf(folder_ / name); }
    size_t Entries() const { return NamesIn(folder_.Path()).size(); }
    TempFolder folder_;
};

TEST_F(FileIo, LeavesAFileAloneUnlessAnyOfItsBytesWouldChange) {
    std::string bytes(50000, 'a');
    struct stat info[2] = {};
    for (struct stat& seen : info) {
        ASSERT_TRUE(WriteFileAtomically(folder_ / "a.dat", bytes).Ok());
        ::stat((folder_ / "a.dat").c_str(), &seen);
    }
    EXPECT_EQ(info[0].st_ino, info[1].st_ino);
    for (const size_t place : {size_t{0}, size_t{16383}, size_t{16384}, bytes.size() - 1}) {
        bytes[place] = 'b';
        ASSERT_TRUE(WriteFileAtomically(folder_ / "a.dat", bytes).Ok());
        EXPECT_EQ(Content("a.dat"), bytes) << place;
    }
}

TEST_F(FileIo, LeavesNothingOfWhatTheRoomHeldBefore) {
    for (const size_t length : {10, 70000, 3, 0})
        std::ofstream(folder_ / ("f" + std::to_string(length))) << std::string(length, 'x');
    std::string bytes = "before";
    for (const size_t length : {size_t{70000}, size_t{3}, size_t{10}, size_t{0}, size_t{10}}) {
        EXPECT_TRUE(ReadFile(folder_ / ("f" + std::to_string(length)), bytes).Ok());
        EXPECT_EQ(bytes, std::string(length, 'x'));
    }
    EXPECT_TRUE(ReadFile(folder_ / "none" / "a", bytes).Missing());
    EXPECT_FALSE(ReadFile(folder_ / "f3" / "none", bytes).Missing());
    EXPECT_EQ(bytes, "");
}

TEST_F(FileIo, TellsWhyAFileCouldNotBeWritten) {
    std::filesystem::create_directory(folder_ / "taken.dat");
    EXPECT_FALSE(WriteFileAtomically(folder_ / "taken.dat", "x").Ok());
    const FileResult missing = WriteFileAtomically(folder_ / "no" / "a.dat", "x");
    EXPECT_TRUE(missing.Missing());
    EXPECT_EQ(missing.Reason(), "No such file or directory");
    EXPECT_EQ(Entries(), 1u) << "no temporary file stays behind";
}

TEST_F(FileIo, ReadsAPipeToItsEnd) {
    const std::string sent(200000, 'x');
    int ends[2];
    ASSERT_EQ(::pipe(ends), 0);
    const pid_t child = ::fork();
    if (child == 0)
        ::_exit(::write(ends[1], sent.data(), sent.size()) == static_cast<ssize_t>(sent.size()) ? 0 : 1);
    ::close(ends[1]);
    std::string got;
    EXPECT_FALSE(ReadFile("/dev/fd/" + std::to_string(ends[0]), got).Ok());
    EXPECT_TRUE(ReadFileOrStream("/dev/fd/" + std::to_string(ends[0]), got).Ok());
    EXPECT_EQ(got, sent);
    ::waitpid(child, nullptr, 0);
    ::close(ends[0]);
}

TEST_F(FileIo, LeavesAloneWhatIsNoFile) {
    ASSERT_EQ(::mkfifo((folder_ / "pipe").c_str(), 0600), 0);
    std::filesystem::create_symlink("/dev/zero", folder_ / "zero");
    std::filesystem::create_symlink("pipe", folder_ / "link");
    std::filesystem::create_symlink("loop", folder_ / "loop");
    const size_t entries = Entries();
    std::string bytes;
    for (const char* const name : {"pipe", "zero", "link", "loop"}) {
        const std::filesystem::path path = folder_ / name;
        const auto before = std::filesystem::symlink_status(path).type();
        const std::string reason =
            name == std::string("loop") ? "Too many levels of symbolic links" : "Not a regular file";
        EXPECT_EQ(ReadFile(path, bytes).Reason(), reason) << name;
        EXPECT_EQ(WriteFileAtomically(path, "new").Reason(), reason) << name;
        EXPECT_EQ(ReplaceFile(path, "new").Reason(), reason) << name;
        EXPECT_EQ(std::filesystem::symlink_status(path).type(), before) << name;
    }
    EXPECT_EQ(Entries(), entries);
}

TEST_F(FileIo, KeepsThePermissionsOfWhatItReplaces) {
    const auto modeOf = [&](const std::string& name) {
        struct stat info = {};
        return ::stat((folder_ / name).c_str(), &info) == 0 ? info.st_mode & 07777 : 0;
    };
    for (const mode_t mode : {0600, 0640, 0666, 0444}) {
        std::ofstream(folder_ / "a.dat") << "old " << mode;
        ASSERT_EQ(::chmod((folder_ / "a.dat").c_str(), mode), 0);
        ASSERT_TRUE(WriteFileAtomically(folder_ / "a.dat", "new").Ok());
        EXPECT_EQ(modeOf("a.dat"), mode);
        std::filesystem::path kept;
        ASSERT_TRUE(KeepCopy(folder_ / "a.dat", kept).Ok());
        EXPECT_EQ(modeOf(kept.filename().string()) & ~(mode | 0200), 0u) << "nobody else may read the copy";
        std::filesystem::remove(folder_ / "a.dat");
    }
    for (const gid_t group : {::getegid(), gid_t{1}}) {
        std::ofstream(folder_ / "a.dat") << "old";
        if (::chown((folder_ / "a.dat").c_str(), static_cast<uid_t>(-1), group) != 0)
            continue;  // only an administrator may
        ASSERT_EQ(::chmod((folder_ / "a.dat").c_str(), 0664), 0);
        refusesOwners = true;
        EXPECT_TRUE(WriteFileAtomically(folder_ / "a.dat", "new").Ok());
        refusesOwners = false;
        EXPECT_EQ(modeOf("a.dat"), group == ::getegid() ? 0664u : 0644u) << "another group gets what anybody has";
    }
}

TEST_F(FileIo, WritesThroughALinkAlsoToAFileThatIsNotThere) {
    std::filesystem::create_directory(folder_ / "sub");
    std::filesystem::create_symlink("new.dat", folder_ / "sub" / "near");
    std::filesystem::create_symlink("sub/near", folder_ / "far");
    for (const char* const bytes : {"made", "replaced"}) {
        EXPECT_TRUE(WriteFileAtomically(folder_ / "far", bytes).Ok());
        EXPECT_EQ(Content("sub/new.dat"), bytes);
    }
    EXPECT_TRUE(std::filesystem::is_symlink(folder_ / "far") && std::filesystem::is_symlink(folder_ / "sub" / "near"));
}

TEST_F(FileIo, MakesTheFoldersThatLeadToAPlace) {
    std::ofstream(folder_ / "file") << "x";
    std::filesystem::create_symlink("gone", folder_ / "link");
    for (const char* const name : {"a/b/c", "a/b/c", "a/b/d/", ".", "e/."})
        EXPECT_TRUE(MakeFolders(folder_ / name).Ok()) << name;
    EXPECT_TRUE(std::filesystem::is_directory(folder_ / "a/b/c") && std::filesystem::is_directory(folder_ / "a/b/d"));
    for (const char* const name : {"file", "file/a", "link", "link/a"})
        EXPECT_FALSE(MakeFolders(folder_ / name).Ok()) << name;
    EXPECT_TRUE(MakeFolders("").Ok() && FlushFolder("").Ok()) << "the folder where the program runs";
}

TEST_F(FileIo, KnowsItsTemporaryNames) {
    for (const std::string& name :
         std::vector<std::string>{"a.dat", "x", ".hidden.", "a.1-2.tmp", std::string(255, 'x')}) {
        std::filesystem::path made;
        EXPECT_TRUE(MakeTemporary(folder_ / name, 0600, made)->IsOpen() && IsTemporaryName(made.filename().string()))
            << name;
    }
    for (const char* const name : {"", ".tmp", "..1-2.tmp", ".1-2.tmp", "a.1-2.tmp", ".a.tmp", ".a.1-.tmp", ".a.-2.tmp",
                                   ".a1-2.tmp", ".a.1-2.tmp.kept", ".a.1-2.dat", ".a.x-2.tmp"})
        EXPECT_FALSE(IsTemporaryName(name)) << name;
}

TEST_F(FileIo, PassesOverTemporaryNamesThatAProgramOfItsNumberHasLeft) {
    PutBytes(folder_ / "from", "new");
    std::filesystem::path made;
    MakeTemporary(folder_ / "a.dat", 0600, made);
    const std::string name = made.string();
    const size_t digits = name.rfind('-') + 1;
    // Of each five names one is free, so that both a single one and several are passed over.
    for (int next = std::stoi(name.substr(digits)) + 1, end = next + 40; next < end; next += next % 5 == 0 ? 2 : 1)
        PutBytes(name.substr(0, digits) + std::to_string(next) + ".tmp", "left");
    std::map<std::string, std::string> files = FilesBelow(folder_.Path());
    for (const char* const bytes : {"first", "second"}) {
        EXPECT_TRUE(WriteFileAtomically(folder_ / "a.dat", bytes).Ok());
        EXPECT_EQ(Content("a.dat"), bytes);
    }
    EXPECT_TRUE(CopyFileAtomically(folder_ / "from", folder_ / "a.dat").Ok());
    files["a.dat"] = "new";
    EXPECT_EQ(FilesBelow(folder_.Path()), files) << "those stay as they are";
}

TEST_F(FileIo, CopiesAFileAsAWholeOrNotAtAll) {
    const std::string bytes = std::string(200000, 'a') + "end";
    std::ofstream(folder_ / "from") << bytes;
    std::ofstream(folder_ / "to") << "old";
    std::filesystem::create_directory(folder_ / "folder");
    ASSERT_EQ(::mkfifo((folder_ / "pipe").c_str(), 0600), 0);
    const size_t entries = Entries();
    for (const char* const name : {"folder", "pipe", "none"}) {
        EXPECT_FALSE(CopyFileAtomically(folder_ / name, folder_ / "to").Ok()) << name;
        EXPECT_EQ(Content("to"), "old") << name;
    }
    EXPECT_FALSE(CopyFileAtomically(folder_ / "from", folder_ / "folder").Ok());
    EXPECT_TRUE(CopyFileAtomically(folder_ / "from", folder_ / "none" / "to").Missing());
    EXPECT_TRUE(CopyFileAtomically(folder_ / "from", folder_ / "to").Ok());
    EXPECT_EQ(Content("to"), bytes);
    EXPECT_EQ(Entries(), entries);
    for (const char* const name : {"from.kept", "from.2.kept", "from.3.kept"}) {
        std::filesystem::path kept;
        EXPECT_TRUE(KeepCopy(folder_ / "from", kept).Ok());
        EXPECT_EQ(kept.filename(), name);
        EXPECT_EQ(Content(name), bytes);
    }
}

TEST_F(FileIo, RemovesAFileAndSaysWhyItCouldNot) {
    std::ofstream(folder_ / "file") << "x";
    EXPECT_TRUE(RemoveFile(folder_ / "file").Ok());
    EXPECT_EQ(Entries(), 0u);
    EXPECT_TRUE(RemoveFile(folder_ / "file").Ok()) << "what is gone is removed";
    EXPECT_FALSE(RemoveFile(folder_.Path()).Ok());
}

TEST_F(FileIo, GoesOnWhenSignalsComeBetween) {
    struct sigaction action = {}, before = {};
    action.sa_handler = [](int) {};
    ASSERT_EQ(::sigaction(SIGUSR1, &action, &before), 0);
    const std::string sent(300000, 'x');
    int ends[2];
    ASSERT_EQ(::pipe(ends), 0);
    std::string got;
    std::thread reader([&, writer = ::pthread_self()] {
        char block[65536];
        for (ssize_t count = 1; count > 0 && got.size() < sent.size();) {
            for (int i = 0; i < 5; ++i) {
                std::this_thread::sleep_for(std::chrono::milliseconds(2));
                ::pthread_kill(writer, SIGUSR1);
            }
            count = ::read(ends[0], block, sizeof block);
            got.append(block, static_cast<size_t>(std::max<ssize_t>(count, 0)));
        }
    });
    EXPECT_TRUE(WriteAll(ends[1], sent));
    ::close(ends[1]);
    reader.join();
    ::close(ends[0]);
    ::sigaction(SIGUSR1, &before, nullptr);
    EXPECT_EQ(got.size(), sent.size());
}

TEST_F(FileIo, ListsFilesThatEndInDatInByteOrder) {
    for (const char* name : {"b.dat", "A.dat", "xdat", "c.dat.old", "d.DAT", ".hidden.dat"})
        std::ofstream(folder_ / name) << "x";
    std::filesystem::create_directory(folder_ / "folder.dat");
    std::filesystem::create_symlink("folder.dat", folder_ / "link to folder.dat");
    std::filesystem::create_symlink("b.dat", folder_ / "link.dat");
    EXPECT_EQ(ListDatFiles(folder_.Path()),
              (std::vector<std::string>{".hidden.dat", "A.dat", "b.dat", "link.dat", "xdat"}));
    std::vector<std::string> names{"old"};
    EXPECT_TRUE(ReadDatFiles(folder_ / "none", names).Missing());
    std::filesystem::create_symlink("away", folder_ / "dead");
    for (const char* const behind : {"dead", "dead/Notes", "dead/Notes/"}) {
        const FileResult dead = ReadDatFiles(folder_ / behind, names);
        EXPECT_FALSE(dead.Missing()) << behind;
        EXPECT_EQ(PlaceOfFault(folder_ / behind, dead), folder_ / "dead");
    }
    EXPECT_TRUE(names.empty());
    EXPECT_EQ(ReadDatFiles(folder_ / std::string(300, 'x'), names).error, ENAMETOOLONG);
    std::string bytes;
    EXPECT_TRUE(ReadFile(folder_ / "none", bytes).Missing());
    EXPECT_FALSE(ReadFile(folder_.Path(), bytes).Ok()) << "a folder is no file";
}

}  // namespace
}  // namespace lore
