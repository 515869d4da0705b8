#include "ui/editor/format_bar.h"

#include <QFile>
#include <QFileDialog>
#include <QLineEdit>
#include <QMenu>
#include <QMessageBox>
#include <QSignalBlocker>
#include <QToolButton>
#include <algorithm>
#include <cmath>

#include "ui/editor/color_menu.h"
#include "ui/editor/editor_dialogs.h"
#include "ui/editor/rich_text_edit.h"
#include "ui/editor/table_commands.h"
#include "ui/look/theme.h"
#include "ui/look/theme_tool_bar.h"

namespace lore {
namespace {

constexpr int kSizes[] = {10, 11, 12, 14, 16, 18, 20, 22, 24, 26, 28, 36, 48, 72};
constexpr double kLargestSize = 1638;  // points

struct FlagCommand {
    const char* name;
    bool CharFormat::*field;
};
constexpr FlagCommand kFlags[] = {{"bold", &CharFormat::bold},
                                  {"italic", &CharFormat::italic},
                                  {"underline", &CharFormat::underline},
                                  {"strike", &CharFormat::strike}};

struct ScriptCommand {
    const char* name;
    ScriptPosition position;
};
constexpr ScriptCommand kScripts[] = {{"superscript", ScriptPosition::Superscript},
                                      {"subscript", ScriptPosition::Subscript}};

struct ListCommand {
    const char* name;
    ListKind kind;
};
constexpr ListCommand kLists[] = {{"bullets", ListKind::Bullet}, {"numbers", ListKind::Decimal}};

struct AlignCommand {
    const char* name;
    ParagraphAlign align;
};
constexpr AlignCommand kAligns[] = {{"left", ParagraphAlign::Left},
                                    {"center", ParagraphAlign::Center},
                                    {"right", ParagraphAlign::Right},
                                    {"justify", ParagraphAlign::Justify}};

struct StyleCommand {
    const char* text;
    Qt::Key key;
};
constexpr StyleCommand kStyleCommands[] = {{QT_TRANSLATE_NOOP("lore::FormatBar", "Normal"), Qt::Key_0},
                                           {QT_TRANSLATE_NOOP("lore::FormatBar", "Heading 1"), Qt::Key_1},
                                           {QT_TRANSLATE_NOOP("lore::FormatBar", "Heading 2"), Qt::Key_2},
                                           {QT_TRANSLATE_NOOP("lore::FormatBar", "Heading 3"), Qt::Key_3},
                                           {QT_TRANSLATE_NOOP("lore::FormatBar", "Quotation"), Qt::Key_4}};

struct TableCommand {
    const char* text;
    void (*run)(QTextCursor&, NoteFormats&);
};
template <TablePart part>
void AddPart(QTextCursor& cursor, NoteFormats& formats) {
    AddTablePart(cursor, part, formats);
}
template <void (*remove)(QTextCursor&)>
void Remove(QTextCursor& cursor, NoteFormats&) {
    remove(cursor);
}
constexpr TableCommand kTableCommands[] = {
    {QT_TRANSLATE_NOOP("lore::FormatBar", "Row &above"), AddPart<TablePart::RowAbove>},
    {QT_TRANSLATE_NOOP("lore::FormatBar", "Row &below"), AddPart<TablePart::RowBelow>},
    {QT_TRANSLATE_NOOP("lore::FormatBar", "Column be&fore"), AddPart<TablePart::ColumnBefore>},
    {QT_TRANSLATE_NOOP("lore::FormatBar", "Column af&ter"), AddPart<TablePart::ColumnAfter>},
    {QT_TRANSLATE_NOOP("lore::FormatBar", "Remove &row"), Remove<RemoveTableRow>},
    {QT_TRANSLATE_NOOP("lore::FormatBar", "Remove &column"), Remove<RemoveTableColumn>},
    {QT_TRANSLATE_NOOP("lore::FormatBar", "Remove tab&le"), Remove<RemoveTable>},
};

template <typename Table>
auto Find(const Table& table, const QString& name) {
    return std::find_if(std::begin(table), std::end(table),
                        [&](const auto& each) { return name == QLatin1String(each.name); });
}

}  // namespace

struct FormatBar::Entry {
    const char* name;
    const char* text;
    const char* icon;
    QKeySequence shortcut;
    bool checkable;
    bool hasMenu;
};

FormatBar::FormatBar(RichTextEdit& edit, const Theme& theme, QWidget* parent)
    : QToolBar(tr("Format"), parent), edit_(edit), theme_(theme) {
    setObjectName("formatBar");
    setAccessibleName(tr("Format"));
    setMovable(false);
    setFloatable(false);
    setContextMenuPolicy(Qt::PreventContextMenu);
    setContentsMargins(kSpace, kSpace, kSpace, kSpace);
    const int side = std::max(16, fontMetrics().height());
    setIconSize(QSize(side, side));
    AddStyles();
    AddFonts();
    AddSizes();
    AddCommands();
    connect(&edit_, &QTextEdit::currentCharFormatChanged, this, &FormatBar::Follow);
    connect(&edit_, &QTextEdit::cursorPositionChanged, this, &FormatBar::Follow);
    // A picture may be selected without the caret moving.
    connect(&edit_, &QTextEdit::selectionChanged, this, &FormatBar::Follow);
    connect(&edit_, &QTextEdit::textChanged, this, &FormatBar::Follow);
    DressMoreButton(*this);
    Follow();
}

QComboBox* FormatBar::AddCombo(QComboBox* combo, const QString& name, int characters) {
    combo->setAccessibleName(name);
    if (combo->lineEdit())
        combo->lineEdit()->setAccessibleName(name);
    combo->setToolTip(name);
    combo->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
    combo->setMinimumContentsLength(characters);
    combo->setMaximumWidth(combo->sizeHint().width());
    addWidget(combo);
    return combo;
}

void FormatBar::AddStyles() {
    styles_ = AddCombo(new QComboBox(this), tr("Paragraph style"), 9);
    styles_->setObjectName("styleList");
    for (size_t i = 0; i < std::size(kStyleCommands); ++i) {
        styles_->addItem(tr(kStyleCommands[i].text));
        const auto style = static_cast<ParagraphStyle>(i);
        auto* const action = new QAction(tr(kStyleCommands[i].text), this);
        action->setShortcut(QKeySequence(Qt::CTRL | Qt::ALT | kStyleCommands[i].key));
        action->setShortcutContext(Qt::WidgetWithChildrenShortcut);
        connect(action, &QAction::triggered, this, [this, style] {
            edit_.Commands().SetStyle(style);
            Follow();
        });
        edit_.addAction(action);
        commands_.push_back(action);
        styles_->setItemData(static_cast<int>(i), action->shortcut().toString(QKeySequence::NativeText),
                             Qt::ToolTipRole);
    }
    connect(styles_, &QComboBox::activated, this, [this](int index) {
        edit_.Commands().SetStyle(static_cast<ParagraphStyle>(index));
        edit_.setFocus();
    });
}

void FormatBar::AddFonts() {
    fonts_ = new QFontComboBox(this);
    fonts_->setObjectName("fontList");
    fonts_->setEditable(true);
    fonts_->setInsertPolicy(QComboBox::NoInsert);
    AddCombo(fonts_, tr("Font"), 14);
    connect(fonts_, &QComboBox::textActivated, this, [this](const QString& name) {
        const int32_t font = edit_.Formats().Font(name.toStdString());
        edit_.Commands().Characters([font](CharFormat& format) { format.font = font; });
        edit_.setFocus();
    });
}

void FormatBar::AddSizes() {
    sizes_ = new QComboBox(this);
    sizes_->setObjectName("sizeList");
    sizes_->setEditable(true);
    sizes_->setInsertPolicy(QComboBox::NoInsert);
    sizes_->setCompleter(nullptr);  // a 7 is no 72
    for (const int size : kSizes)
        sizes_->addItem(QString::number(size));
    AddCombo(sizes_, tr("Font size"), 4);
    connect(sizes_, &QComboBox::textActivated, this, &FormatBar::ApplySize);
    connect(sizes_->lineEdit(), &QLineEdit::returnPressed, this, [this] { ApplySize(sizes_->currentText()); });
    addSeparator();
}

void FormatBar::ApplySize(const QString& text) {
    bool isNumber = false;
    const double points = locale().toDouble(text, &isNumber);
    if (isNumber && points >= 1 && points <= kLargestSize) {
        const auto halves = static_cast<int16_t>(std::lround(points * 2));
        edit_.Commands().Characters([halves](CharFormat& format) { format.halfPoints = halves; });
    }
    edit_.setFocus();
    Follow();
}

void FormatBar::AddCommands() {
    constexpr auto kShift = Qt::CTRL | Qt::SHIFT;
    const Entry entries[] = {
        {"bold", QT_TR_NOOP("Bold"), "bold", QKeySequence::Bold, true, false},
        {"italic", QT_TR_NOOP("Italic"), "italic", QKeySequence::Italic, true, false},
        {"underline", QT_TR_NOOP("Underline"), "underline", QKeySequence::Underline, true, false},
        {"strike", QT_TR_NOOP("Strike through"), "strikethrough", QKeySequence(kShift | Qt::Key_X), true, false},
        {"color", QT_TR_NOOP("Text color"), "baseline", {}, false, true},
        {"highlight", QT_TR_NOOP("Highlight"), "highlighter", {}, false, true},
        {},
        {"bullets", QT_TR_NOOP("Bulleted list"), "list", QKeySequence(kShift | Qt::Key_8), true, false},
        {"numbers", QT_TR_NOOP("Numbered list"), "list-ordered", QKeySequence(kShift | Qt::Key_7), true, false},
        {"outdent", QT_TR_NOOP("Less indent"), "indent-decrease", QKeySequence(kShift | Qt::Key_M), false, false},
        {"indent", QT_TR_NOOP("More indent"), "indent-increase", QKeySequence(Qt::CTRL | Qt::Key_M), false, false},
        {},
        {"left", QT_TR_NOOP("Align left"), "align-left", QKeySequence(Qt::CTRL | Qt::Key_L), true, false},
        {"center", QT_TR_NOOP("Center"), "align-center", QKeySequence(Qt::CTRL | Qt::Key_E), true, false},
        {"right", QT_TR_NOOP("Align right"), "align-right", QKeySequence(Qt::CTRL | Qt::Key_R), true, false},
        {"justify", QT_TR_NOOP("Justify"), "align-justify", QKeySequence(Qt::CTRL | Qt::Key_J), true, false},
        {},
        {"link", QT_TR_NOOP("Link"), "link", QKeySequence(kShift | Qt::Key_K), false, false},
        {"picture", QT_TR_NOOP("Picture"), "image", QKeySequence(kShift | Qt::Key_P), false, false},
        {"table", QT_TR_NOOP("Table"), "table", {}, false, true},
        {},
        {"undo", QT_TR_NOOP("Undo"), "undo-2", QKeySequence::Undo, false, false},
        {"redo", QT_TR_NOOP("Redo"), "redo-2", QKeySequence::Redo, false, false},
        {},
        {"superscript", QT_TR_NOOP("Superscript"), "superscript", QKeySequence(kShift | Qt::Key_Plus), true, false},
        {"subscript", QT_TR_NOOP("Subscript"), "subscript", QKeySequence(Qt::CTRL | Qt::Key_Equal), true, false},
        {"plain", QT_TR_NOOP("Clear formatting"), "remove-formatting", QKeySequence(Qt::CTRL | Qt::Key_Space), false,
         false},
        {"openLink", QT_TR_NOOP("Open link"), "external-link", QKeySequence(kShift | Qt::Key_O), false, false},
        {"pictureSize", QT_TR_NOOP("Size of picture"), "image", QKeySequence(kShift | Qt::Key_I), false, false},
    };
    for (const Entry& entry : entries) {
        if (!entry.name)
            addSeparator();
        else
            AddCommand(entry);
    }
}

void FormatBar::AddCommand(const Entry& entry) {
    auto* const action = new QAction(theme_.Icon(QLatin1String(entry.icon)), tr(entry.text), this);
    const QString name = QLatin1String(entry.name);
    action->setObjectName(name);
    action->setCheckable(entry.checkable);
    action->setShortcut(entry.shortcut);
    action->setShortcutContext(Qt::WidgetWithChildrenShortcut);
    action->setToolTip(
        entry.shortcut.isEmpty()
            ? tr(entry.text)
            : QStringLiteral("%1 (%2)").arg(tr(entry.text), entry.shortcut.toString(QKeySequence::NativeText)));
    if (entry.hasMenu)
        action->setMenu(MenuOf(name));
    else
        connect(action, &QAction::triggered, this, [this, name] {
            Run(name);
            Follow();
        });
    edit_.addAction(action);
    addAction(action);
    byName_[name] = action;
    commands_.push_back(action);
    if (auto* const button = qobject_cast<QToolButton*>(widgetForAction(action))) {
        button->setFocusPolicy(Qt::TabFocus);
        button->setAccessibleName(tr(entry.text));
        if (entry.hasMenu)
            button->setPopupMode(QToolButton::InstantPopup);
    }
}

QMenu* FormatBar::MenuOf(const QString& name) {
    if (name == u"table")
        return TableMenu();
    const bool forText = name == u"color";
    auto* const menu = new ColorMenu(forText ? tr("Text color") : tr("Highlight"), forText, this);
    connect(menu, &ColorMenu::ColorChosen, this, [this, forText](const QColor& color) {
        SetColor(color, forText ? &CharFormat::color : &CharFormat::background);
    });
    return menu;
}

QMenu* FormatBar::TableMenu() {
    auto* const menu = new QMenu(tr("Table"), this);
    QAction* const insert = menu->addAction(tr("&Insert table..."));
    insert->setShortcut(QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_T));
    insert->setObjectName("insertTable");
    insert->setShortcutContext(Qt::WidgetWithChildrenShortcut);
    connect(insert, &QAction::triggered, this, [this] {
        if (const auto choice = AskTable(this))
            edit_.InsertTableHere(choice->rows, choice->columns);
        edit_.setFocus();
    });
    edit_.addAction(insert);
    commands_.push_back(insert);
    menu->addSeparator();
    for (const TableCommand& command : kTableCommands) {
        QAction* const action = menu->addAction(tr(command.text));
        connect(action, &QAction::triggered, this, [this, run = command.run] {
            QTextCursor cursor = edit_.textCursor();
            run(cursor, edit_.Formats());
        });
        inTable_.push_back(action);
        commands_.push_back(action);
    }
    return menu;
}

