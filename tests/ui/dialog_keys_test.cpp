#include <memory>

#include "support/memory_store.h"
#include "ui/calendar/date_fields.h"
#include "ui/controls.h"
#include "ui/controls/dialog_frame.h"
#include "ui/controls/typed_date_edit.h"
#include "ui/editor/editor_dialogs.h"
#include "ui/look/theme.h"
#include "ui/ports/qt_prompts.h"

namespace lore {

/// What keys and the wheel do in each dialog, and in fields that are typed in.
class DialogKeysTest : public QObject {
    Q_OBJECT

private:
    static QString Typed(QDateTimeEdit& field, const QString& keys) {
        for (const QChar key : keys) {
            if (key == ':')
                QTest::keyClick(&field, Qt::Key_Shift);
            QTest::keyClicks(&field, key);
        }
        QTest::keyClick(&field, Qt::Key_Return);
        return field.dateTime().toString("yyyy-MM-dd hh:mm");
    }

    static void Fresh(QDateTimeEdit& field, Qt::FocusReason reason = Qt::TabFocusReason) {
        field.clearFocus();
        field.setDateTime(QDateTime(QDate(2026, 11, 26), QTime(9, 0), field.timeSpec()));
        field.setFocus(reason);
    }

    /// Goes into a field: "Tab", "Backtab", a key, or "click 1", "double 1" upon a part that it shows.
    static void GoInto(QDateTimeEdit& field, const QString& way) {
        Fresh(field, way == "Backtab" ? Qt::BacktabFocusReason : Qt::TabFocusReason);
        if (way.contains(' ')) {
            auto* const edit = field.findChild<QLineEdit*>();
            const QString part =
                edit->text().split(QRegularExpression("[ ,/]+"), Qt::SkipEmptyParts)[way.last(1).toInt()];
            QPoint at(0, edit->height() / 2);
            while (edit->cursorPositionAt(at) < edit->text().indexOf(part) + 1)
                ++at.rx();
            QTest::mouseClick(edit, Qt::LeftButton, {}, at);
            if (way.startsWith("double"))
                QTest::mouseDClick(edit, Qt::LeftButton, {}, at);
        } else if (!way.endsWith("ab")) {
            PressKeys(&field, {qPrintable(way)});
        }
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
    Theme theme_{*qApp, Appearance::Light};
    std::unique_ptr<Dialog> dialog_;

private slots:
    void init() {
        dialog_ = std::make_unique<Dialog>(store_);
        dialog_->show();
        QVERIFY(QTest::qWaitForWindowActive(dialog_.get()));
    }
    void cleanup() { dialog_.reset(); }

    void enter_presses_the_button_that_has_the_focus() {
        QStringList wanted;
        for (QAbstractButton* const button :
             std::initializer_list<QAbstractButton*>{dialog_->section, dialog_->tool, dialog_->cancel, dialog_->side}) {
            button->setFocus();
            PressKeys(button, {"Return", "Enter"});
        }
        for (const char* const name : {"Section", "Tool", "Cancel", "Side"})
            wanted += {name + QString(" 11-26"), name + QString(" 11-26")};
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
        PressKeys(dialog_->list, {"Ctrl+Return"});
        QCOMPARE(dialog_->pressed, QStringList{"Save 11-26"});
    }

    void what_is_being_typed_is_saved_whatever_presses_the_button() {
        for (const char* const key : {"Ctrl+Return", "Alt+S", "Return"}) {
            dialog_->pressed.clear();
            Fresh(*dialog_->day);
            PressKeys(dialog_->day, {"0", "3", key});
            QTRY_COMPARE(dialog_->pressed, QStringList{"Save 11-03"});
        }
    }

    void a_date_is_typed_whole_wherever_typing_begins() {
        const std::pair<const char*, const char*> cases[] = {{"Dec 1, 2026", "2026-12-01"},
                                                             {"dec 01,  2026", "2026-12-01"},
                                                             {"Tuesday,  Dec 01,  2026", "2026-12-01"},
                                                             {"1 December 2026", "2026-12-01"},
                                                             {"12/01/2026", "2026-12-01"},
                                                             {"2026-12-01", "2026-12-01"},
                                                             {"7/4/1776", "1776-07-04"},
                                                             {"7 - 04 . 1776 ", "1776-07-04"},
                                                             {"3051848", "1848-03-05"},
                                                             {"11/27/987", "0987-11-27"},
                                                             {"1/31/1890", "1890-01-31"},
                                                             {"2/29/2024", "2024-02-29"},
                                                             {"2/29/2026", ""},
                                                             {"25/1/1890", ""},
                                                             {"25/12/1890", ""},
                                                             {"7/4/17", ""},
                                                             {"7/4/17760", ""},
                                                             {"7*4*1776", ""},
                                                             {"Sol 3, 2026", ""},
                                                             {"1/1/0099", ""}};
        auto* const date = new TypedDateEdit(dialog_.get());
        date->setDateRange(QDate(100, 1, 1), QDate(9999, 12, 31));
        date->setDisplayFormat(" M/dd/yyyy");
        dialog_->Content()->addWidget(date);
        date->show();
        for (QDateEdit* const field : {dialog_->day, static_cast<QDateEdit*>(date)}) {
            QSignalSpy told(field, &QDateEdit::dateChanged);
            for (const char* const way : {"Tab", "Backtab", "Home", "End", "Ctrl+A", "click 0", "click 1", "click 2",
                                          "double 0", "double 1", "double 2"}) {
                for (const auto& [keys, wanted] : cases) {
                    const QString about = QString("%1, %2: ").arg(way, keys);
                    GoInto(*field, way);
                    told.clear();
                    QCOMPARE(about + Typed(*field, keys).left(10), about + (*wanted ? wanted : "2026-11-26"));
                    for (const QList<QVariant>& one : told)
                        QCOMPARE(one[0].toDate(), field->date());
                    field->clearFocus();
                    QCOMPARE(field->text(), QLocale::c().toString(field->date(), field->displayFormat()));
                }
            }
        }
    }

    void a_part_of_a_date_is_typed_where_it_stands() {
        auto* const date = new TypedDateEdit(dialog_.get());
        dialog_->Content()->addWidget(date);
        date->show();
        const char *const day = "dddd,  MMM dd,  yyyy", *const number = " M/dd/yyyy", *const year = "  yyyy";
        const struct {
            const char *format, *way, *keys, *wanted;
        } cases[] = {{day, "Tab", "03", "2026-11-03"},           {day, "Tab", "30", "2026-11-30"},
                     {day, "Tab", "31", "2026-11-26"},           {day, "Tab", "Dec", "2026-12-26"},
                     {day, "Tab", "12/1", "2026-12-01"},         {day, "Tab", "Dec072027", "2027-12-07"},
                     {day, "Tab", "152031", "2031-11-15"},       {day, "Tab", "12, 2031", "2031-11-12"},
                     {day, "double 1", "2", "2026-02-26"},       {day, "double 2", "5", "2026-11-05"},
                     {day, "click 2", "5\b7", "2026-11-07"},     {day, "double 3", "1999", "1999-11-26"},
                     {day, "End", "\b\b31", "2031-11-26"},       {day, "End", "5", "2026-11-26"},
                     {number, "Tab", "3", "2026-03-26"},         {number, "Tab", "31", "2026-11-26"},
                     {number, "Ctrl+A", "12/5", "2026-12-05"},   {number, "click 1", "4", "2026-11-04"},
                     {number, "double 2", "1776", "1776-11-26"}, {number, "Tab", "1/x", "2026-11-26"},
                     {number, "Tab", "1/x\b5", "2026-01-05"},    {year, "Tab", "1848", "1848-11-26"},
                     {year, "Ctrl+A", "987", "0987-11-26"},      {year, "click 0", "0987", "0987-11-26"},
                     {year, "Home", "87", "2026-11-26"},         {year, "Tab", "7/1848", "2026-11-26"}};
        date->setDateRange(QDate(100, 1, 1), QDate(9999, 12, 31));
        for (const auto& c : cases) {
            const QString about = QString("%1 %2, %3: ").arg(c.format, c.way, c.keys);
            date->setDisplayFormat(c.format);
            GoInto(*date, c.way);
            QCOMPARE(about + Typed(*date, c.keys).left(10), about + c.wanted);
        }
        QDateEdit& field = *dialog_->day;
        GoInto(field, "Tab");
        PressKeys(&field, {"1", "Space", "Shift+D", "E", "C", "Return"});
        QCOMPARE(field.date(), QDate(2026, 12, 1));
        // Keys that step and move go on from the part that was typed.
        for (const auto& [key, wanted] :
             {std::pair("Up", "2026-11-11"), {"Ctrl+Right", "2027-11-10"}, {"Tab", "2027-11-10"}}) {
            GoInto(field, "Ctrl+A");
            PressKeys(&field, {"1", "0", key});
            if (*key != 'U')
                PressKeys(&field, {"Up"});
            QCOMPARE(field.date().toString(Qt::ISODate), QString(wanted));
            QVERIFY(field.text().startsWith(QLocale::c().toString(field.date(), "dddd")));
        }
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
        PressKeys(time, {"1", "4", "Ctrl+Right"});
        QCOMPARE(Typed(*time, "45").right(5), QString("14:45"));
        Fresh(*time);
        PressKeys(time, {"1", "7", "Up"});
        QCOMPARE(time->time(), QTime(18, 0));
    }

    void the_wheel_changes_only_what_has_the_focus() {
        dialog_->list->setFocus();
        const std::initializer_list<QWidget*> choosers{dialog_->box, dialog_->day, dialog_->tabs->tabBar()};
        for (QWidget* const chooser : choosers) {
            TurnWheel(chooser, -120);
            QVERIFY(!chooser->hasFocus());
            QVERIFY((chooser->focusPolicy() & Qt::WheelFocus) != Qt::WheelFocus);
        }
        QCOMPARE(dialog_->box->currentIndex(), 0);
        QCOMPARE(dialog_->day->date(), QDate(2026, 11, 26));
        QCOMPARE(dialog_->tabs->currentIndex(), 0);
        dialog_->box->setFocus();
        TurnWheel(dialog_->box, -120);
        QCOMPARE(dialog_->box->currentIndex(), 1);
    }

    void a_key_by_chance_says_no_to_a_question() {
        QtPrompts boxes;
        boxes.SetParent(dialog_.get());
        Prompts& prompts = boxes;
        const auto press = [](const char* key) {
            QTimer::singleShot(0, qApp, [key] {
                QWidget* const box = QApplication::activeModalWidget();
                PressKeys(box->focusWidget() ? box->focusWidget() : box, {key});
            });
        };
        for (const char* const key : {"Space", "Return", "Esc"}) {
            press(key);
            QVERIFY(prompts.Ask("Delete?", "Delete") == PromptAnswer::No);
            bool ticked = false;
            press(key);
            QVERIFY(prompts.AskWithBox("Cancel?", "Cancel", "never again", ticked) == PromptAnswer::No);
        }
        for (const auto& [key, answer] : {std::pair("Return", PromptAnswer::Yes), {"Esc", PromptAnswer::Cancel}}) {
            press(key);
            QVERIFY(prompts.Ask("Keep?", "Keep", true) == answer);
        }
        QTimer::singleShot(50, qApp, [] { PressKeys(QApplication::activeModalWidget(), {"Ctrl+Return"}); });
        QVERIFY(prompts.AskText("Name:", "New", "Lamps") == "Lamps");
        QTimer::singleShot(50, qApp, [] { PressKeys(QApplication::activeModalWidget(), {"Ctrl+Enter"}); });
        QVERIFY(AskTable(dialog_.get()));
    }
};

}  // namespace lore

QTEST_MAIN(lore::DialogKeysTest)
#include "dialog_keys_test.moc"
