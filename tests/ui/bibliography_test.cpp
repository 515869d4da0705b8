#include <functional>

#include "bibliography/bibliography_file.h"
#include "ui/bibliography/select_sources_dlg.h"
#include "ui/sources/source_list_model.h"
#include "ui/sources/sources_list_wnd.h"
#include "ui/window_world.h"

namespace lore {

/// "Create Bibliography..." as a user drives it on the sample NoteBook.
class BibliographyTest : public QObject, protected WindowWorld {
    Q_OBJECT

private:
    using Steps = std::function<void(CSelectSourcesDlg&)>;
    void InSelection(const Steps& steps) {
        InDialog<CSelectSourcesDlg>(
            [this] { QTest::keyClick(window_.get(), Qt::Key_B, Qt::ControlModifier | Qt::ShiftModifier); }, steps);
    }
    static CSourcesListWnd* List(CSelectSourcesDlg& dialog, const char* name) {
        return dialog.findChild<CSourcesListWnd*>(name);
    }
    static const CSource& At(CSourcesListWnd* list, int row) {
        return static_cast<const SourceListModel*>(list->model())->At(row);
    }
    static int Count(CSelectSourcesDlg& dialog, const char* name) { return List(dialog, name)->model()->rowCount(); }
    static void Click(CSelectSourcesDlg& dialog, const char* button) {
        dialog.findChild<QAbstractButton*>(button)->click();
    }
    std::filesystem::path Bib() const { return DataPaths{Root()}.Bibliography(); }
    int All() const { return static_cast<int>(app_->NoteBook().sources.Count()); }

private slots:
    void init() { OpenSample(); }
    void cleanup() { CloseWindow(); }
    void a_double_click_moves_a_source_over_and_back() {
        InSelection([this](CSelectSourcesDlg& dialog) {
            CSourcesListWnd* const available = List(dialog, "available");
            CSourcesListWnd* const selected = List(dialog, "selected");
            QCOMPARE(Count(dialog, "available"), All());
            const int32_t id = At(available, 2).SourceID;
            const QPoint third = available->visualRect(available->model()->index(2, 0)).center();
            QTest::mouseClick(available->viewport(), Qt::LeftButton, {}, third);
            QTest::mouseDClick(available->viewport(), Qt::LeftButton, {}, third);
            QCOMPARE(Count(dialog, "available"), All() - 1);
            QCOMPARE(At(selected, 0).SourceID, id);
            const QPoint first = selected->visualRect(selected->model()->index(0, 0)).center();
            QTest::mouseClick(selected->viewport(), Qt::LeftButton, {}, first);
            QTest::mouseDClick(selected->viewport(), Qt::LeftButton, {}, first);
            QCOMPARE(Count(dialog, "selected"), 0);
            QTest::keyClick(selected, Qt::Key_C, Qt::ControlModifier);  // there is nothing to copy
            QCOMPARE(At(available, 2).SourceID, id);
        });
    }

    void keys_move_several_sources() {
        InSelection([this](CSelectSourcesDlg& dialog) {
            CSourcesListWnd* const available = List(dialog, "available");
            QTRY_VERIFY(available->hasFocus());
            QTest::keyClick(available, Qt::Key_Down);
            for (int i = 0; i < 3; ++i)
                QTest::keyClick(available, Qt::Key_Return);
            QVERIFY(dialog.isVisible());
            QCOMPARE(Count(dialog, "selected"), 3);
            CSourcesListWnd* const selected = List(dialog, "selected");
            selected->setFocus();
            selected->SelectRow(0);
            QTest::keyClick(selected, Qt::Key_Delete);
            QCOMPARE(Count(dialog, "selected"), 2);
            Click(dialog, "all");
            QCOMPARE(Count(dialog, "available"), 0);
            QVERIFY(!dialog.findChild<QPushButton*>("all")->isEnabled());
            Click(dialog, "none");
            QCOMPARE(Count(dialog, "available"), All());
        });
    }

    void formatting_of_all_reaches_the_file_and_nothing_else() {
        const std::string before = BytesOf(app_->NoteBook().paths.Sources());
        InSelection([](CSelectSourcesDlg& dialog) {
            auto* const style = dialog.findChild<QComboBox*>("style");
            QVERIFY(!style->isEnabled());
            Click(dialog, "all");
            Click(dialog, "common");
            QVERIFY(style->isEnabled());
            style->setCurrentText("APA Style");
            dialog.findChild<QSpinBox*>("indent")->setValue(5);
            QCOMPARE(At(List(dialog, "selected"), 0).FormatStyle, 9);
            QTest::keyClick(&dialog, Qt::Key_Return, Qt::ControlModifier);
            QCOMPARE(dialog.result(), 2112);
        });
        SourceList written;
        bool whole = false;
        QVERIFY(LoadBibliography(Bib(), MakeReadContext(clock_, guids_), written, whole).Ok() && whole);
        QCOMPARE(static_cast<int>(written.Count()), All());
        for (const CSource& source : written) {
            QCOMPARE(source.FormatStyle, 9);
            QCOMPARE(source.IndentSpaces, 5);
        }
        QVERIFY(BytesOf(app_->NoteBook().paths.Sources()) == before);
    }

    void cancel_and_an_empty_choice_write_nothing() {
        InSelection([](CSelectSourcesDlg& dialog) {
            Click(dialog, "all");
            QTest::keyClick(&dialog, Qt::Key_Escape);
            QVERIFY(!dialog.isVisible());
        });
        QVERIFY(!std::filesystem::exists(Bib()));
        InSelection([](CSelectSourcesDlg& dialog) { Click(dialog, "save"); });
        QVERIFY(!std::filesystem::exists(Bib()));
    }

    void looks_good() {
        const BothLooks looks{*theme_};
        InSelection([&](CSelectSourcesDlg& dialog) {
            looks.Shoot(dialog, "bibliography-begin");
            CSourcesListWnd* const available = List(dialog, "available");
            available->SelectRow(1);
            for (int i = 0; i < 6; ++i)
                Click(dialog, "add");
            Click(dialog, "common");
            List(dialog, "selected")->SelectRow(2);
            List(dialog, "selected")->setFocus();
            looks.Shoot(dialog, "bibliography");
        });
    }
};

}  // namespace lore

QTEST_MAIN(lore::BibliographyTest)
#include "bibliography_test.moc"
