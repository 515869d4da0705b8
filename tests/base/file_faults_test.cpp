#include <cerrno>
#include <functional>
#include <gtest/gtest.h>

#include "base/dat_files.h"
#include "base/file_copy.h"
#include "base/file_descriptor.h"
#include "base/file_io.h"
#include "base/prepared_file.h"
#include "base/record_file.h"
#include "support/faults.h"
#include "support/read_world.h"

namespace lore {
namespace {

class FileFaults : public ::testing::Test {
protected:
    /// "a.dat" holds "old", "link.dat" names it, "from" is longer than one piece of a copy.
    void Prepare() {
        for (const auto& entry : std::filesystem::directory_iterator(folder_.Path()))
            std::filesystem::remove_all(entry);
        std::ofstream(folder_ / "a.dat") << "old";
        std::ofstream(folder_ / "from") << long_;
        std::filesystem::create_symlink("a.dat", folder_ / "link.dat");
    }

    const TempFolder folder_{MemoryFolder()};
    const std::string long_ = std::string(100'000, 'x') + "end";
};

struct Change {
    const char* name;
    std::function<FileResult(const TempFolder&)> make;
    const char* target;
    std::string after;
    int mayFail;      // calls whose failure changes nothing, such as those of a comparison with what is there
    int interrupted;  // of the others, those that are made again after a signal
};

TEST_F(FileFaults, AChangeIsToldAsMadeOnlyIfEachOfItsCallsWas) {
    std::filesystem::path kept;
    RecordWriter list;
    WriteLongList(&list, {7});
    const Change changes[] = {
        {"write", [](const auto& f) { return WriteFileAtomically(f / "a.dat", "new"); }, "a.dat", "new", 4, 3},
        {"link", [](const auto& f) { return WriteFileAtomically(f / "link.dat", "new"); }, "a.dat", "new", 4, 3},
        {"longer", [](const auto& f) { return WriteFileAtomically(f / "a.dat", "longer"); }, "a.dat", "longer", 1, 3},
        {"replace", [](const auto& f) { return ReplaceFile(f / "a.dat", "new"); }, "a.dat", "new", 3, 2},
        {"list", [](const auto& f) { return SaveLongListFile({7}, f / "a.dat"); }, "a.dat", list.Logical(), 1, 3},
        {"copy", [](const auto& f) { return CopyFileAtomically(f / "from", f / "a.dat"); }, "a.dat", long_, 2, 7},
        {"keep", [&](const auto& f) { return KeepCopy(f / "from", kept); }, "from.kept", long_, 2, 7},
        {"folders",
         [](const auto& f) {
             const FileResult made = MakeFolders(f / "new");
             return made.Ok() ? WriteFileAtomically(f / "new" / "b.dat", "new") : made;
         },
         "new/b.dat", "new", 2, 4},
        {"remove", [](const auto& f) { return RemoveFile(f / "a.dat"); }, "a.dat", "", 1, 1},
    };
    for (const Change& change : changes) {
        for (const int error : {EIO, ENOSPC, EINTR}) {
            SCOPED_TRACE(std::string(change.name) + " " + std::to_string(error));
            int untold = 0;
            std::string before;
            const auto prepare = [&] { Prepare(), before = BytesOf(folder_ / change.target); };
            const auto check = [&](const FileResult& result, bool failed) {
                const std::string now = BytesOf(folder_ / change.target);
                untold += failed && result.Ok();
                EXPECT_TRUE(result.Ok() || (failed && result.error == error));
                EXPECT_TRUE(now == change.after || (!result.Ok() && now == before)) << now.size();
                EXPECT_FALSE(HasTemporary(folder_.Path()));
                EXPECT_TRUE(std::filesystem::is_symlink(folder_ / "link.dat")) << "written through";
                EXPECT_TRUE(change.make(folder_).Ok()) << "tried again";
                EXPECT_EQ(BytesOf(folder_ / change.target), change.after);
            };
            EXPECT_GT(FailEachCall(
                          folder_.Path(), error, false, prepare, [&] { return change.make(folder_); }, check),
                      3);
            EXPECT_EQ(untold, change.mayFail + (error == EINTR ? change.interrupted : 0));
            if (error != EINTR)
                FailEachCall(
                    folder_.Path(), error, true, prepare, [&] { return change.make(folder_); },
                    [&](const FileResult& result, bool failed) {
                        EXPECT_TRUE(!failed || result.error == error ||
                                    BytesOf(folder_ / change.target) == change.after);
                    });
        }
    }
}

TEST_F(FileFaults, APreparedFileTakesItsPlaceOnlyWhenItIsWholeAndAsked) {
    for (const char* const name : {"a.dat", "link.dat", "new.dat"}) {
        const std::string before = (Prepare(), BytesOf(folder_ / name));
        bool stands = false;
        const long calls = FailEachCall(
            folder_.Path(), ENOSPC, false, [this] { Prepare(); },
            [&] {
                PreparedFile file;
                const FileResult prepared = file.Prepare(folder_ / name, "newer");
                const FileResult committed = file.Commit();
                stands = file.HasTakenPlace();
                return prepared.Ok() && committed.Ok();
            },
            [&](bool isDone, bool) {
                EXPECT_EQ(BytesOf(folder_ / name), stands ? "newer" : before);
                EXPECT_TRUE(stands || !isDone);
                EXPECT_FALSE(HasTemporary(folder_.Path()));
            });
        EXPECT_GT(calls, 5);
        Prepare();
        EXPECT_TRUE(PreparedFile().Prepare(folder_ / name, "newer").Ok());
        EXPECT_EQ(BytesOf(folder_ / name), before) << "given up";
        EXPECT_FALSE(HasTemporary(folder_.Path()));
    }
}

TEST_F(FileFaults, AFolderThatItsFileSystemCantFlushIsNoFault) {
    for (const auto& [error, expected] : {std::pair{EIO, 2}, {EINVAL, 1}, {EOPNOTSUPP, 1}, {EBADF, 1}}) {
        int told = 0;  // that the folder can't be opened always is
        FailEachCall(
            folder_.Path(), error, false, [] {}, [&] { return FlushFolder(folder_.Path()); },
            [&](const FileResult& result, bool) { told += !result.Ok(); });
        EXPECT_EQ(told, expected) << error;
    }
}

TEST_F(FileFaults, AFileThatCantBeReadGivesNothingAndTheReason) {
    std::string bytes;
    LongList list;
    std::vector<std::string> names;
    struct Reading {
        std::function<FileResult()> read;
        std::function<size_t()> amount;
        size_t whole;
        int mayFail, interrupted;
    };
    const Reading readings[] = {
        {[&] { return ReadFile(folder_ / "from", bytes = "before"); }, [&] { return bytes.size(); }, long_.size(), 1,
         1},
        {[&] { return ReadFileOrStream(folder_ / "from", bytes = "before"); }, [&] { return bytes.size(); },
         long_.size(), 1, 1},
        {[&] {
             return LoadLongListFile(list = {1, 2}, folder_ / "list");
         },
         [&] { return list.Count(); }, 3, 1, 1},
        {[&] { return ReadDatFiles(folder_.Path(), names); }, [&] { return names.size(); }, 2, 0, 0},
    };
    Prepare();
    ASSERT_TRUE(SaveLongListFile({7, 8, 9}, folder_ / "list").Ok());
    for (const Reading& reading : readings) {
        for (const int error : {EIO, EACCES, EINTR}) {
            int untold = 0;
            FailEachCall(
                folder_.Path(), error, false, [] {}, reading.read,
                [&](const FileResult& result, bool failed) {
                    untold += failed && result.Ok();
                    EXPECT_TRUE(result.Ok() || (failed && result.error == error));
                    EXPECT_EQ(reading.amount(), result.Ok() ? reading.whole : 0u);
                });
            EXPECT_EQ(untold, reading.mayFail + (error == EINTR ? reading.interrupted : 0));
        }
    }
}

}  // namespace
}  // namespace lore
