#include <cerrno>
#include <functional>
#include <gtest/gtest.h>

#include "base/file_copy.h"
#include "bibliography/source_builder.h"
#include "notes/file_faults.h"
#include "notes/note_book_loader.h"
#include "notes/note_builder.h"
#include "notes/note_cleaner.h"
#include "notes/note_store.h"
#include "notes/notebook_lists.h"
#include "ports/background.h"
#include "support/faults.h"
#include "support/note_reading.h"

namespace lore {
namespace {

CNote Changed(const CNote& note) {
    return WithKeyWords(note, "changed");
}

class NoteFaults : public NoteBookTest {
protected:
    using Files = std::map<std::string, std::string>;

    std::string Path(const std::string& name) const { return disk.paths.NoteFile(name).string(); }
    /// Notes 1 and 2, and `rest` behind them, in one file, note 3 in another.
    void Prepare(const std::string& rest) {
        for (const auto& entry : std::filesystem::directory_iterator(disk.paths.Notes()))
            std::filesystem::remove(entry);
        PutBytes(Path(kFirst), NoteFileBytes(firstTwo) + rest);
        disk.Put(kThird, {SourceNote(3, {6})});
        book.index = {};
        for (const int32_t id : {1, 2, 3})
            book.index.AddToIndex(Path(id == 3 ? kThird : kFirst), id);
        faults.faults.clear();
    }
    /// What lies in the folders of the NoteBook; what was kept beside a file isn't counted if `dataOnly`.
    Files AllFiles(bool dataOnly = true) const {
        Files files = FilesBelow(disk.paths.Folder());
        std::erase_if(files, [&](const auto& file) { return dataOnly && file.first.ends_with(".kept"); });
        return files;
    }
    bool IsHeld(const std::string& bytes) const {
        const Files files = AllFiles(false);
        return std::any_of(files.begin(), files.end(),
                           [&](const auto& file) { return file.second.find(bytes) != std::string::npos; });
    }

    bool Change(const LongList& ids) {
        const auto change = [](CNote& note) {
            note = Changed(note);
            return true;
        };
        return store.ChangeNotes(ids, change).IsEmpty();
    }
    bool Delete(const LongList& ids) {
        store.DeleteNotes(ids);
        return std::none_of(ids.begin(), ids.end(), [&](int32_t id) { return book.index.Contains(id); });
    }
    /// Each note of the files is the one of its number, and there are at least so many.
    void CheckNotes(size_t fewest) {
        std::set<int32_t> ids;
        for (const std::string& name : {kFirst, kThird, std::string("SRC0000000007.dat")}) {
            for (const CNote& note : NotesOfFile(Path(name), world.context)) {
                ids.insert(note.id);
                EXPECT_EQ(note.guid, DayNote(note.id).guid);
            }
        }
        EXPECT_GE(ids.size(), fewest);
    }
    bool HasLenses() const {
        const CProCategoryTree* const lights = book.categories.FindRootByName("Lights");
        return lights && lights->FindChildByName("Lenses");
    }
    /// How many faults say this.
    long Told(const char* what) const {
        return std::count_if(faults.faults.begin(), faults.faults.end(),
                             [&](const Fault& fault) { return fault.what.find(what) != std::string::npos; });
    }

