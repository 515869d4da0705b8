// Types numbered words into a note of a data folder, in a real editor window, and saves it now and then, until it is
// killed: "ui_typing_run write FOLDER" prints each word's number with the milliseconds since the system started, once
// the word stands in the window. "ui_typing_run read FOLDER" is the next start: it goes on with what the program offers
// and prints the texts of the drafts and of all notes, a line each.

#include <QApplication>
#include <QTextEdit>
#include <QTimer>
#include <QtTest>
#include <chrono>
#include <cstdio>
#include <cstring>

#include "notes/note_finder.h"
#include "platform/ini_store.h"
#include "platform/system_sources.h"
#include "support/scripted_ports.h"
#include "ui/look/theme.h"
#include "ui/main/main_window.h"
#include "ui/note_editor/note_actions.h"
#include "ui/note_editor/note_editor_window.h"
#include "ui/note_editor/note_text_pane.h"

namespace lore {
namespace {

constexpr int kKeyEvery = 4;        // milliseconds
constexpr int kWordsPerSave = 500;  // longer than a draft may be behind

/// The application with a window, as the program makes it.
struct TypingWorld {
    explicit TypingWorld(const std::filesystem::path& root)
        : store(root / "settings.ini"),
          theme(*qApp, Appearance::Light),
          app(root, {prompts, progress, clock, guids, store, faults}) {
        app.LoadOptions();
        app.SelectStartNoteBook();
        app.FinishStartup();
        window = std::make_unique<MainWindow>(app, theme);
        window->show();
        window->ShowNoteBook();
    }

    ScriptedPrompts prompts;
    ScriptedProgress progress;
    SystemClock clock;
    SystemGuids guids;
    NotedFaults faults;
    IniStore store;
    Theme theme;
    CLorebinderApp app;
    std::unique_ptr<MainWindow> window;
};

class Typist : public QObject {
public:
    Typist() {
        connect(&timer_, &QTimer::timeout, this, &Typist::Tick);
        timer_.start(kKeyEvery);
    }

private:
    void Tick() {
        auto* const editor = qobject_cast<NoteEditorWindow*>(QApplication::activeModalWidget());
        if (!editor)
            return;
        QTextEdit* const text = editor->Text()->Edit();
        if (editor != last_) {
            last_ = editor;
            QTest::keyClick(text, Qt::Key_End, Qt::ControlModifier);
        }
        if (at_ == word_.size())
            BeginWord();
        QTest::keyClick(text, word_[at_++].toLatin1());
        if (at_ < word_.size())
            return;
        const auto now = std::chrono::steady_clock::now().time_since_epoch();
        std::printf("%d %lld\n", number_,
                    static_cast<long long>(std::chrono::duration_cast<std::chrono::milliseconds>(now).count()));
        std::fflush(stdout);
        if (number_ % kWordsPerSave != 0)
            return;
        last_ = nullptr;  // the next editor may stand in the same place
        editor->SaveNote();
    }
    void BeginWord() {
        word_ = QStringLiteral("w%1 ").arg(++number_);
        at_ = 0;
    }

    QTimer timer_;
    const void* last_ = nullptr;
    QString word_;
    qsizetype at_ = 0;
    int number_ = 0;
};

int Write(TypingWorld& world) {
    Typist typist;
    int32_t id = -1;
    while (world.faults.faults.empty()) {
        if (id < 0)
            world.window->Notes()->AddNote();
        else
            world.window->Notes()->EditNote(id);
        if (world.app.List().IsEmpty())
            break;
        id = world.app.List()[world.app.List().Count() - 1].id;
    }
    for (const Fault& fault : world.faults.faults)
        std::fprintf(stderr, "%s: %s\n", fault.what.c_str(), fault.reason.c_str());
    return 1;
}

int Read(TypingWorld& world) {
    WritingCommands& commands = world.window->Notes()->Commands();
    world.prompts.answers.assign(10, PromptAnswer::Yes);
    for (const UnsavedNote& unsaved : commands.Unsaved().AskForAll())
        std::printf("%s\n", unsaved.draft.note.plainText.c_str());
    const OpenNoteBook& book = world.app.NoteBook();
    for (const CNote& note : FindNotes(book.index, book.index.AllIDs(), world.app.Context(), world.faults))
        std::printf("%s\n", note.plainText.c_str());
    return world.faults.faults.empty() ? 0 : 1;
}

}  // namespace
}  // namespace lore

int main(int argc, char** argv) {
    QApplication application(argc, argv);
    if (argc != 3)
        return 2;
    lore::TypingWorld world(argv[2]);
    return std::strcmp(argv[1], "write") == 0 ? lore::Write(world) : lore::Read(world);
}
