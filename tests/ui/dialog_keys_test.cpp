#include <memory>

#include "support/memory_store.h"
#include "ui/calendar/date_fields.h"
#include "ui/controls.h"
#include "ui/dialog_frame.h"
#include "ui/qt_prompts.h"
#include "ui/theme.h"
#include "ui/typed_date_edit.h"

namespace lore {

/// What keys and the wheel do in each dialog, and in fields that are typed in.
class DialogKeysTest : public QObject {
    Q_OBJECT

private:
    static QString Typed(QDateTimeEdit& field, const QString& keys) {
        for (const QChar key : keys)
            QTest::keyClick(&field, key.toLatin1());
        QTest::keyClick(&field, Qt::Key_Return);
        return field.dateTime().toString("yyyy-MM-dd hh:mm");
    }

    static void Fresh(QDateTimeEdit& field) {
        field.clearFocus();
        field.setDateTime(QDateTime(QDate(2026, 11, 26), QTime(9, 0)));
        field.setFocus(Qt::TabFocusReason);
    }

    /// A dialog with one of each: what was pressed, and what the day's field held then.
    struct Dialog : DialogFrame {
        explicit Dialog(SettingsStore& store) : DialogFrame("Test", "TestPlace", store, nullptr) {
            day = MakeDateField("Day", this);
            day->setDate(QDate(2026, 11, 26));
            list = new QListWidget(this);
            list->addItems({"one", "two"});
            section = new QPushButton("Section", this);
            tool = new QToolButton(this);
            box = new QComboBox(this);
            box->addItems({"first", "second", "third"});
            tabs = new QTabWidget(this);
            for (const char* const name : {"a", "b", "c"})
                tabs->addTab(new QWidget, name);
            for (QWidget* const widget : std::initializer_list<QWidget*>{day, list, section, tool, box, tabs})
                Content()->addWidget(widget);
            QPushButton* const save = AddButton("&Save");
            SetMainButton(save);
            cancel = AddButton("Cancel");
            side = AddSideButton("Side");
            for (QAbstractButton* const button :
                 std::initializer_list<QAbstractButton*>{section, tool, save, cancel, side})
                connect(button, &QAbstractButton::clicked, this, [this, button] {
                    pressed.append((button == tool ? QString("Tool") : button->text().remove('&')) + " " +
                                   day->date().toString("MM-dd"));
                });
            section->setAutoDefault(false);
        }
        QDateEdit* day;
        QListWidget* list;
        QPushButton *section, *cancel, *side;
        QToolButton* tool;
        QComboBox* box;
        QTabWidget* tabs;
        QStringList pressed;
    };

    MemoryStore store_;
    std::unique_ptr<Theme> theme_;
    std::unique_ptr<Dialog> dialog_;

private slots:
    void initTestCase() { theme_ = std::make_unique<Theme>(*qApp, Appearance::Light); }
    void init() {
        dialog_ = std::make_unique<Dialog>(store_);
        dialog_->show();
        QVERIFY(QTest::qWaitForWindowActive(dialog_.get()));
    }
    void cleanup() { dialog_.reset(); }

    void enter_presses_the_button_that_has_the_focus() {
        for (QAbstractButton* const button :
             std::initializer_list<QAbstractButton*>{dialog_->section, dialog_->tool, dialog_->cancel, dialog_->side}) {
            button->setFocus();
            for (const Qt::Key key : {Qt::Key_Return, Qt::Key_Enter})
                QTest::keyClick(button, key);
        }
        const QStringList wanted{"Section 11-26", "Section 11-26", "Tool 11-26", "Tool 11-26",
                                 "Cancel 11-26",  "Cancel 11-26",  "Side 11-26", "Side 11-26"};
        QCOMPARE(dialog_->pressed, wanted);
    }

