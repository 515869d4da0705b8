#include "ui/note_editor/note_text_pane.h"

#include <QVBoxLayout>

#include "base/text.h"
#include "ui/controls/dialog_parts.h"
#include "ui/editor/find_bar.h"
#include "ui/editor/format_bar.h"
#include "ui/editor/rich_text_edit.h"
#include "ui/editor/spell_marks.h"
#include "ui/look/theme.h"

namespace lore {

namespace {

std::vector<TextPicture> Converted(std::vector<NotePicture> pictures) {
    std::vector<TextPicture> converted;
    converted.reserve(pictures.size());
    for (NotePicture& picture : pictures)
        converted.push_back({picture.position, picture.bytes, picture.fileName, std::move(picture.data)});
    return converted;
}

}  // namespace

NoteTextPane::NoteTextPane(const NewTextLook& look, const Theme& theme, QWidget* parent)
    : QWidget(parent), edit_(new RichTextEdit(theme, this)) {
    auto* const layout = MakeInner<QVBoxLayout>(this, kSpace);
    layout->addWidget(new FormatBar(*edit_, theme, this));
    layout->addWidget(new FindBar(*edit_, theme, this));
    layout->addWidget(edit_, 1);
    edit_->SetDefaultFont(look.font, look.halfPoints);
    connect(edit_, &QTextEdit::textChanged, this, &NoteTextPane::Changed);
    connect(edit_, &RichTextEdit::FilesDropped, this, &NoteTextPane::FilesDropped);
    connect(edit_, &RichTextEdit::LinkOpened, this, &NoteTextPane::LinkOpened);
    connect(&edit_->Spelling(), &SpellMarks::LanguageChosen, this, &NoteTextPane::LanguageChosen);
    connect(&edit_->Spelling(), &SpellMarks::OptionsRequested, this, &NoteTextPane::SpellOptionsRequested);
    connect(edit_, &RichTextEdit::SizeLimitPassed, this, &NoteTextPane::SizeLimitPassed);
}

NoteTextPane::~NoteTextPane() = default;

void NoteTextPane::Load(const std::string& rtf) {
    edit_->Load(rtf);
}

bool NoteTextPane::IsModified() const {
    return edit_->IsModified();
}

qint64 NoteTextPane::RtfSize() const {
    return edit_->IsSizeGuess() ? static_cast<qint64>(edit_->Rtf().size()) : edit_->RtfSize();
}

std::string NoteTextPane::PlainText() const {
    return FromUtf8(edit_->PlainText());
}

std::string NoteTextPane::RtfText() const {
    return edit_->Rtf();
}

void NoteTextPane::SetSpelling(SpellChecker* checker, const MarkStyle& style, const SkippedWords& skipped) {
    edit_->Spelling().SetEnabled(false);
    edit_->Spelling().SetChecker(checker, style, skipped);
}

void NoteTextPane::SetSpellCheck(bool on) {
    edit_->Spelling().SetEnabled(on);
}

void NoteTextPane::CaptureAside(std::function<void(std::string rtf, std::string plain)> whenReady) {
    edit_->CaptureAside([whenReady = std::move(whenReady)](CapturedTexts texts) {
        whenReady(std::move(texts.rtf), FromUtf8(texts.plainText));
    });
}

std::vector<TextPicture> NoteTextPane::Pictures() const {
    return Converted(edit_->Pictures());
}

std::vector<TextPicture> NoteTextPane::TakePictures(const std::vector<int>& positions) {
    return Converted(edit_->TakePictures(positions));
}

QTextEdit* NoteTextPane::Edit() const {
    return edit_;
}

}  // namespace lore
