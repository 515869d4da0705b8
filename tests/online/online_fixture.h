#pragma once

#include <sstream>
#include <string>
#include <vector>

#include "base/text.h"
#include "notes/note_builder.h"
#include "notes/note_record.h"
#include "online/http_client.h"
#include "online/link_record.h"
#include "online/online_world.h"
#include "support/http_server.h"
#include "support/matchers.h"
#include "support/read_world.h"
#include "support/scripted_ports.h"

namespace lore {

inline constexpr char kGuid[] = "{01234567-89AB-4cde-8F01-23456789ABCD}";
inline constexpr char kConnectionError[] =
    "Connection Error: There was an error in connecting to the server.  Please check your internet connection and try "
    "again.";
inline constexpr char kUnknownAccount[] =
    "Sync GUID not valid: Your Sync GUID could not be found.\n\nPlease check to make sure it was entered correctly.";

/// Notes texts of the progress among those of the prompts, so that a test sees them in order.
class ProgressAmongPrompts : public ScriptedProgress {
public:
    explicit ProgressAmongPrompts(std::vector<std::string>& seen) : seen_(seen) {}
    void SetMessage(const std::string& text) override { seen_.push_back("... " + text); }

private:
    std::vector<std::string>& seen_;
};

/// An open NoteBook on the disk, an account server in this process, and scripted ports around a flow.
class OnlineFixture : public testing::Test {
protected:
    OnlineFixture() {
        book = OpenNoteBook::At(data, {7, 0, "Bees", "DB000007", "", {}, "{NB7}"});
        CreateNoteBookFolders(book.paths);
        settings.Set(Option::LocalGUID, std::string("{LOCAL}"));
        settings.Set(Option::SyncGUID, std::string("{SYNC}"));
        settings.Set(Option::SyncEngaged, 1);
    }
    ~OnlineFixture() override { EXPECT_EQ(progress.shown, 0) << "a progress was left behind"; }

    OnlineWorld World() {
        return {book,
                data,
                settings,
                service,
                read.context,
                prompts,
                progress,
                faults,
                nullptr,
                [](const DateTime& local) { return local.PlusSeconds(-3600); },
                [this] { ++stored; }};
    }
    void UseMainNoteBook() {
        book = OpenNoteBook::At(data, MainNoteBook("{LOCAL}"));
        CreateNoteBookFolders(book.paths);
    }
    void Answer(const std::string& operation, const std::string& fields) { server.AddResult(operation, fields); }
    /// The operation element of each request so far.
    std::vector<std::string> Asked() const {
        std::vector<std::string> asked;
        for (const std::string& request : server.Requests()) {
            const size_t begin = request.find("<soap:Body>") + 11;
            std::string text = request.substr(begin, request.find("</soap:Body>") - begin);
            asked.push_back(ReplaceAll(text, " xmlns=\"urn:test/\"", ""));
        }
        return asked;
    }
    /// What was seen since the last call.
    std::vector<std::string> Seen() { return std::exchange(prompts.seen, {}); }
    std::string SyncFile() const { return BytesOf(book.paths.SyncLog()); }
    /// The lines of the file of the open NoteBook.
    std::vector<std::string> SyncLines() const {
        std::vector<std::string> lines;
        std::string line;
        for (std::istringstream text(SyncFile()); std::getline(text, line);)
            lines.push_back(std::string(Trim(line)));
        return lines;
    }
    CNote PutNote(int32_t id, const DateTime& edited, const DateTime& created) {
        CNote note;
        note.id = id;
        note.guid = "{N" + std::to_string(id) + "}";
        note.dateEdited = edited;
        note.dateCreated = created;
        PutBytes(book.paths.NoteFile(GetNoteFileName(note)), NoteFileBytes(std::vector{note}));
        return note;
    }

    ReadWorld read;
    TempFolder folder;
    DataPaths data{folder.Path()};
    OpenNoteBook book;
    Settings settings;
    HttpServer server;
    HttpClient client{{.connect = std::chrono::seconds(1), .silence = std::chrono::seconds(1)}};
    DesktopCommService account{client, {server.Url(kServicePath), "urn:test/"}};
    DesktopCommService* service = &account;
    ScriptedPrompts prompts;
    ProgressAmongPrompts progress{prompts.seen};
    NotedFaults faults;
    int stored = 0;
};

}  // namespace lore