    void enter_in_a_list_is_for_the_list() {
        QStringList opened;
        connect(dialog_->list, &QListWidget::itemActivated, this, [&](auto* item) { opened.append(item->text()); });
        dialog_->list->setCurrentRow(1);
        dialog_->list->setFocus();
        QTest::keyClick(dialog_->list, Qt::Key_Return);
        QCOMPARE(opened, QStringList{"two"});
        QCOMPARE(dialog_->pressed, QStringList());
        QTest::keyClick(dialog_->list, Qt::Key_Return, Qt::ControlModifier);
        QCOMPARE(dialog_->pressed, QStringList{"Save 11-26"});
    }

    void what_is_being_typed_is_saved_whatever_presses_the_button() {
        const std::pair<Qt::Key, Qt::KeyboardModifiers> presses[] = {
            {Qt::Key_Return, Qt::ControlModifier}, {Qt::Key_S, Qt::AltModifier}, {Qt::Key_Return, Qt::NoModifier}};
        for (const auto& [key, modifiers] : presses) {
            dialog_->pressed.clear();
            Fresh(*dialog_->day);
            for (const char digit : {'0', '3'})
                QTest::keyClick(dialog_->day, digit);
            QTest::keyClick(dialog_->day, key, modifiers);
            QTRY_COMPARE(dialog_->pressed, QStringList{"Save 11-03"});
        }
    }

    void a_day_is_typed_without_its_weekday() {
        QDateEdit& day = *dialog_->day;
        const std::pair<const char*, const char*> cases[] = {
            {"03", "2026-11-03"},        {"30", "2026-11-30"},     {"5", "2026-11-05"},   {"Dec", "2026-12-26"},
            {"Dec072027", "2027-12-07"}, {"152031", "2031-11-15"}, {"Feb", "2026-02-26"},
        };
        for (const auto& [keys, wanted] : cases) {
            Fresh(day);
            QCOMPARE(Typed(day, keys).left(10), QString(wanted));
            QCOMPARE(day.text(), QLocale::c().toString(day.date(), "dddd,  MMM dd,  yyyy"));
        }
        Fresh(day);
        QTest::keyClick(&day, Qt::Key_Right, Qt::ControlModifier);
        QTest::keyClick(&day, Qt::Key_Up);
        QVERIFY2(day.text().startsWith(QLocale::c().toString(day.date(), "dddd")), "keys that step leave the form");
    }

    void a_time_is_typed_in_any_form_and_told_of_when_it_is_complete() {
        QTimeEdit* const time = MakeTimeField("Time", dialog_.get());
        dialog_->Content()->addWidget(time);
        time->show();
        QSignalSpy told(time, &QTimeEdit::timeChanged);
        const std::pair<const char*, const char*> cases[] = {
            {"2", "02:00"},    {"2:30p", "14:30"}, {"2:30 pm", "14:30"}, {"1115P", "23:15"},  {"12a", "00:00"},
            {"7:45", "07:45"}, {"14", "14:00"},    {"14:30", "14:30"},   {"1430", "14:30"},   {"25", "02:05"},
            {"9", "09:00"},    {"p", "21:00"},     {"14\b\b7", "07:00"}, {"14\b\b", "09:00"}, {"1475x", "01:47"}};
        for (const auto& [keys, wanted] : cases) {
            Fresh(*time);
            told.clear();
            QCOMPARE(QString(keys) + " " + Typed(*time, keys).right(5), QString(keys) + " " + wanted);
            QCOMPARE(time->text(), QLocale::c().toString(time->time(), "h:mm AP"));
            for (const QList<QVariant>& one : told)
                QCOMPARE(one[0].toTime(), time->time());
        }
        Fresh(*time);
        QTest::keyClicks(time, "14");
        QTest::keyClick(time, Qt::Key_Right, Qt::ControlModifier);
        QCOMPARE(Typed(*time, "45").right(5), QString("14:45"));
        Fresh(*time);
        QTest::keyClicks(time, "17");
        QTest::keyClick(time, Qt::Key_Up);
        QCOMPARE(time->time(), QTime(18, 0));
    }

