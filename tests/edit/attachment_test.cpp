#include "edit/attachment_list.h"
#include "edit/edit_fixture.h"
#include "notes/attachment_kind.h"

namespace lore {
namespace {

class AttachmentTest : public EditFixture {
protected:
    std::string File(const std::string& name, const std::string& bytes = "bytes") {
        PutBytes(outside / name, bytes);
        return (outside / name).string();
    }
    std::vector<std::string> Stored() const {
        return Each(list.Items(),
                    [](const auto& item) { return item.record.storedFile + "|" + item.record.sourceFile; });
    }
    size_t CopyIn() { return CopyInNewAttachments(list.Items(), book.paths, world.Context(), faults); }
    void PutStored(const std::string& name) { PutBytes(book.paths.Attachments() / name, "old"); }

    TempFolder outside;
    AttachmentList list{prompts, progress, faults, book.paths.Attachments()};
};

TEST_F(AttachmentTest, SeveralFilesAreAddedOnceEach) {
    const std::string a = File("Notes.DOCX"), b = File("a.asx"), c = File("noending");
    prompts.openPaths = {a, b, c, a, (outside / "missing.txt").string(), outside.Path().string()};
    list.AddFiles();
    ASSERT_THAT(Each(list.Items(), [](const auto& item) { return item.record.type; }), ElementsAre(3, 6, 10));
    EXPECT_EQ(list.Items()[0].record.title, "Notes.DOCX");
    EXPECT_EQ(list.OriginalText(0), a);
    EXPECT_EQ(prompts.seen.size(), 4u);
    EXPECT_EQ(prompts.seen[0], "Attach File? open several All Files (*.*)|*.*||");
    EXPECT_EQ(prompts.seen[1], "Invalid Attachment: File is already attached, or it is an invalid file.");
}

TEST_F(AttachmentTest, ANameThatWouldCutTheNoteIsRefused) {
    EXPECT_FALSE(list.AddFile(File("big\x1Aone.txt")));
    EXPECT_THAT(prompts.seen, ElementsAre(testing::AllOf(StartsWith("Invalid Attachment: "), EndsWith("bigone.txt"))));
    EXPECT_TRUE(list.Items().empty());
}

TEST_F(AttachmentTest, OnlyPicturesShowOnTheBoard) {
    for (const char* const name : {"tower.PNG", "letter.rtf", "page.html", "caf\xC3\xA9"})
        list.AddFile(File(name));
    list.AddLink("http://example.org/tower.png");
    list.AddPicture("BM bytes", "Pasted");
    EXPECT_THAT(Each(list.Items(), [](const auto& item) { return item.record.show; }),
                ElementsAre(true, false, false, false, false, true));
    EXPECT_EQ(list.Items()[3].record.title, "caf\xE9") << "text of a door";
}

TEST_F(AttachmentTest, TheSameFileByAnotherNameIsTheSame) {
    const std::string a = File("a.txt");
    std::filesystem::create_symlink(a, outside / "link.txt");
    EXPECT_TRUE(list.AddFile(a));
    EXPECT_FALSE(list.AddFile((outside / "link.txt").string()));
    EXPECT_FALSE(list.AddFile((outside / "." / "a.txt").string()));
}

TEST_F(AttachmentTest, NumbersFollowTheHighestInUse) {
    for (const char* const name : {"0000007.pdf", "12x.txt", "99999999999.txt", "readme.txt"})
        PutStored(name);
    list.AddFile(File("a.PDF", "A"));
    list.AddLink("http://example.org");
    list.AddFile(File("noending", "B"));
    list.AddPicture("BM bytes", "Picture");
    EXPECT_EQ(CopyIn(), 0u);
    EXPECT_THAT(Stored(), ElementsAre("0000013.PDF|", "|http://example.org", "0000014.|", "0000015.bmp|"));
    EXPECT_EQ(BytesOf(book.paths.Attachments() / "0000013.PDF"), "A");
    EXPECT_EQ(BytesOf(book.paths.Attachments() / "0000015.bmp"), "BM bytes");
    EXPECT_EQ(CopyIn(), 0u);
    EXPECT_EQ(list.Items()[0].record.storedFile, "0000013.PDF") << "what was copied is copied once";
}

TEST_F(AttachmentTest, StoredNamesHoldNothingThatArchivesCantCarry) {
    const std::pair<std::string, std::string> cases[] = {{"12:30", "0000007.1230"},
                                                         {"x\ny\t", "0000007.xy"},
                                                         {":", "0000007."},
                                                         {"\xe9 \x7f", "0000007.\xe9 \x7f"},
                                                         {std::string(100, 'e'), "0000007." + std::string(100, 'e')},
                                                         {std::string(101, 'e'), "0000007."}};
    for (const auto& [extension, name] : cases)
        EXPECT_EQ(StoredAttachmentName(7, extension), name);
}

TEST_F(AttachmentTest, NumbersOfFilesThatMayComeBackOrThatNotesNameAreNotGivenOut) {
    const std::filesystem::path waiting = book.paths.Folder() / kKeptFilesName;
    std::filesystem::create_directories(waiting);
    PutBytes(waiting / "0000412.pdf", "of a deleted note");
    EXPECT_EQ(HighestAttachmentNumber(book.paths, world.Context()), 412);
    CNote note = TextNote(5, "Its file is away", {});
    for (const char* const name : {"0000500.png", "10000000.png", "none"})
        note.attachments.push_back({0, 1.0, "", name, "", 1, true});
    folder.Put("DAY01012020.dat", {note});
    EXPECT_EQ(HighestAttachmentNumber(book.paths, world.Context()), 500);
    EXPECT_EQ(HighestAttachmentNumber(book.paths, {note}), 500);
}

TEST_F(AttachmentTest, AFileThatVanishedIsToldAndTriedAgain) {
    const std::string a = File("a.txt"), b = File("b.txt");
    list.AddFile(a);
    list.AddFile(b);
    std::filesystem::remove(a);
    EXPECT_EQ(CopyIn(), 1u);
    EXPECT_THAT(Each(faults.faults, &Fault::path), ElementsAre(a));
    EXPECT_EQ(list.OriginalText(0), a);
    File("a.txt");
    EXPECT_EQ(CopyIn(), 0u);
    EXPECT_FALSE(list.Items()[0].record.storedFile.empty());
    EXPECT_EQ(std::distance(std::filesystem::directory_iterator(book.paths.Attachments()), {}), 2);
}

TEST_F(AttachmentTest, LinksAreAskedForAndKeepAnOwnTitle) {
    prompts.texts = {" http://example.org/\x1A", "http://", "http://example.org/2"};
    list.AddWebLink();
    list.AddWebLink();
    ASSERT_EQ(list.Items().size(), 1u);
    EXPECT_EQ(list.Items()[0].record.sourceFile, "http://example.org/");
    EXPECT_EQ(list.Items()[0].record.type, kWebLink);
    list.EditWebLink(0);
    EXPECT_EQ(list.Items()[0].record.title, "http://example.org/2");
    list.Items()[0].record.title = "Site";
    list.EditWebLink(0);
    EXPECT_EQ(list.Items()[0].record.sourceFile, "http://example.org/2") << "cancelled";
    EXPECT_THAT(prompts.seen, ElementsAre("Attach Web Link? Address: [http://]", "Attach Web Link? Address: [http://]",
                                          "Edit Web Link? Address: [http://example.org/]",
                                          "Edit Web Link? Address: [http://example.org/2]"));
    prompts.texts = {"http://example.org/3"};
    list.EditWebLink(0);
    EXPECT_EQ(list.Items()[0].record.title, "Site");
}

TEST_F(AttachmentTest, ALinkIsChangedInItsPlaceThoughOthersAreAddedAfterTheQuestion) {
    list.AddLink("http://example.org/first");
    list.AddLink("http://example.org/1");
    prompts.whileShown = [this] {
        for (int i = 0; i < 100; ++i)
            list.AddLink("http://example.org/more");
    };
    for (const bool ownTitle : {false, true}) {
        if (ownTitle)
            list.Items()[1].record.title = "Site";
        prompts.texts = {ownTitle ? "http://example.org/3" : "http://example.org/2"};
        list.EditWebLink(1);
    }
    EXPECT_EQ(list.Items().size(), 202u);
    EXPECT_EQ(list.Items()[0].record.sourceFile, "http://example.org/first");
    EXPECT_EQ(list.Items()[1].record.sourceFile, "http://example.org/3");
    EXPECT_EQ(list.Items()[1].record.title, "Site");
    prompts.answers = {PromptAnswer::Yes};
    list.RemoveAttachment(1);
    EXPECT_EQ(list.Items()[1].record.sourceFile, "http://example.org/more");
}

TEST_F(AttachmentTest, RemovingAsksAndLeavesTheFile) {
    PutStored("0000001.txt");
    list.Fill({{0, 1.0, "T", "0000001.txt", "", 2, true}});
    list.RemoveAttachment(0);
    EXPECT_EQ(list.Items().size(), 1u);
    prompts.answers = {PromptAnswer::Yes};
    list.RemoveAttachment(0);
    EXPECT_THAT(list.Items(), IsEmpty());
    EXPECT_EQ(prompts.seen.back(), "Remove Attachment?? Do you wish to remove the selected attachment: \"T\"?");
    EXPECT_TRUE(std::filesystem::exists(book.paths.Attachments() / "0000001.txt"));
}

TEST_F(AttachmentTest, ExtractingCopiesOverWhatIsThere) {
    PutStored("0000001.png");
    list.Fill({{0, 1.0, "../../lamp.png", "0000001.png", "", 1, true}});
    list.ExtractAttachment(0);
    EXPECT_EQ(prompts.seen.back(), "Extract Attachment? save Image File (*.png) |*.png| [lamp.png]");
    PutStored("0000002");
    list.Fill({{0, 1.0, "LICENSE", "0000002", "", 0, true}});
    list.ExtractAttachment(0);
    EXPECT_EQ(prompts.seen.back(), "Extract Attachment? save Unknown File (*) |*| [LICENSE]");
    list.Fill({{0, 1.0, "../../lamp.png", "0000001.png", "", 1, true}});
    prompts.savePaths = {File("target.png", "something longer")};
    list.ExtractAttachment(0);
    EXPECT_EQ(BytesOf(outside / "target.png"), "old");
    EXPECT_THAT(progress.messages, ElementsAre("Extracting file...."));
    EXPECT_THAT(faults.faults, IsEmpty());
    std::filesystem::remove(book.paths.Attachments() / "0000001.png");
    prompts.savePaths = {(outside / "target.png").string()};
    list.ExtractAttachment(0);
    EXPECT_EQ(BytesOf(outside / "target.png"), "old") << "a failure leaves the old file";
    PutStored("0000001.png");
    prompts.savePaths = {(outside / "gone" / "target.png").string()};
    list.ExtractAttachment(0);
    EXPECT_THAT(Each(faults.faults, &Fault::path), ElementsAre((book.paths.Attachments() / "0000001.png").string(),
                                                               (outside / "gone" / "target.png").string()))
        << "the file that can't be read, and the one that can't be written";
}

}  // namespace
}  // namespace lore
