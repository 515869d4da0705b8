#include <chrono>
#include <memory>
#include <optional>
#include <thread>

#include "support/refused_threads.h"
#include "ui/board/picture_cache.h"
#include "ui/board_fixture.h"
#include "ui/controls.h"
#include "ui/controls/run_when_free.h"
#include "ui/controls/text_field.h"
#include "ui/look/theme.h"
#include "ui/picture_bytes.h"
#include "ui/ports/qt_progress.h"
#include "ui/ports/qt_prompts.h"
#include "ui/ports/quit_guard.h"

namespace lore {

/// Works beside a window as a long search does.
class BackgroundTest : public QObject {
    Q_OBJECT

private slots:
    void init() {
        window_ = std::make_unique<QWidget>();
        edit_ = NewTextField(window_.get());
        edit_->setAccessibleName("Anything");
        window_->resize(600, 300);
        window_->show();
        QVERIFY(QTest::qWaitForWindowExposed(window_.get()));
        progress_ = std::make_unique<QtProgress>(theme_);
        progress_->SetParent(window_.get());
    }

    void cleanup() {
        progress_.reset();
        window_.reset();
    }

    void paints_and_takes_no_input_meanwhile() {
        int ticks = 0;
        QTimer timer;
        connect(&timer, &QTimer::timeout, this, [&] {
            if (++ticks == 3) {
                QTest::keyClicks(edit_, QStringLiteral("typed"));
                window_->close();
            }
        });
        timer.start(5);
        const auto caller = std::this_thread::get_id();
        bool beside = false;
        QVERIFY(progress_->Run("Working....", [&](const std::stop_token&) {
            beside = std::this_thread::get_id() != caller;
            std::this_thread::sleep_for(std::chrono::milliseconds(200));
        }));
        QVERIFY(beside);
        QVERIFY(ticks >= 10);
        QCOMPARE(edit_->text(), QString());
        QVERIFY(window_->isVisible());
        QTest::keyClicks(edit_, QStringLiteral("typed"));
        QCOMPARE(edit_->text(), QStringLiteral("typed"));
        QVERIFY(!window_->findChild<QPushButton*>());
    }

    // A dialog within the loop of the work would take no key, and the work could not end before it.
    void what_came_from_outside_waits() {
        QStringList order;
        const auto note = [&](const char* what) { return [&order, what] { order << what; }; };
        const auto come = [&] {
            RunWhenFree(*window_, note("dialog"));
            RunWhenIdle(*window_, note("paste"));
        };
        QTimer::singleShot(5, this, come);
        QVERIFY(progress_->Run("Working....", WorkFor(500)));
        order << "worked";
        QTRY_COMPARE(order.size(), 3);
        QCOMPARE(order.first(), QStringLiteral("worked"));

        order.clear();
        QTimer::singleShot(0, this, come);
        progress_->ShowStandBy("Saving....");
        order << "shown";
        QTest::qWait(5);
        progress_->HideStandBy();
        QTRY_COMPARE(order.size(), 3);
        QCOMPARE(order.first(), QStringLiteral("shown"));
        RunWhenIdle(*window_, note("at once"));
        QCOMPARE(order.last(), QStringLiteral("at once"));
    }

    // A screen reader can open one within the loop of the work; unanswered it would keep the work from its end.
    void a_question_within_the_work_can_be_answered() {
        QtPrompts prompts;
        prompts.SetParent(window_.get());
        std::optional<PromptAnswer> answer;
        const auto askMeanwhile = [&] {
            answer.reset();
            QTimer::singleShot(600, window_.get(), [&] {
                QTimer::singleShot(50, window_.get(), [] {
                    auto* const box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
                    QVERIFY(box);
                    QTest::mouseClick(box->button(QMessageBox::Yes), Qt::LeftButton);
                    if (box->isVisible())
                        box->done(QMessageBox::No);
                });
                answer = prompts.Ask("Go on?", "Unsaved Note", true);
            });
        };
        askMeanwhile();
        QVERIFY(progress_->Run("Working....", WorkFor(1000)));
        QVERIFY(answer == PromptAnswer::Yes);
        askMeanwhile();
        QCOMPARE(Flow(20, [](QPushButton&) {}), 20);
        QVERIFY(answer == PromptAnswer::Yes);
    }

    void a_stand_by_leaves_no_wait_cursor() {
        const auto show = [this](int times) {
            for (int i = 0; i < times; ++i)
                progress_->ShowStandBy("Saving Information....");
            return QApplication::overrideCursor() != nullptr;
        };
        QVERIFY(show(3));
        progress_->HideStandBy();
        QVERIFY(!QApplication::overrideCursor());
        // One that goes with its dialog, and one that a bar takes the place of.
        {
            QDialog dialog(window_.get());
            dialog.setModal(true);
            dialog.show();
            QVERIFY(show(1));
        }
        progress_->HideStandBy();
        QVERIFY(!QApplication::overrideCursor());
        QVERIFY(show(1));
        progress_->Show();
        progress_->Hide();
        QVERIFY(!QApplication::overrideCursor());
        // Whoever else has set one keeps it.
        QApplication::setOverrideCursor(Qt::CrossCursor);
        QVERIFY(show(2));
        progress_->HideStandBy();
        progress_->HideStandBy();
        QVERIFY(QApplication::overrideCursor());
        QApplication::restoreOverrideCursor();
        QVERIFY(!QApplication::overrideCursor());
    }

