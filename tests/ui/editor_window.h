#pragma once

#include <QTextTable>
#include <functional>
#include <memory>

#include "rtf/rtf.h"
#include "ui/board_fixture.h"
#include "ui/controls.h"
#include "ui/editor/find_bar.h"
#include "ui/editor/format_bar.h"
#include "ui/editor/rich_text_edit.h"
#include "ui/look/theme.h"

namespace lore {

/// The editor with its bars, as the window of a note holds it.
struct EditorWindow {
    /// `load` runs before the window is shown, as it does for a note.
    explicit EditorWindow(Theme& theme, const std::function<void(RichTextEdit&)>& load = {}) {
        edit = new RichTextEdit(theme);  // behind the bars, which the layout sees to
        if (load)
            load(*edit);
        bar = new FormatBar(*edit, theme, &frame);
        find = new FindBar(*edit, theme, &frame);
        auto* const rows = new QVBoxLayout(&frame);
        rows->setContentsMargins(0, 0, 0, 0);
        rows->setSpacing(0);
        rows->addWidget(bar);
        rows->addWidget(find);
        rows->addWidget(edit, 1);
        frame.resize(900, 640);
        frame.show();
        edit->setFocus();
        QApplication::setActiveWindow(&frame);
        QCoreApplication::processEvents();
    }
    void Type(const QString& text) { QTest::keyClicks(edit, text); }
    Document Now() const { return ReadRtf(edit->Rtf()); }
    std::string Text() const { return Now().text; }
    void SelectPicture() {
        QTextCursor picture(edit->document());
        picture.movePosition(QTextCursor::NextCharacter, QTextCursor::KeepAnchor);
        edit->setTextCursor(picture);
    }
    /// Runs steps in the dialog of this name that a command opens; Return ends it if they don't.
    void InDialog(const char* name, const std::function<void()>& command, const std::function<void(QDialog&)>& steps) {
        bool found = false;
        QTimer::singleShot(0, edit, [&] {
            auto* const dialog = qobject_cast<QDialog*>(QApplication::activeModalWidget());
            QVERIFY(dialog);
            found = dialog->objectName() == QLatin1String(name);
            TakeShot(*dialog, QStringLiteral("editor-") + QLatin1String(name));
            steps(*dialog);
            if (dialog->isVisible())
                QTest::keyClick(dialog, Qt::Key_Return);
        });
        command();
        QVERIFY(found);
    }
    // The bar may be narrower than its commands; the action is the command all the same.
    void Run(const char* name) { bar->Command(QLatin1String(name))->trigger(); }

    QWidget frame;
    RichTextEdit* edit;
    FormatBar* bar;
    FindBar* find;
};

/// An editor in the light palette, for a test of its own.
class EditorWorld {
protected:
    void OpenEditor(const std::function<void(RichTextEdit&)>& load = {}) {
        theme_.SetAppearance(Appearance::Light);
        window_ = std::make_unique<EditorWindow>(theme_, load);
        edit_ = window_->edit;
        QVERIFY(QTest::qWaitForWindowExposed(&window_->frame));
    }
    Document Now() const { return window_->Now(); }
    void Select(const QString& word) { edit_->setTextCursor(edit_->document()->find(word)); }
    void Paste(QMimeData* mime) {
        QApplication::clipboard()->setMimeData(mime);
        edit_->paste();
    }
    void UndoAll() {
        for (int step = 0; edit_->document()->isUndoAvailable() && step < 50; ++step)
            edit_->undo();
    }
    /// The tables of the text, not those within others.
    QList<QTextTable*> Tables() const {
        QList<QTextTable*> tables;
        for (QTextFrame* const frame : edit_->document()->rootFrame()->childFrames())
            tables.append(qobject_cast<QTextTable*>(frame));
        return tables;
    }

    Theme theme_{*qApp, Appearance::Light};
    std::unique_ptr<EditorWindow> window_;
    RichTextEdit* edit_ = nullptr;
};

}  // namespace lore