QAction* FormatBar::Command(const QString& name) const {
    const auto found = byName_.find(name);
    return found == byName_.end() ? nullptr : found->second;
}

void FormatBar::Run(const QString& name) {
    TextCommands& commands = edit_.Commands();
    const bool on = Command(name)->isChecked();
    if (const auto flag = Find(kFlags, name); flag != std::end(kFlags)) {
        commands.Characters([&](CharFormat& format) { format.*flag->field = on; });
    } else if (const auto script = Find(kScripts, name); script != std::end(kScripts)) {
        commands.Characters(
            [&](CharFormat& format) { format.position = on ? script->position : ScriptPosition::Baseline; });
    } else if (const auto list = Find(kLists, name); list != std::end(kLists)) {
        commands.ToggleList(list->kind);
    } else if (const auto align = Find(kAligns, name); align != std::end(kAligns)) {
        commands.Paragraphs([&](ParagraphFormat& format) { format.align = align->align; });
    } else if (name == u"indent" || name == u"outdent") {
        commands.Indent(name == u"indent" ? 1 : -1);
    } else if (name == u"plain") {
        commands.Characters([plain = edit_.Formats().Default()](CharFormat& format) {
            const int32_t link = format.link;
            format = plain;
            format.link = link;
        });
    } else if (name == u"undo") {
        edit_.undo();
    } else if (name == u"redo") {
        edit_.redo();
    } else if (name == u"link") {
        EditLink();
    } else if (name == u"openLink") {
        if (const auto target = edit_.Formats().LinkTarget(commands.CharactersNow()); !target.empty())
            emit edit_.LinkOpened(QString::fromStdString(target));
    } else if (name == u"picture") {
        ChoosePicture();
    } else if (name == u"pictureSize") {
        ResizePicture();
    }
}