    const std::string kFirst = "SRC0000000005.dat", kThird = "SRC0000000006.dat", kRest = "rest of a note";
    const std::vector<CNote> firstTwo = {SourceNote(1, {5}), SourceNote(2, {5})};
    NoteStore store{book, world.context, faults, nullptr};
};

TEST_F(NoteFaults, ANoteIsAsItWasOrAsItBecomesAndWhatFailsIsTold) {
    const auto save = [&] {
        return store.SaveNotes({Changed(SourceNote(1, {6})), Changed(SourceNote(2, {5})), SourceNote(4, {7})})
            .IsEmpty();
    };
    const auto change = [&] { return Change({1, 2, 3}); };
    const auto remove = [&] { return Delete({1, 3}); };
    const auto mend = [&] {
        std::filesystem::path kept;
        return store.MendFile(Path(kFirst), [&] { return KeepCopy(Path(kFirst), kept).Ok(); }).notes == 2;
    };
    const struct {
        const char* name;
        std::string rest;
        std::function<bool()> make;
        size_t fewest;  // notes on the disk
    } works[] = {
        {"save", "", save, 3},     {"save into a damaged file", kRest, save, 3},
        {"change", "", change, 3}, {"delete", "", remove, 1},
        {"mend", kRest, mend, 3},
    };
    for (const auto& work : works) {
        SCOPED_TRACE(work.name);
        Prepare(work.rest);
        EXPECT_TRUE(work.make());
        const size_t told = faults.faults.size();
        const Files after = AllFiles();
        const auto check = [&](bool made, bool) {
            EXPECT_TRUE((made && faults.faults.size() == told && AllFiles() == after) || !made ||
                        faults.faults.size() > told);
            CheckNotes(work.fewest);
            EXPECT_TRUE(IsHeld(work.rest));
            EXPECT_FALSE(HasTemporary(disk.folder.Path()));
            EXPECT_TRUE(work.make() || made) << "tried again";
            EXPECT_EQ(AllFiles(), after);
        };
        EXPECT_GT(FailEachCall(
                      disk.folder.Path(), EIO, false, [&] { Prepare(work.rest); }, work.make, check),
                  15);
    }
}

TEST_F(NoteFaults, OfADamagedFileThatCouldNotBeKeptThatIsToldAndNothingIsWritten) {
    for (const bool lasting : {false, true}) {
        size_t kept = 0, lost = 0;
        const auto change = [&] { return Change({1, 2}); };
        const auto check = [&](bool made, bool) {
            const std::string before = NoteFileBytes(firstTwo) + kRest;
            for (const Fault& fault : faults.faults) {
                const std::string says = "is kept in ";
                if (const size_t at = fault.what.find(says); at != std::string::npos) {
                    ++kept;
                    EXPECT_EQ(BytesOf(Path(fault.what.substr(at + says.size()))), before);
                }
                if (fault.what.find("could not be kept") == std::string::npos)
                    continue;
                ++lost;
                EXPECT_FALSE(made);
                EXPECT_EQ(BytesOf(Path(kFirst)), before);
                EXPECT_FALSE(fault.reason.empty());
            }
        };
        EXPECT_GT(FailEachCall(
                      disk.folder.Path(), EIO, lasting, [&] { Prepare(kRest); }, change, check),
                  8);
        EXPECT_GT(kept, 1u);
        EXPECT_GT(lost, 1u);
    }
}

TEST_F(NoteFaults, ACopyOfAFileIsMendedByAsManyCallsHoweverManyNotesItHolds) {
    const auto callsFor = [&](int32_t notes) {
        Prepare("");
        book.index = {};
        std::vector<CNote> held;
        for (int32_t id = 1; id <= notes; ++id) {
            held.push_back(SourceNote(id, {5}));
            book.index.AddToIndex(Path(kFirst), id);
        }
        disk.Put(kFirst, held);
        disk.Put("copy.dat", held);
        FailCallBelow(disk.folder.Path().c_str(), 1'000'000, EIO);
        const NoteStore::Mending mending = store.MendFile(Path("copy.dat"), [] { return true; });
        const long calls = FailCallBelow("", 0, 0);
        EXPECT_EQ(mending.copies, held.size());
        return calls;
    };
    EXPECT_LE(callsFor(200), callsFor(2) + 10);
}

TEST_F(NoteFaults, AListThatWasntReadWholeIsKeptBeforeItIsWritten) {
    ASSERT_TRUE(ThreeAuthors().SaveAuthors(book.paths.Authors()).Ok());
    book.categories.AddRoot(PathOf({{3, "Lights"}, {4, "Lenses"}}));
    ASSERT_TRUE(book.categories.Save(book.paths.Categories()).Ok());
    CProCategoryList edited;
    const struct {
        std::filesystem::path file;
        std::function<void()> load;
        std::function<bool()> write;
    } lists[] = {{book.paths.Authors(),
                  [&] {
                      book.authors.LoadAuthors(book.paths.Authors());
                      book.authors.AddAuthor(Author(9, "New", "", "One"));
                  },
                  [&] { return WriteAuthors(book, faults); }},
                 {book.paths.Categories(),
                  [&] {
                      book.categories.Load(book.paths.Categories());
                      edited.Assign(book.categories);
                      edited.AddRoot({9, "New"});
                  },
                  [&] { return WriteCategories(book, edited, faults); }}};
    for (const auto& list : lists) {
        SCOPED_TRACE(list.file.filename());
        const std::string whole = BytesOf(list.file), cut = whole.substr(0, whole.size() - 10);
        const std::string kept = list.file.string() + ".kept";
        const auto prepare = [&] {
            Prepare("");
            PutBytes(list.file, cut);
            std::filesystem::remove(kept);
            std::filesystem::remove(list.file.string() + ".2.kept");
            list.load();
        };
        const auto check = [&](bool written, bool) {
            EXPECT_EQ(written, Told("could not be written") == 0);
            EXPECT_EQ(Told("is kept in ") + Told("could not be written"), static_cast<long>(faults.faults.size()));
            EXPECT_TRUE(Told("is kept in ") == 1 || BytesOf(list.file) == cut) << "not kept, not written";
            EXPECT_TRUE(IsHeld(cut));
            EXPECT_TRUE(list.write());
            EXPECT_GE(Told("is kept in "), 1);
            EXPECT_EQ(BytesOf(kept), cut);
            const Files files = AllFiles(false);
            faults.faults.clear();
            EXPECT_TRUE(list.write() && AllFiles(false) == files) << "it is whole now";
            EXPECT_TRUE(faults.faults.empty());
        };
        EXPECT_GT(FailEachCall(disk.folder.Path(), EIO, false, prepare, list.write, check), 8);
    }
}

TEST_F(NoteFaults, ALoadTellsWhatItMissesAndWritesNothingThatItDoesnt) {
    Prepare("");
    ASSERT_TRUE(ThreeAuthors().SaveAuthors(book.paths.Authors()).Ok());
    PutSources(book.paths, {FullSource(5), FullSource(6)}, ThreeAuthors());
    PutCategories(book.paths, {PathOf({{3, "Lights"}, {4, "Lenses"}})});
    const Files lists = AllFiles();
    CNote old = SourceNote(3, {6});
    old.categories[0] = PathOf({{-1, "Lights"}, {-1, "Lenses"}});
    IdCounters counters;
    const auto load = [&] {
        faults.faults.clear();
        CleanNoteFiles(book.paths, faults, nullptr);
        return LoadNoteBook(book, counters, world.context, faults, {}).shown.size();
    };
    for (const bool converts : {false, true}) {
        const auto prepare = [&] {
            Prepare("");
            disk.Put("SRC0000000009.dat", {});
            PutBytes(book.paths.Sources(), lists.at("Sources.dat"));
            PutBytes(book.paths.Categories(), lists.at("Categories.dat"));
            if (converts) {
                disk.Put(kThird, {old});
                std::filesystem::remove(book.paths.Categories());
            }
        };
        prepare();
        EXPECT_EQ(load(), 3u);
        const Files after = AllFiles();
        const auto check = [&](size_t shown, bool) {
            const bool isWhole =
                shown == 3 && book.sources.Count() == 2 && book.sources[1].AuthorIDs.Count() == 2 && HasLenses();
            EXPECT_TRUE(isWhole || !faults.faults.empty());
            EXPECT_EQ(load(), 3u);
            EXPECT_TRUE(faults.faults.empty());
            if (!converts) {
                EXPECT_EQ(AllFiles(), after);
            }
            // A file that couldn't be read while the others were converted keeps its old paths.
            EXPECT_TRUE(converts ? IsHeld("Lenses") : HasLenses());
        };
        for (const int error : {EIO, EACCES})
            EXPECT_GT(FailEachCall(disk.folder.Path(), error, false, prepare, load, check), 20);
    }
}

TEST(KeptFaults, AreToldLaterUnlessTheyWereMended) {
    KeptForLater kept;
    TellFailedWrite(kept, kSyncLogUnwritten, "a", {EIO});
    TellFailedWrite(kept, kSyncLogUnwritten, "a", {});
    TellFailedWrite(kept, kSyncLogUnwritten, "b", {EIO});
    NotedFaults faults;
    kept.TellAll(faults);
    ASSERT_EQ(faults.faults.size(), 1u);
    EXPECT_EQ(faults.faults[0].path, "b");
    EXPECT_EQ(faults.mended, std::vector<std::string>{kSyncLogUnwritten});
}

}  // namespace
}  // namespace lore
