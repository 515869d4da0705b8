#include <chrono>
#include <memory>
#include <thread>

#include "ui/board_fixture.h"
#include "ui/controls.h"
#include "ui/qt_progress.h"
#include "ui/run_when_free.h"
#include "ui/theme.h"

namespace lore {

/// Works beside a window as a long search does.
class BackgroundTest : public QObject {
    Q_OBJECT

private slots:
    void init() {
        theme_ = std::make_unique<Theme>(*qApp, Appearance::Light);
        window_ = std::make_unique<QWidget>();
        edit_ = new QLineEdit(window_.get());
        edit_->setAccessibleName("Anything");
        window_->resize(600, 300);
        window_->show();
        QVERIFY(QTest::qWaitForWindowExposed(window_.get()));
        progress_ = std::make_unique<QtProgress>(*theme_);
        progress_->SetParent(window_.get());
    }

    void cleanup() {
        progress_.reset();
        window_.reset();
        theme_.reset();
    }

    void PaintsAndTakesNoInputMeanwhile() {
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
    void WhatCameFromOutsideWaits() {
        QStringList order;
        const auto note = [&](const char* what) { return [&order, what] { order << what; }; };
        const auto come = [&] {
            RunWhenFree(*window_, note("dialog"));
            RunWhenIdle(*window_, note("paste"));
        };
        QTimer::singleShot(5, this, come);
        QVERIFY(progress_->Run("Working....", [&](const std::stop_token&) {
            std::this_thread::sleep_for(std::chrono::milliseconds(500));
        }));
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

    void StopsByButtonAndKey_data() {
        QTest::addColumn<bool>("byKey");
        QTest::newRow("key") << true;
        QTest::newRow("button") << false;
    }

    void StopsByButtonAndKey() {
        QFETCH(bool, byKey);
        progress_->ShowStandBy("Searching Notes....");
        QTimer timer;
        connect(&timer, &QTimer::timeout, this, [&] {
            auto* const button = window_->findChild<QPushButton*>();
            if (!button || !button->isVisible())
                return;
            timer.stop();
            TakeShot(*window_, QStringLiteral("background-stop"));
            if (byKey)
                QTest::keyClick(edit_, Qt::Key_Escape);
            else
                QTest::mouseClick(button, Qt::LeftButton);
        });
        timer.start(20);
        QElapsedTimer spent;
        spent.start();
        QVERIFY(!progress_->Run("Searching Notes....", WorkUntilStopped));
        QVERIFY(spent.elapsed() < 10000);
        progress_->HideStandBy();
        QCOMPARE(edit_->text(), QString());
    }

    void AFlowThatAsksGetsAButtonAndIsStoppedByIt() {
        const auto flow = [this](int steps, bool clicks) {
            progress_->SetRange(0, steps);
            progress_->Show();
            int done = 0;
            for (; done < steps && !progress_->Cancelled(); ++done) {
                std::this_thread::sleep_for(std::chrono::milliseconds(60));
                progress_->StepIt();
                QPushButton* const button = window_->findChild<QPushButton*>();
                if (!button || !button->isVisible())
                    continue;
                QTest::keyClicks(edit_, QStringLiteral("typed"));
                if (clicks)
                    QTest::mouseClick(button, Qt::LeftButton);
            }
            progress_->Hide();
            return done;
        };
        QCOMPARE(flow(3, true), 3);
        const int done = flow(100, true);
        QVERIFY(done > 4 && done < 100);
        QVERIFY(progress_->Cancelled());
        QCoreApplication::processEvents();
        QVERIFY(!progress_->Cancelled());
        QCOMPARE(flow(12, false), 12);
        QCOMPARE(edit_->text(), QString());
    }

private:
    static void WorkUntilStopped(const std::stop_token& stop) {
        const auto end = std::chrono::steady_clock::now() + std::chrono::seconds(20);
        while (!stop.stop_requested() && std::chrono::steady_clock::now() < end)
            std::this_thread::sleep_for(std::chrono::milliseconds(2));
    }

    std::unique_ptr<Theme> theme_;
    std::unique_ptr<QWidget> window_;
    std::unique_ptr<QtProgress> progress_;
    QLineEdit* edit_ = nullptr;
};

}  // namespace lore

QTEST_MAIN(lore::BackgroundTest)
#include "background_test.moc"