void FormatBar::SetColor(const QColor& color, std::optional<TextColor> CharFormat::*field) {
    std::optional<TextColor> chosen;
    if (color.isValid())
        chosen = TextColor{static_cast<uint8_t>(color.red()), static_cast<uint8_t>(color.green()),
                           static_cast<uint8_t>(color.blue())};
    edit_.Commands().Characters([&](CharFormat& format) { format.*field = chosen; });
    edit_.setFocus();
}

void FormatBar::EditLink() {
    TextCommands& commands = edit_.Commands();
    LinkChoice now;
    now.target = QString::fromStdString(edit_.Formats().LinkTarget(commands.CharactersNow()));
    const bool textNeeded = !commands.LinkAround().hasSelection();
    if (const auto choice = AskLink(this, now, textNeeded))
        commands.SetLink(choice->target, choice->text);
    edit_.setFocus();
}

void FormatBar::ChoosePicture() {
    const QStringList paths =
        QFileDialog::getOpenFileNames(this, tr("Insert picture"), QString(),
                                      tr("Pictures (*.png *.jpg *.jpeg *.gif *.bmp *.webp *.svg);;All files (*)"));
    for (const QString& path : paths) {
        QFile file(path);
        if (!file.open(QIODevice::ReadOnly) || !edit_.InsertPictureBytes(file.readAll()))
            QMessageBox::warning(this, tr("Insert picture"), tr("\"%1\" could not be read as a picture.").arg(path));
    }
    edit_.setFocus();
}

