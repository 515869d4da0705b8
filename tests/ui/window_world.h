#pragma once

#include <csignal>
#include <filesystem>
#include <functional>
#include <memory>
#include <sys/resource.h>

#include "app/sample_notebook.h"
#include "platform/system_sources.h"
#include "support/memory_store.h"
#include "support/read_world.h"
#include "support/scripted_ports.h"
#include "ui/board_fixture.h"
#include "ui/controls.h"
#include "ui/controls/bar_faults.h"
#include "ui/controls/fault_bar.h"
#include "ui/look/theme.h"
#include "ui/main/main_window.h"
#include "ui/ports/quit_guard.h"

namespace lore {

/// Notes faults, and shows them in a bar where a test gives one.
class ShownFaults : public NotedFaults {
public:
    void Tell(const Fault& fault) override {
        NotedFaults::Tell(fault);
        if (bar)
            Shown().Tell(fault);
    }
    void Mended(const std::string& what, const std::string& path) override {
        NotedFaults::Mended(what, path);
        Shown().Mended(what, path);
    }
    QPointer<FaultBar> bar;

private:
    BarFaults& Shown() {
        shown_.SetBar(bar);
        return shown_;
    }
    BarFaults shown_;
};

/// As long as one lives, no file takes a byte more, as on a full disk.
class FullDisk {
public:
    FullDisk() {
        std::signal(SIGXFSZ, SIG_IGN);
        ::getrlimit(RLIMIT_FSIZE, &before_);
        const rlimit full{0, before_.rlim_max};
        ::setrlimit(RLIMIT_FSIZE, &full);
    }
    ~FullDisk() { ::setrlimit(RLIMIT_FSIZE, &before_); }
    FullDisk(const FullDisk&) = delete;
    FullDisk& operator=(const FullDisk&) = delete;

private:
    rlimit before_ = {};
};

/// Keeps a window open whatever would close it.
struct IgnoresClose : QObject {
    bool eventFilter(QObject*, QEvent* event) override {
        if (event->type() == QEvent::Close)
            event->ignore();
        return event->type() == QEvent::Close;
    }
};

/// The main window on a data folder of its own, with scripted ports around it.
class WindowWorld {
protected:
    std::filesystem::path Root() const { return folder_->path().toStdString(); }

    /// An empty data folder, and nothing seen or set yet.
    void Begin() {
        folder_ = std::make_unique<QTemporaryDir>();
        store_ = MemoryStore();
        prompts_ = ScriptedPrompts();
        opened_ = 0;
        faults_.faults.clear();
    }
    /// Makes a sample NoteBook, whose ids begin there.
    void MakeSample(IdCounters counters = {1000, 1, 3}) {
        if (!store_.Get("Options", "LocalGUID"))
            store_.Set("Options", "LocalGUID", guids_.NewGuid());
        QVERIFY(MakeSampleNoteBook({Root()}, *store_.Get("Options", "LocalGUID"), counters,
                                   MakeReadContext(clock_, guids_), faults_)
                    .made);
    }
    /// Opens the window on the sample NoteBook.
    void OpenSample(int width = 1180, int height = 800) {
        Begin();
        MakeSample();
        OpenWindow(width, height);
    }
    /// Starts the application and shows its window in this size.
    void OpenWindow(int width, int height) {
        AppPorts ports{prompts_, shownProgress_ ? *shownProgress_ : progress_, clock_, guids_, store_, faults_};
        if (morePorts_)
            morePorts_(ports);
        app_ = std::make_unique<CLorebinderApp>(Root(), ports);
        app_->LoadOptions();
        app_->SelectStartNoteBook();
        window_ = std::make_unique<MainWindow>(*app_, theme_);
        window_->resize(width, height);
        window_->show();
        QVERIFY(QTest::qWaitForWindowExposed(window_.get()));
        app_->FinishStartup();
        window_->ShowNoteBook();
    }
    void CloseWindow() {
        window_.reset();
        app_.reset();
        theme_.SetAppearance(Appearance::Light);
    }

    /// Gives an order to quit, which the main window alone doesn't follow.
    void OrderToQuit() {
        const QuitGuard guard;
        IgnoresClose stays;
        window_->installEventFilter(&stays);
        QEvent quit(QEvent::Quit);
        QCoreApplication::sendEvent(qApp, &quit);
    }

    /// Runs a step of a dialog that a full disk makes fail: the dialog says so, and has it tried again.
    void FailsAtFirst(QWidget& dialog, const std::function<void()>& step) {
        faults_.bar = window_->Faults();
        {
            const FullDisk full;
            step();
        }
        auto* const bar = dialog.findChild<FaultBar*>();
        QVERIFY(dialog.isVisible() && bar && bar->isVisible());
        QVERIFY(bar->findChild<QLabel*>()->text().contains("File too large"));
        QTest::qWait(50);  // the dialog grows by the bar
        TakeShot(dialog, dialog.objectName() + "-fault");
        QVERIFY(!window_->Faults()->isHidden());
        Press(*bar, "Try again");
        QTRY_VERIFY(window_->Faults()->isHidden());
        QVERIFY(bar->isHidden());
    }

    /// The titles of what the user has been told and asked so far.
    QStringList Told() const {
        QStringList titles;
        for (const std::string& text : prompts_.seen)
            titles.append(QString::fromStdString(text.substr(0, std::min(text.find(": "), text.find("? ")))));
        return titles;
    }
    void Trigger(const QString& entry, const QString& menu = {}) { MenuEntry(*window_, entry, menu)->trigger(); }

    /// Runs steps in the dialog of this kind that opens next, and closes it after them.
    template <typename Dialog>
    void Next(std::function<void(Dialog&)> steps) {
        QTimer::singleShot(0, qApp, [this, steps] {
            auto* const dialog = qobject_cast<Dialog*>(QApplication::activeModalWidget());
            if (!dialog || !dialog->isVisible())
                return Next<Dialog>(steps);
            const QPointer<Dialog> open(dialog);
            BringUp(*dialog);
            steps(*dialog);
            ++opened_;
            if (open && open->isVisible())
                open->done(QDialog::Rejected);  // without a question
        });
    }
    /// Runs steps in the dialog that a command opens, now or soon.
    template <typename Dialog>
    void InNext(const std::function<void()>& command, const std::function<void(Dialog&)>& steps) {
        const int before = opened_;
        Next<Dialog>(steps);
        command();
        QTRY_VERIFY(opened_ > before);
    }
    /// Runs steps in the dialog that a command opens from the window.
    template <typename Dialog>
    void InDialog(const std::function<void()>& command, const std::function<void(Dialog&)>& steps) {
        BringUp(*window_);
        InNext(command, steps);
    }

    int opened_ = 0;                            ///< dialogs whose steps have run
    std::function<void(AppPorts&)> morePorts_;  ///< what a test adds to the ports of the next window
    Progress* shownProgress_ = nullptr;         ///< of the next window, in place of the scripted one
    std::unique_ptr<QTemporaryDir> folder_;
    Theme theme_{*qApp, Appearance::Light};
    MemoryStore store_;
    ScriptedPrompts prompts_;
    ScriptedProgress progress_;
    FixedClock clock_;
    SystemGuids guids_;
    ShownFaults faults_;
    std::unique_ptr<CLorebinderApp> app_;
    std::unique_ptr<MainWindow> window_;
};

}  // namespace lore