    void a_date_may_be_typed_as_it_is_shown() {
        auto* const date = new TypedDateEdit(dialog_.get());
        date->setDateRange(QDate(100, 1, 1), QDate(9999, 12, 31));
        dialog_->Content()->addWidget(date);
        date->show();
        const struct {
            const char *format, *keys, *wanted;
        } cases[] = {{" M/dd/yyyy", "3/5/1848", "1848-03-05"},
                     {" M/dd/yyyy", "12/5/1848", "1848-12-05"},
                     {" M/dd/yyyy", "3/05/1848", "1848-03-05"},
                     {" M/dd/yyyy", "11/26/0987", "0987-11-26"},
                     {" M/dd/yyyy", "11/26/987", "0987-11-26"},
                     {" M/dd/yyyy", "1/2/1848", "1848-01-02"},
                     {" M/dd/yyyy", "3051848", "1848-03-05"},
                     {"  yyyy", "1848", "1848-11-26"},
                     {"  yyyy", "987", "0987-11-26"},
                     {"  yyyy", "0987", "0987-11-26"},
                     {"  yyyy", "87", "2026-11-26"}};
        for (const auto& c : cases) {
            date->setDisplayFormat(c.format);
            Fresh(*date);
            QCOMPARE(QString(c.keys) + " " + Typed(*date, c.keys).left(10), QString(c.keys) + " " + c.wanted);
        }
    }

    void the_wheel_changes_only_what_has_the_focus() {
        const auto roll = [](QWidget* widget) {
            const QPointF at = widget->rect().center();
            QWheelEvent event(at, widget->mapToGlobal(at), {}, QPoint(0, -120), Qt::NoButton, {}, Qt::NoScrollPhase,
                              false);
            QApplication::sendEvent(widget, &event);
        };
        dialog_->list->setFocus();
        const std::initializer_list<QWidget*> choosers{dialog_->box, dialog_->day, dialog_->tabs->tabBar()};
        for (QWidget* const chooser : choosers) {
            roll(chooser);
            QVERIFY(!chooser->hasFocus());
            QVERIFY((chooser->focusPolicy() & Qt::WheelFocus) != Qt::WheelFocus);
        }
        QCOMPARE(dialog_->box->currentIndex(), 0);
        QCOMPARE(dialog_->day->date(), QDate(2026, 11, 26));
        QCOMPARE(dialog_->tabs->currentIndex(), 0);
        dialog_->box->setFocus();
        roll(dialog_->box);
        QCOMPARE(dialog_->box->currentIndex(), 1);
    }

    void a_key_by_chance_says_no_to_a_question() {
        QtPrompts boxes;
        boxes.SetParent(dialog_.get());
        Prompts& prompts = boxes;
        const auto press = [](Qt::Key key) {
            QTimer::singleShot(0, qApp, [key] {
                QWidget* const box = QApplication::activeModalWidget();
                QTest::keyClick(box->focusWidget() ? box->focusWidget() : box, key);
            });
        };
        for (const Qt::Key key : {Qt::Key_Space, Qt::Key_Return, Qt::Key_Escape}) {
            press(key);
            QVERIFY(prompts.Ask("Delete?", "Delete") == PromptAnswer::No);
            bool ticked = false;
            press(key);
            QVERIFY(prompts.AskWithBox("Cancel?", "Cancel", "never again", ticked) == PromptAnswer::No);
        }
        press(Qt::Key_Return);
        QVERIFY(prompts.Ask("Keep?", "Keep", true) == PromptAnswer::Yes);
        press(Qt::Key_Escape);
        QVERIFY(prompts.Ask("Keep?", "Keep", true) == PromptAnswer::Cancel);
    }
};

}  // namespace lore

QTEST_MAIN(lore::DialogKeysTest)
#include "dialog_keys_test.moc"
