#include <CLI/CLI.hpp>
#include <cstdio>
#include <filesystem>

#include "base/text.h"
#include "cli/command.h"
#include "cli/print_records.h"
#include "notes/file_faults.h"
#include "notes/note_cleaner.h"
#include "notes/note_list_add.h"
#include "notes/note_list_citations.h"

namespace lore {

namespace {

class NoteBooksCommand : public Command {
public:
    const char* Name() const override { return "notebooks"; }
    const char* Help() const override { return "Lists the NoteBooks"; }
    void Declare(CLI::App&) override {}
    ExitStatus Run(Session& session) override {
        std::vector<CDatabase> all = {session.Main()};
        all.insert(all.end(), session.NoteBooks().begin(), session.NoteBooks().end());
        Json list = Json::array();
        for (const CDatabase& noteBook : all) {
            const NoteBookPaths paths(session.Data(), noteBook.folder);
            list.push_back(
                JsonListedNoteBook(noteBook, CountNotes(paths.Notes(), session.Context(), session.Faults())));
        }
        Print(session, list);
        return ExitStatus::Done;
    }

private:
    static void Print(const Session& session, const Json& list) {
        if (session.Json())
            return PrintJson(list);
        for (const Json& json : list) {
            std::printf("%-32s %-12s %6lld notes\n", Shown(json["name"].get_ref<const std::string&>()).c_str(),
                        Shown(json["folder"].get_ref<const std::string&>()).c_str(), json["notes"].get<long long>());
        }
    }
};

/// One line of a note for reading: id, day of creation, key words, file.
void PrintNoteLine(const CNote& note, const std::string& file) {
    std::printf("%7d  %s  %-28s %s\n", note.id, note.dateCreated.Format("%Y-%m-%d").c_str(), Shown(file).c_str(),
                Shown(note.keyWords).c_str());
}

std::string FileNameOf(const OpenNoteBook& book, int32_t id) {
    const std::string* const path = book.index.FindPath(id);
    return path ? std::filesystem::path(*path).filename().string() : std::string();
}

class NotesCommand : public Command {
public:
    const char* Name() const override { return "notes"; }
    const char* Help() const override { return "Lists notes"; }
    void Declare(CLI::App& app) override {
        app.add_option("--sort", sort_, "In the order of the note list under this sort number")
            ->type_name("ID")
            ->transform(DecimalNumber());
        app.add_option("--ids", ids_, "Only these notes, in this order")->type_name("ID,ID...");
    }
    ExitStatus Run(Session& session) override {
        LongList wanted;
        if (!ParseIdsOption(ids_, wanted))
            return ExitStatus::WrongUsage;
        OpenNoteBook book;
        auto report = session.Load(book, {.keepHeads = true});
        if (!report)
            return ExitStatus::NothingFound;
        std::vector<CNote> heads = ids_ ? Chosen(std::move(report->heads), wanted) : std::move(report->heads);
        if (sort_)
            heads = Sorted(book, std::move(heads), *sort_);
        Print(session, book, heads);
        return ExitStatus::Done;
    }

private:
    static std::vector<CNote> Chosen(std::vector<CNote> heads, const LongList& ids) {
        std::unordered_map<int32_t, size_t> positions;
        for (size_t i = 0; i < heads.size(); ++i)
            positions.emplace(heads[i].id, i);
        std::vector<CNote> chosen;
        for (const int32_t id : ids) {
            if (const auto found = positions.find(id); found != positions.end())
                chosen.push_back(std::move(heads[found->second]));
        }
        return chosen;
    }
    /// The notes as the note list has them after loading them in this order.
    static std::vector<CNote> Sorted(const OpenNoteBook& book, std::vector<CNote> heads, int32_t sortId) {
        CitationTexts citations(book.sources, book.authors);
        CNoteList incoming;
        for (CNote& note : heads)
            incoming.AddNote(citations.Listed(std::move(note)));
        CNoteList list;
        AddNotes(list, std::move(incoming), sortId);
        std::vector<CNote> sorted;
        for (size_t i = 0; i < list.Count(); ++i)
            sorted.push_back(std::move(*list.Notes()[i].note));
        return sorted;
    }
    static void Print(const Session& session, const OpenNoteBook& book, const std::vector<CNote>& heads) {
        if (!session.Json()) {
            for (const CNote& note : heads)
                PrintNoteLine(note, FileNameOf(book, note.id));
            return;
        }
        PrintJsonList(heads.size(), [&](size_t i) {
            Json json = JsonNoteHead(heads[i]);
            json["file"] = JsonText(FileNameOf(book, heads[i].id));
            return json;
        });
    }

