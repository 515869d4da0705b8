#include "online/notebook_link.h"

#include <functional>

#include "base/record_file.h"
#include "online/online_fixture.h"
#include "support/scripted_background.h"

namespace lore {
namespace {

constexpr char kContacting[] = "... Contacting Lorebinder Online Server....";
constexpr char kCreating[] = "... Contacting LorebinderOnline Server....";
constexpr char kUpdating[] = "... Attempting to Update Online NoteBook Link....";
constexpr char kLocal[] = "... Updating Local Sync Information....(may take a few moments)";
constexpr char kUpdateError[] =
    "Update Error: There was an error in updating the Online NoteBook's link status.  Please try again.";
constexpr char kList[] =
    "<foundUser>true</foundUser><noteBooksList><NoteBookInfo><databaseID>5</databaseID><name>Wasps</name>"
    "</NoteBookInfo><NoteBookInfo><databaseID>6</databaseID><name>Ants, and more</name></NoteBookInfo></noteBooksList>";

/// The five dates of a record that all are the same.
std::string Five(const std::string& date) {
    return date + ", " + date + ", " + date + ", " + date + ", " + date + ",";
}

class LinkFlow : public OnlineFixture {
protected:
    void LinkTo(int32_t id) {
        book.syncLog.link = {kStoredTrue, id, "Online", "Old name", DateTime(2020, 1, 2), "{OLD}"};
    }
    void AnswerLink(int32_t id, const std::string& name) {
        Answer("SetupLinkWithOnlineNoteBook",
               "<name>" + name + "</name><databaseID>" + std::to_string(id) + "</databaseID>");
    }
    /// Chooses a row of the list.
    static OnlineNoteBookChooser Row(int row) {
        return [row](OnlineNoteBookChoice& choice) {
            choice.Select(row);
            return choice.Accept();
        };
    }
};

TEST_F(LinkFlow, ShowsTheStateOfTheOpenNoteBook) {
    NoteBookLink link(World());
    EXPECT_EQ(link.CurrentNoteBook() + "|" + link.LinkStatus() + "|" + link.OnlineNoteBook(), "Bees|not linked|");
    EXPECT_FALSE(link.CanClear());
    LinkTo(5);
    EXPECT_EQ(link.LinkStatus() + "|" + link.OnlineNoteBook(), "LINKED!|Online");
    EXPECT_TRUE(link.CanClear());
    UseMainNoteBook();
    EXPECT_EQ(link.CurrentNoteBook(), "LorebinderMain");
}

TEST_F(LinkFlow, LinksAndLogsTheNotesByFileName) {
    PutNote(12, DateTime(2020, 7, 1, 0, 30), DateTime(2020, 2, 1));
    PutNote(11, DateTime(2020, 1, 1, 13, 0, 0), DateTime(2020, 1, 1));
    Answer("GetNoteBooksInfo", kList);
    AnswerLink(6, "Ants, and more");
    EXPECT_TRUE(NoteBookLink(World()).LinkWith(Row(1)));
    EXPECT_THAT(Asked(), ElementsAre("<GetNoteBooksInfo><syncGUID>{SYNC}</syncGUID><onlyUnlinkedNoteBooks>false"
                                     "</onlyUnlinkedNoteBooks></GetNoteBooksInfo>",
                                     "<SetupLinkWithOnlineNoteBook><newOnlineNoteBookID>6</newOnlineNoteBookID>"
                                     "<prevOnlineNoteBookID>-1</prevOnlineNoteBookID><desktopGUID>{LOCAL}</desktopGUID>"
                                     "<desktopNoteBookGUID>{NB7}</desktopNoteBookGUID><desktopNoteBookName>Bees"
                                     "</desktopNoteBookName></SetupLinkWithOnlineNoteBook>"));
    EXPECT_THAT(Seen(), ElementsAre(kContacting, kUpdating, kLocal));
    EXPECT_THAT(SyncLines(),
                ElementsAre("2112, 6, Ants  and more, Bees, 01/01/1900 12:00:00 AM, {NB7},",
                            "11, 2112, 2112, -1, {N11}, DAY01012020.dat, " + Five("01/01/2020 12:00:00 PM"),
                            "12, 2112, 2112, -1, {N12}, DAY02012020.dat, " + Five("06/30/2020 11:30:00 PM")));
    EXPECT_TRUE(faults.faults.empty());
}

TEST_F(LinkFlow, NamesTheMainNoteBookByTheInstallation) {
    UseMainNoteBook();
    Answer("GetNoteBooksInfo", kList);
    AnswerLink(5, "Wasps");
    EXPECT_TRUE(NoteBookLink(World()).LinkWith(Row(0)));
    EXPECT_NE(Asked()[1].find("<desktopNoteBookGUID>{LOCAL}</desktopNoteBookGUID><desktopNoteBookName>LorebinderMain"),
              std::string::npos);
    EXPECT_THAT(SyncLines(), ElementsAre("2112, 5, Wasps, LorebinderMain, 01/01/1900 12:00:00 AM, {LOCAL},"));
}

TEST_F(LinkFlow, KeepsTheRecordsOfTheSameOnlineNoteBookAndSendsThoseOfAnotherAnew) {
    PutNote(11, DateTime(2020, 1, 1), DateTime(2020, 1, 1));
    const CSyncInfo known{11, kStoredTrue, 900, false, "{N11}", "old.dat", DateTime(2019, 1, 1), {}, {}, {}, {}};
    for (const int32_t now : {5, 6}) {
        LinkTo(5);
        book.syncLog = SyncLog{};
        LinkTo(5);
        book.syncLog.Add(known);
        Answer("GetNoteBooksInfo", kList);
        AnswerLink(now, "x");
        EXPECT_TRUE(NoteBookLink(World()).LinkWith([](OnlineNoteBookChoice& choice) {
            EXPECT_EQ(choice.Selected(), 0) << "the present one is selected";
            return choice.Accept();
        }));
        ASSERT_EQ(book.syncLog.Records().size(), 1u);
        const CSyncInfo& record = book.syncLog.Records()[0];
        EXPECT_EQ(record.OnlineNoteId, now == 5 ? 900 : -1);
        EXPECT_EQ(record.Changed, now != 5);
        EXPECT_EQ(record.NoteFile, "old.dat");
        EXPECT_EQ(record.Change1, DateTime(2019, 1, 1));
        EXPECT_EQ(book.syncLog.link.LastSync, kNeverSynced);
    }
}

TEST_F(LinkFlow, ChangesNothingWhereItBreaksOff) {
    LinkTo(5);
    const auto never = [](OnlineNoteBookChoice&) -> bool { throw std::logic_error("nothing to choose from"); };
    const auto cancel = [](OnlineNoteBookChoice&) { return false; };
    const auto answerList = [this] { Answer("GetNoteBooksInfo", kList); };
    const std::tuple<std::function<void()>, OnlineNoteBookChooser, std::vector<std::string>> cases[] = {
        {[&] { server.Add(HttpAnswer{}); }, never, {kContacting, kConnectionError}},
        {[&] { Answer("GetNoteBooksInfo", "<foundUser>false</foundUser>"); }, never, {kContacting, kUnknownAccount}},
        {answerList, cancel, {kContacting}},
        {answerList, Row(-1), {kContacting, "No NoteBook Selected: Please Select a NoteBook."}},
        {[&] { answerList(), server.Add(404, ""); }, Row(1), {kContacting, kUpdating, kConnectionError}},
        {[&] { answerList(), Answer("SetupLinkWithOnlineNoteBook", "<name>Ants</name>"); },
         Row(1),
         {kContacting, kUpdating, kConnectionError}},
        {[&] { answerList(), AnswerLink(0, "Ants"); }, Row(1), {kContacting, kUpdating, kUpdateError}},
        {[&] { answerList(), server.Add(202, ""); }, Row(1), {kContacting, kUpdating, kUpdateError}},
    };
    for (const auto& [answer, choose, seen] : cases) {
        answer();
        EXPECT_FALSE(NoteBookLink(World()).LinkWith(choose));
        EXPECT_EQ(Seen(), seen);
    }
    EXPECT_EQ(book.syncLog.link.OnlineNoteBookID, 5);
    EXPECT_EQ(book.syncLog.link.OnlineName, "Online");
    EXPECT_EQ(SyncFile(), "");
    ScriptedBackground background;
    background.stops = true;
    OnlineWorld stopped = World();
    stopped.background = &background;
    EXPECT_FALSE(NoteBookLink(stopped).LinkWith(never));
    EXPECT_THAT(Seen(), ElementsAre(kContacting)) << "in silence when the user stops the call";
    service = nullptr;
    EXPECT_FALSE(NoteBookLink(World()).LinkWith(never));
    EXPECT_EQ(Seen().size(), 1u);
}

TEST_F(LinkFlow, MakesAnOnlineNoteBookOnceItsNameFits) {
    OnlineNoteBookChoice choice(World(), {{5, "Wasps"}}, 77, true);
    EXPECT_EQ(choice.Selected(), -1);
    const std::string longest(44, 'n');
    prompts.texts = {"  ", std::string(45, 'n'), "wAsps", " " + longest + " "};
    Answer("CreateNewNoteBook",
           "<newNoteBookID>8</newNoteBookID><foundUser>true</foundUser><noteBooksList><NoteBookInfo>"
           "<databaseID>5</databaseID><name>Wasps</name></NoteBookInfo><NoteBookInfo><databaseID>"
           "8</databaseID><name>n</name></NoteBookInfo></noteBooksList>");
    EXPECT_TRUE(choice.Create());
    EXPECT_THAT(Asked(), ElementsAre("<CreateNewNoteBook><syncGUID>{SYNC}</syncGUID><newNoteBookName>" + longest +
                                     "</newNoteBookName><onlyUnlinkedNoteBooks>true</onlyUnlinkedNoteBooks>"
                                     "</CreateNewNoteBook>"));
    const std::string ask = "Create Online NoteBook? New NoteBook Name [";
    const std::string tooLong =
        "Invalid NoteBook Name: NoteBook name must not be empty and must be less than 45 characters.";
    EXPECT_THAT(Seen(), ElementsAre(ask + "]", tooLong, ask + "]", tooLong, ask + std::string(45, 'n') + "]",
                                    "Invalid NoteBook Name: There is already a NoteBook with this name.",
                                    ask + "wAsps]", kCreating));
    EXPECT_EQ(choice.NoteBooks().size(), 2u);
    EXPECT_EQ(choice.Selected(), 1);
    EXPECT_EQ(choice.Chosen(), 8);
}

TEST_F(LinkFlow, KeepsTheListWhereNoOnlineNoteBookWasMade) {
    const char* const error =
        "NoteBook Creation Error: There was an error in creating your NoteBook, please contact support if problem "
        "persists.";
    OnlineNoteBookChoice choice(World(), {{5, "Wasps"}}, 5, false);
    prompts.texts = {"A", "B", "C", "D"};
    server.Add(HttpAnswer{});
    Answer("CreateNewNoteBook", "<newNoteBookID>8</newNoteBookID><foundUser>false</foundUser>");
    Answer("CreateNewNoteBook", "<newNoteBookID>0</newNoteBookID><foundUser>true</foundUser>");
    server.Add(202, "");
    for (const char* const message : {kConnectionError, error, error, error}) {
        EXPECT_FALSE(choice.Create());
        EXPECT_EQ(Seen().back(), message);
    }
    EXPECT_FALSE(choice.Create()) << "cancelled";
    EXPECT_EQ(choice.Chosen(), 5);
    EXPECT_EQ(server.Requests().size(), 4u);
}

TEST_F(LinkFlow, ClearsALinkOnBothSides) {
    const char* const question =
        "Remove Link?? Are you sure you wish to remove that link between your Desktop NoteBook and Online NoteBook?";
    EXPECT_FALSE(NoteBookLink(World()).Clear());
    EXPECT_THAT(Seen(), IsEmpty());
    LinkTo(5);
    EXPECT_FALSE(NoteBookLink(World()).Clear());
    EXPECT_THAT(Seen(), ElementsAre(question));
    prompts.answers = {PromptAnswer::Yes, PromptAnswer::Yes, PromptAnswer::Yes, PromptAnswer::Yes};
    server.Add(HttpAnswer{});
    EXPECT_FALSE(NoteBookLink(World()).Clear());
    EXPECT_THAT(Seen(), ElementsAre(question, kUpdating, kConnectionError));
    Answer("ClearLinkWithOnlineNoteBook", "<databaseID>0</databaseID>");
    server.Add(202, "");
    for (int i = 0; i < 2; ++i) {
        EXPECT_FALSE(NoteBookLink(World()).Clear());
        EXPECT_THAT(Seen(), ElementsAre(question, kUpdating, kUpdateError));
    }
    EXPECT_TRUE(book.syncLog.link.IsLinked());
    Answer("ClearLinkWithOnlineNoteBook", "<databaseID>5</databaseID>");
    EXPECT_TRUE(NoteBookLink(World()).Clear());
    EXPECT_THAT(Seen(), ElementsAre(question, kUpdating, kLocal));
    EXPECT_EQ(Asked().back(),
              "<ClearLinkWithOnlineNoteBook><onlineNoteBookID>5</onlineNoteBookID><desktopNoteBookGUID>"
              "{NB7}</desktopNoteBookGUID></ClearLinkWithOnlineNoteBook>");
    EXPECT_THAT(SyncLines(), ElementsAre("-1, -1, , , , ,"));
}

class StartCheck : public LinkFlow {
protected:
    /// Runs the check, and hides what it leaves, as the window does a little later.
    bool Check() {
        const bool shown = CheckLinkAtStart(World());
        if (shown)
            progress.shown = 0;
        return shown;
    }
};

constexpr char kChecking[] = "... Checking LorebinderOnline Server....";

TEST_F(StartCheck, IsLeftOutWithoutALinkOrAService) {
    EXPECT_FALSE(Check());
    LinkTo(5);
    service = nullptr;
    EXPECT_FALSE(Check());
    EXPECT_THAT(Seen(), IsEmpty());
    EXPECT_THAT(server.Requests(), IsEmpty());
}

TEST_F(StartCheck, LeavesTheLinkWhereNoAnswerComes) {
    LinkTo(5);
    book.syncLog.Add({});
    server.Add(HttpAnswer{});
    server.Add(202, "");
    Answer("GetNoteBookInfo", "<name>Wasps</name>");
    for (int i = 0; i < 3; ++i) {
        EXPECT_TRUE(Check());
        EXPECT_THAT(Seen(), ElementsAre(kChecking)) << i;
    }
    EXPECT_EQ(server.Left(), 0u);
    EXPECT_TRUE(book.syncLog.link.IsLinked());
    EXPECT_EQ(book.syncLog.Records().size(), 1u);
    EXPECT_EQ(book.syncLog.link.OnlineName, "Online");
    EXPECT_EQ(SyncFile(), "");
}

TEST_F(StartCheck, RefreshesTheNames) {
    LinkTo(5);
    Answer("GetNoteBookInfo", "<databaseID>5</databaseID><name>New name</name>");
    EXPECT_TRUE(Check());
    EXPECT_THAT(Seen(), ElementsAre(kChecking));
    EXPECT_THAT(Asked(), ElementsAre("<GetNoteBookInfo><NoteBookID>5</NoteBookID></GetNoteBookInfo>"));
    EXPECT_THAT(SyncLines(), ElementsAre("2112, 5, New name, Bees, 01/02/2020 12:00:00 AM, {NB7},"));
}

TEST_F(StartCheck, ClearsTheLinkToADeletedNoteBook) {
    LinkTo(5);
    book.syncLog.Add({});
    Answer("GetNoteBookInfo", "<databaseID>0</databaseID>");
    EXPECT_TRUE(Check());
    EXPECT_THAT(Seen(), ElementsAre(kChecking,
                                    "Online NoteBook Deleted: The Online NoteBook has been deleted, so the link is "
                                    "being cleared.",
                                    "... Updating NoteBook Link Status....", kLocal));
    EXPECT_THAT(SyncLines(), ElementsAre("-1, -1, , , , ,"));
}

TEST_F(LinkFlow, FreesTheOnlineNoteBookOfADeletedOneWhateverComesOfIt) {
    LinkTo(5);
    server.Add(HttpAnswer{});
    FreeOnlineNoteBook(World(), book.syncLog.link, "{NB9}");
    EXPECT_THAT(Asked(), ElementsAre("<ClearLinkWithOnlineNoteBook><onlineNoteBookID>5</onlineNoteBookID>"
                                     "<desktopNoteBookGUID>{NB9}</desktopNoteBookGUID></ClearLinkWithOnlineNoteBook>"));
    EXPECT_THAT(Seen(), IsEmpty());
    service = nullptr;
    FreeOnlineNoteBook(World(), book.syncLog.link, "{NB9}");
    EXPECT_EQ(server.Requests().size(), 1u);
}

}  // namespace
}  // namespace lore