    void an_order_to_quit_waits_for_the_work() {
        struct Closed : QObject {
            bool eventFilter(QObject*, QEvent* event) override {
                if (event->type() != QEvent::Close)
                    return false;
                ++times;
                byOrder = IsQuitting();
                event->ignore();
                return true;
            }
            int times = 0;
            bool byOrder = false;
        } closed;
        window_->installEventFilter(&closed);
        const QuitGuard guard;
        QTimer::singleShot(20, this, [] {
            for (int i = 0; i < 2; ++i) {
                QEvent quit(QEvent::Quit);
                QCoreApplication::sendEvent(qApp, &quit);
            }
        });
        progress_->Run("Working....", WorkFor(500));
        QCOMPARE(closed.times, 0);
        QTRY_VERIFY(closed.times > 0);
        QVERIFY(closed.byOrder);
        QVERIFY(!IsQuitting());
        const int times = closed.times;
        QTest::qWait(300);  // both were one
        QCOMPARE(closed.times, times);
        window_->removeEventFilter(&closed);
    }

    void pictures_come_and_go_without_a_thread() {
        const QTemporaryDir folder;
        const QString path = folder.filePath("picture.png");
        QVERIFY(Filled(40, 30).save(path));
        const RefusedThreads refused;
        PictureCache pictures;
        QSignalSpy loaded(&pictures, &PictureCache::Loaded);
        QVERIFY(pictures.Get(path, QSize(20, 15)).isNull());
        QTRY_COMPARE(loaded.size(), 1);
        QCOMPARE(pictures.Get(path, QSize(20, 15)).size(), QSize(20, 15));
        pictures.Get(path, QSize(10, 8));
        pictures.WaitForAll();
        QCOMPARE(loaded.size(), 2);
        pictures.Get(path, QSize(5, 4));  // while it is on its way, the cache goes
    }

    void stops_by_button_and_key() {
        for (const bool byKey : {true, false}) {
            progress_->ShowStandBy("Searching Notes....");
            QTimer timer;
            connect(&timer, &QTimer::timeout, this, [&] {
                QPushButton* const button = StopButton(*window_);
                if (!button)
                    return;
                timer.stop();
                TakeShot(*window_, QStringLiteral("background-stop"));
                byKey ? QTest::keyClick(edit_, Qt::Key_Escape) : QTest::mouseClick(button, Qt::LeftButton);
            });
            timer.start(20);
            QElapsedTimer spent;
            spent.start();
            QVERIFY(!progress_->Run("Searching Notes....", WorkUntilStopped));
            QVERIFY(spent.elapsed() < 10000);
            progress_->HideStandBy();
            QCOMPARE(edit_->text(), QString());
        }
    }

    void a_flow_that_asks_gets_a_button_and_is_stopped_by_it() {
        const auto click = [](QPushButton& button) { QTest::mouseClick(&button, Qt::LeftButton); };
        QCOMPARE(Flow(3, click), 3);
        const int done = Flow(100, click);
        QVERIFY(done > 4 && done < 100);
        QVERIFY(progress_->Cancelled());
        QCoreApplication::processEvents();
        QVERIFY(!progress_->Cancelled());
        QCOMPARE(Flow(12, [this](QPushButton&) { QTest::keyClicks(edit_, QStringLiteral("typed")); }), 12);
        QCOMPARE(edit_->text(), QString());
    }

private:
    /// A flow that asks at each step whether it was stopped; how many it did. `whenShown` gets the button, if it is
    /// seen.
    int Flow(int steps, const std::function<void(QPushButton&)>& whenShown) {
        progress_->SetRange(0, steps);
        progress_->Show();
        int done = 0;
        for (; done < steps && !progress_->Cancelled(); ++done) {
            std::this_thread::sleep_for(std::chrono::milliseconds(60));
            progress_->StepIt();
            if (QPushButton* const button = StopButton(*window_))
                whenShown(*button);
        }
        progress_->Hide();
        return done;
    }
    static Background::Work WorkFor(int milliseconds) {
        return [=](const std::stop_token&) { std::this_thread::sleep_for(std::chrono::milliseconds(milliseconds)); };
    }
    static void WorkUntilStopped(const std::stop_token& stop) {
        const auto end = std::chrono::steady_clock::now() + std::chrono::seconds(20);
        while (!stop.stop_requested() && std::chrono::steady_clock::now() < end)
            std::this_thread::sleep_for(std::chrono::milliseconds(2));
    }

    Theme theme_{*qApp, Appearance::Light};
    std::unique_ptr<QWidget> window_;
    std::unique_ptr<QtProgress> progress_;
    QLineEdit* edit_ = nullptr;
};

}  // namespace lore

QTEST_MAIN(lore::BackgroundTest)
#include "background_test.moc"