    std::optional<int32_t> sort_;
    std::optional<std::string> ids_;
};

class NoteCommand : public Command {
public:
    const char* Name() const override { return "note"; }
    const char* Help() const override { return "Shows one note with all its fields"; }
    void Declare(CLI::App& app) override {
        app.add_option("ID", id_, "The note's number")->required()->transform(DecimalNumber());
        auto* const text = app.add_flag("--text", text_, "Print the bare text");
        app.add_flag("--rtf", rtf_, "Print the bare rich text")->excludes(text);
    }
    ExitStatus Run(Session& session) override {
        OpenNoteBook book;
        if (!session.Load(book))
            return ExitStatus::NothingFound;
        const std::optional<CNote> note = FindNote(book.index, id_, session.Context(), session.Faults());
        if (!note)
            return NoSuchNote(id_);
        Print(session, *note, FileNameOf(book, id_));
        return ExitStatus::Done;
    }

private:
    void Print(const Session& session, const CNote& note, const std::string& file) const {
        if (text_ || rtf_) {
            const std::string shown = rtf_ ? note.rtfText : ToUtf8(note.plainText);
            std::fwrite(shown.data(), 1, shown.size(), stdout);
            if (text_ && !shown.ends_with('\n'))
                std::fputc('\n', stdout);
            return;
        }
        Json json = JsonNoteHead(note);
        json["file"] = JsonText(file);
        AddNoteBody(json, note);
        if (session.Json())
            return PrintJson(json);
        json.erase("rtfText");
        for (const auto& [key, value] : json.items()) {
            if (key != "plainText")
                std::printf("%s: %s\n", key.c_str(),
                            Shown(value.is_string() ? value.get<std::string>() : value.dump()).c_str());
        }
        std::printf("\n%s\n", ShownLines(note.plainText).c_str());
    }

    int32_t id_ = 0;
    bool text_ = false, rtf_ = false;
};

class LastViewCommand : public Command {
public:
    const char* Name() const override { return "lastview"; }
    const char* Help() const override { return "Lists the notes of the last note list"; }
    void Declare(CLI::App&) override {}
    ExitStatus Run(Session& session) override {
        const auto noteBook = session.NoteBook();
        if (!noteBook)
            return ExitStatus::NothingFound;
        const LongList ids = LoadLastViewList(NoteBookPaths(session.Data(), noteBook->folder), session.Faults());
        PrintIds(session, ids.Values());
        return ExitStatus::Done;
    }
};

class SyncLogCommand : public Command {
public:
    const char* Name() const override { return "synclog"; }
    const char* Help() const override { return "Shows the log of changes for the online account"; }
    void Declare(CLI::App&) override {}
    ExitStatus Run(Session& session) override {
        const auto noteBook = session.NoteBook();
        if (!noteBook)
            return ExitStatus::NothingFound;
        const std::filesystem::path path = NoteBookPaths(session.Data(), noteBook->folder).SyncLog();
        SyncLog log;
        bool hasHead = false;
        session.Check(LoadSyncLogFrom(path, log, &hasHead), kSyncLogUnread, path);
        if (session.Json()) {
            PrintJson(JsonSyncLog(log, hasHead));
            return ExitStatus::Done;
        }
        std::printf("%s\n", log.link.IsLinked() ? ("linked with " + Shown(log.link.OnlineName)).c_str() : "not linked");
        for (const CSyncInfo& info : log.Records()) {
            std::printf("%7d  %-9s %s  %s\n", info.NoteId, info.Changed ? "changed" : "unchanged",
                        Shown(info.NoteKey).c_str(), Shown(info.NoteFile).c_str());
        }
        return ExitStatus::Done;
    }
};

}  // namespace

void AddNoteCommands(Commands& commands) {
    commands.push_back(std::make_unique<NoteBooksCommand>());
    commands.push_back(std::make_unique<NotesCommand>());
    commands.push_back(std::make_unique<NoteCommand>());
    commands.push_back(std::make_unique<LastViewCommand>());
    commands.push_back(std::make_unique<SyncLogCommand>());
}

}  // namespace lore