void FormatBar::ResizePicture() {
    const QTextCursor picture = edit_.SelectedPicture();
    if (picture.isNull())
        return;
    const QTextImageFormat format = picture.charFormat().toImageFormat();
    if (const auto size = AskPictureSize(this, QSizeF(format.width(), format.height()), edit_.TextWidth()))
        edit_.ResizePicture(picture, *size);
    edit_.setFocus();
}

void FormatBar::FollowFonts(const CharFormat& characters) {
    const QSignalBlocker quietFonts(fonts_), quietSizes(sizes_), quietStyles(styles_);
    // The entry becomes the current one too: a list that is left with the text of another entry would choose that.
    // What is shown already isn't set again, for a screen reader would speak it at each key.
    const auto show = [](QComboBox& list, const QString& text) {
        const bool isShown = list.currentText() == text;
        if (list.hasFocus() || (isShown && list.itemText(list.currentIndex()) == text))
            return;
        const int entry = list.findText(text, Qt::MatchFixedString);
        if (isShown && list.currentIndex() == entry)
            return;
        list.setCurrentIndex(entry);
        list.setEditText(text);
    };
    show(*fonts_, QString::fromStdString(edit_.Formats().FontName(characters)));
    show(*sizes_, locale().toString(characters.halfPoints / 2.0, 'g', 5));
    styles_->setCurrentIndex(static_cast<int>(edit_.Commands().StyleNow()));
}

void FormatBar::Follow() {
    const CharFormat characters = edit_.Commands().CharactersNow();
    const ParagraphFormat paragraph = edit_.Commands().ParagraphNow();
    for (const FlagCommand& flag : kFlags)
        byName_[flag.name]->setChecked(characters.*flag.field);
    for (const ScriptCommand& script : kScripts)
        byName_[script.name]->setChecked(characters.position == script.position);
    for (const ListCommand& list : kLists)
        byName_[list.name]->setChecked(paragraph.list == list.kind);
    for (const AlignCommand& align : kAligns)
        byName_[align.name]->setChecked(paragraph.align == align.align);
    const bool inTable = edit_.textCursor().currentTable() != nullptr;
    for (QAction* const action : inTable_)
        action->setEnabled(inTable);
    byName_["undo"]->setEnabled(edit_.document()->isUndoAvailable());
    byName_["redo"]->setEnabled(edit_.document()->isRedoAvailable());
    byName_["openLink"]->setEnabled(characters.link >= 0);
    byName_["pictureSize"]->setEnabled(!edit_.SelectedPicture().isNull());
    FollowFonts(characters);
}

}  // namespace lore
