#include <cerrno>
#include <dlfcn.h>
#include <gtest/gtest.h>
#include <map>
#include <sys/statvfs.h>

#include "edit/note_removal.h"
#include "exchange/exchange_world.h"
#include "exchange/import_undo.h"
#include "exchange/zip_reader.h"
#include "support/faults.h"

int64_t lore::bytesLeft = -1;

extern "C" int statvfs(const char* path, struct statvfs* info) noexcept {
    const int result = reinterpret_cast<decltype(&statvfs)>(dlsym(RTLD_NEXT, "statvfs"))(path, info);
    if (lore::bytesLeft >= 0)
        info->f_bavail = static_cast<uint64_t>(lore::bytesLeft) / info->f_frsize;
    return result;
}

namespace lore {
namespace {

/// What begins the paths of all folders that tests make: each call for one of them is counted.
std::filesystem::path AllFolders() {
    return MemoryFolder() / "lore-";
}

/// What the notes of a NoteBook are after a start, by guid.
struct Forms {
    std::map<std::string, std::string> texts;  ///< with the sources
    std::map<std::string, std::string> files;  ///< of the attachments that have one
    bool operator==(const Forms& other) const { return texts == other.texts && files == other.files; }
};

Forms FormsOf(ExchangeBook& made) {
    made.Load();
    Forms forms;
    for (const CNote& note : made.Notes()) {
        std::string& text = forms.texts[note.guid] = note.rtfText;
        for (const int32_t id : note.sources) {
            const CSource* const source = made.book.sources.FindSourceByID(id);
            text += "\n" + (source ? source->SourceGUID : "no source");
        }
        for (const CAttachment& attachment : note.attachments) {
            if (attachment.storedFile.empty())
                continue;
            EXPECT_TRUE(std::filesystem::exists(made.Attachment(attachment.storedFile)) ||
                        std::filesystem::exists(KeptFilesFolder(made.folder.paths) / attachment.storedFile))
                << note.rtfText;
            forms.files[note.guid + attachment.title] = BytesOf(made.Attachment(attachment.storedFile));
        }
    }
    return forms;
}

/// The files of an archive; none of what isn't a whole one.
std::map<std::string, std::string> MembersOf(const std::filesystem::path& path) {
    ZipReader reader;
    std::map<std::string, std::string> members;
    if (!reader.Open(path).Ok())
        return members;
    for (const ZipItem& item : reader.Items())
        EXPECT_TRUE(reader.Read(item, members[item.name]).Ok()) << item.name;
    return members;
}

TEST(ExchangeFaults, AnArchiveIsWholeOrAFailureIsToldWhicheverCallFails) {
    ExchangeBook made;
    FillBook(made);
    PutBytes(made.Attachment("0000002.txt"), std::string(300'000, 'l'));  // looked at before it is packed
    const std::vector<CNote> notes = made.Notes();
    const TempFolder folder{MemoryFolder()};
    const std::filesystem::path target = folder / "made.lbe";
    ASSERT_EQ(made.Export(target, notes), 2);
    const auto whole = MembersOf(target);
    for (const int error : {EIO, ENOSPC, EINTR}) {
        int untold = 0;
        const auto prepare = [&] {
            PutBytes(target, "old");
            made.prompts.seen.clear();
            made.faults.faults.clear();
        };
        const auto check = [&](int count, bool failed) {
            const bool isTold = !made.prompts.seen.empty() || !made.faults.faults.empty();
            untold += failed && !isTold;
            EXPECT_EQ(count, isTold && made.faults.faults.empty() ? -1 : 2);
            EXPECT_TRUE(MembersOf(target) == whole || (isTold && BytesOf(target) == "old"));
            EXPECT_FALSE(HasTemporary(folder.Path()));
            EXPECT_EQ(made.Export(target, notes), 2) << "tried again";
        };
        EXPECT_GT(FailEachCall(
                      AllFolders(), error, false, prepare, [&] { return made.Export(target, notes); }, check),
                  15);
        EXPECT_EQ(untold, error == EINTR ? 31 : 20);
    }
}

/// A NoteBook with an older form of a note of the archive, which has another file under the same name.
class ImportFaults : public testing::Test {
protected:
    ImportFaults() {
        FillBook(from_);
        EXPECT_EQ(from_.Export(archive_, from_.Notes()), 2);
        wanted_ = FormsOf(from_);
        older_.rtfText = "{\\rtf1 as it was}";
        older_.sources = {};
        chooser_.change = [](ImportComparison& comparison) { comparison.SetShowSame(true); };
    }
    void Prepare() {
        to_ = std::make_unique<ExchangeBook>();
        changes_ = {};
        to_->changes = &changes_;
        to_->folder.Put("DAY07122011.dat", {older_});
        PutBytes(to_->Attachment("0000001.png"), "the old picture");
        before_ = FormsOf(*to_);
    }
    std::optional<LongList> Undo() {
        return UndoImport(
            changes_, to_->book, to_->counters, [] {}, to_->world.context, to_->faults, nullptr);
    }
    bool IsTold() const { return !to_->prompts.seen.empty() || !to_->faults.faults.empty(); }
    /// What stands there after a start, of which each note is as it was or as it has become.
    Forms CheckedForms() {
        Forms now = FormsOf(*to_);
        EXPECT_TRUE(now.texts.contains(older_.guid));
        for (const auto& [guid, text] : now.texts)
            EXPECT_TRUE(text == wanted_.texts.at(guid) || (guid == older_.guid && text == older_.rtfText)) << text;
        EXPECT_FALSE(HasTemporary(to_->folder.data.DataFiles()));
        return now;
    }

    const TempFolder folder_{MemoryFolder()};
    const std::filesystem::path archive_ = folder_ / "a.lbe";
    ExchangeBook from_;
    std::unique_ptr<ExchangeBook> to_;
    ImportChanges changes_;
    TestChooser chooser_;
    CNote older_ = FullNote(7);
    Forms wanted_, before_;
};

TEST_F(ImportFaults, AnImportLosesNothingAndTellsWhicheverCallFails) {
    const auto check = [&](const ImportOutcome& outcome, bool) {
        const bool isTold = IsTold() || outcome.result < 0;
        for (const auto& landed : changes_.landed)
            EXPECT_TRUE(to_->book.index.Contains(landed.first) || isTold);
        EXPECT_TRUE(CheckedForms() == wanted_ || isTold);
        to_->faults.faults.clear();
        EXPECT_EQ(to_->Import(archive_, chooser_).result, 2) << "tried again";
        EXPECT_TRUE(FormsOf(*to_) == wanted_ && to_->faults.faults.empty());
    };
    for (const int error : {EIO, EINTR})
        EXPECT_GT(
            FailEachCall(
                AllFolders(), error, false, [&] { Prepare(); }, [&] { return to_->Import(archive_, chooser_); }, check),
            50);
}

TEST_F(ImportFaults, NothingIsImportedWhereItsFilesHaveNoRoom) {
    for (const int64_t left : {int64_t{0}, (int64_t{16} << 20) + 4096}) {
        Prepare();
        bytesLeft = left;
        EXPECT_EQ(to_->Import(archive_, chooser_).result, -1);
        bytesLeft = -1;
        ASSERT_EQ(to_->faults.faults.size(), 1u);
        EXPECT_EQ(to_->faults.faults[0].reason, "No space left on device");
        EXPECT_TRUE(CheckedForms() == before_ && changes_.IsEmpty());
    }
}

TEST_F(ImportFaults, TheUndoOfAnImportInWhichACallFailedBringsBackWhatWasThere) {
    const auto check = [&](const ImportOutcome& outcome, bool) {
        to_->Load();
        to_->faults.faults.clear();
        to_->prompts.seen.clear();
        EXPECT_TRUE(outcome.result <= 0 || Undo().has_value());
        EXPECT_TRUE(CheckedForms() == before_ || IsTold() || outcome.result < 0);
    };
    EXPECT_GT(FailEachCall(
                  AllFolders(), EIO, false, [&] { Prepare(); }, [&] { return to_->Import(archive_, chooser_); }, check),
              50);
}

TEST_F(ImportFaults, AnUndoneImportLosesNothingAndTellsWhicheverCallFails) {
    const auto prepare = [&] {
        Prepare();
        EXPECT_EQ(to_->Import(archive_, chooser_).result, 2);
    };
    const auto undo = [&] { return Undo(); };
    const auto check = [&](const std::optional<LongList>&, bool) {
        const bool isTold = IsTold();
        const size_t shown = to_->book.TotalNoteCount();
        const Forms now = CheckedForms();
        EXPECT_TRUE(now == before_ || isTold);
        EXPECT_EQ(now.texts.size(), shown);
        EXPECT_EQ(undo(), LongList()) << "tried again";
        EXPECT_TRUE(CheckedForms() == before_ && changes_.IsEmpty());
    };
    EXPECT_GT(FailEachCall(AllFolders(), EIO, false, prepare, undo, check), 20);
}

}  // namespace
}  // namespace lore
