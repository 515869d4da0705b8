#include <cerrno>
#include <gtest/gtest.h>
#include <map>

#include "exchange/exchange_world.h"
#include "exchange/zip_reader.h"
#include "support/faults.h"

namespace lore {
namespace {

/// What begins the paths of all folders that tests make: each call for one of them is counted.
std::filesystem::path AllFolders() {
    return MemoryFolder() / "lore-";
}

bool HasTemporary(const std::filesystem::path& folder) {
    for (const auto& entry : std::filesystem::recursive_directory_iterator(folder)) {
        if (entry.path().extension() == ".tmp")
            return true;
    }
    return false;
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
            EXPECT_TRUE(std::filesystem::exists(made.Attachment(attachment.storedFile))) << note.rtfText;
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
        EXPECT_EQ(untold, error == EINTR ? 21 : 12);
    }
}

TEST(ExchangeFaults, AnImportLosesNothingAndTellsWhicheverCallFails) {
    ExchangeBook from;
    FillBook(from);
    const TempFolder folder{MemoryFolder()};
    const std::filesystem::path archive = folder / "a.lbe";
    ASSERT_EQ(from.Export(archive, from.Notes()), 2);
    const Forms wanted = FormsOf(from);
    std::unique_ptr<ExchangeBook> to;
    TestChooser chooser;
    chooser.change = [](ImportComparison& comparison) { comparison.SetShowSame(true); };
    CNote older = FullNote(7);
    older.rtfText = "{\\rtf1 as it was}";
    older.sources = {};
    const auto prepare = [&] {
        to = std::make_unique<ExchangeBook>();
        to->folder.Put("DAY07122011.dat", {older});
        PutBytes(to->Attachment("0000001.png"), "the old picture");
        to->Load();
    };
    const auto check = [&](const ImportOutcome& outcome, bool) {
        const bool isTold = !to->prompts.seen.empty() || !to->faults.faults.empty() || outcome.result < 0;
        const Forms now = FormsOf(*to);
        EXPECT_TRUE(isTold || now == wanted);
        EXPECT_TRUE(now.texts.contains(older.guid));
        for (const auto& [guid, text] : now.texts)
            EXPECT_TRUE(text == wanted.texts.at(guid) || (guid == older.guid && text == older.rtfText)) << text;
        EXPECT_FALSE(HasTemporary(to->folder.data.DataFiles()));
        to->faults.faults.clear();
        EXPECT_EQ(to->Import(archive, chooser).result, 2) << "tried again";
        EXPECT_TRUE(FormsOf(*to) == wanted && to->faults.faults.empty());
    };
    EXPECT_GT(FailEachCall(
                  AllFolders(), EIO, false, prepare, [&] { return to->Import(archive, chooser); }, check),
              50);
}

}  // namespace
}  // namespace lore
