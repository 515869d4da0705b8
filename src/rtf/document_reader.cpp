#include <algorithm>
#include <iterator>
#include <optional>
#include <unordered_map>
#include <utility>

#include "rtf/body_reader.h"
#include "rtf/document_builder.h"
#include "rtf/field.h"
#include "rtf/format_state.h"
#include "rtf/kept_group.h"
#include "rtf/picture_reader.h"
#include "rtf/rtf.h"

namespace lore {

namespace {

/// Lists of older programs have no numbers; theirs begin here.
constexpr int32_t kFirstOldList = 1001;

class DocumentReader : public BodyReader {
public:
    explicit DocumentReader(std::string_view rtf) : BodyReader(rtf), formats_(1) {}
    Document Take() { return std::move(document_); }

protected:
    void OnText(std::string_view utf8, size_t, size_t) override {
        EndHidden();
        builder_.AddText(utf8, Characters());
    }
    void OnHidden(std::string_view utf8) override;
    void OnBreak(TextBreak kind) override;
    void OnEnd(bool afterParagraph) override;
    bool OnEnter(Destination destination) override;
    void OnOther(Destination destination, std::string_view utf8) override;
    void OnFont(const DocumentFont& font) override;
    void OnBinary(Destination destination, std::string_view bytes) override;
    void OnKept(std::string_view rtf) override;
    void OnInstruction(std::string_view utf8) override;
    void OnWord(const ControlWord& word, const Token& token) override;
    void OnOpen() override;
    void OnClose(const Group& closed, size_t end) override;

private:
    struct ObjectPicture {
        Picture picture;
        bool inResult = false;
    };

    FormatState& State() { return formats_.back(); }
    const CharFormat& Characters();
    ParagraphFormat ParagraphNow();
    int32_t OldListId(const ParagraphFormat& format);
    int32_t FontIndex(int32_t number) const;
    void ReadTableWord(const ControlWord& word, const Token& token);
    void EndPicture(const Group& closed);
    void EndObject(const Group& closed, size_t end, size_t firstPicture);
    std::optional<std::string> ObjectForm(const Group& closed, size_t end);
    void EndHidden();

    DocumentBuilder builder_;
    Document document_;
    std::vector<FormatState> formats_;  ///< one for each group
    ColorTable colors_;
    ListTables lists_;
    RowReader row_;
    RowReader nestedRow_;
    PictureReader picture_;
    std::vector<ObjectPicture> objectPictures_;       ///< of the objects and the shapes that are open
    std::vector<std::pair<size_t, size_t>> results_;  ///< source bytes of what those objects show
    std::unordered_map<int32_t, int32_t> fontIndexes_;
    std::string hidden_;          ///< text that isn't shown, not yet in the document
    bool hiddenDeleted_ = false;  ///< it has been deleted, not hidden
    std::vector<std::string> targets_;
    ParagraphFormat lastOldList_;  ///< format of the paragraph before, if it belongs to a list of an older program
    int32_t oldLists_ = 0;
};

const CharFormat& DocumentReader::Characters() {
    FormatState& state = State();
    if (state.target >= 0 && state.chars.link < 0)
        state.chars.link = builder_.Link(targets_[static_cast<size_t>(state.target)]);
    return state.chars;
}

void DocumentReader::OnBreak(TextBreak kind) {
    EndHidden();
    const int level = State().TableLevel();
    switch (kind) {
        case TextBreak::Paragraph:
            builder_.EndParagraph(ParagraphNow(), level);
            return;
        case TextBreak::Line:
            builder_.AddText("\n", Characters());
            return;
        case TextBreak::Page:
            builder_.AddBreak(RunKind::PageBreak, Characters());
            return;
        case TextBreak::Column:
            builder_.AddBreak(RunKind::ColumnBreak, Characters());
            return;
        case TextBreak::Section:
            builder_.AddBreak(RunKind::SectionBreak, Characters());
            return;
        case TextBreak::Cell:
            builder_.EndCell(ParagraphNow(), 1);
            return;
        case TextBreak::NestedCell:
            builder_.EndCell(ParagraphNow(), std::max(2, level));
            return;
        case TextBreak::Row:
            builder_.EndRow(row_.Row(), {}, 1);
            return;
        case TextBreak::NestedRow:
            builder_.EndRow(nestedRow_.Row(), {}, std::max(2, level));
            return;
    }
}

/// The format of a paragraph that ends here.
ParagraphFormat DocumentReader::ParagraphNow() {
    const FormatState& state = State();
    ParagraphFormat format = state.paragraph;
    const ListTables::Level* level = lists_.Find(state.listNumber, format.listLevel);
    if (state.listNumber > 0) {
        format.list = level == nullptr ? ListKind::Decimal : level->kind;
        format.listStart = level == nullptr ? int16_t{1} : level->start;
        format.listId = state.listNumber;
    } else {
        format.list = state.oldList;
    }
    if (format.list == ListKind::None) {
        format.listId = 0;
        format.listLevel = 0;
        format.listStart = 1;
    } else if (format.listId == 0) {
        format.listId = OldListId(format);
        lastOldList_ = format;
        return format;
    }
    lastOldList_ = {};
    return format;
}

int32_t DocumentReader::OldListId(const ParagraphFormat& format) {
    const bool goesOn = lastOldList_.list == format.list && lastOldList_.listStart == format.listStart;
    return goesOn ? lastOldList_.listId : kFirstOldList + oldLists_++;
}

/// What isn't shown stays as a group that says so.
void DocumentReader::OnHidden(std::string_view utf8) {
    if (hiddenDeleted_ != Current().deleted)
        EndHidden();
    hiddenDeleted_ = Current().deleted;
    hidden_ += utf8;
}

void DocumentReader::EndHidden() {
    if (hidden_.empty())
        return;
    builder_.AddKept(UnshownText(std::exchange(hidden_, {}), hiddenDeleted_));
}

void DocumentReader::OnEnd(bool afterParagraph) {
    EndHidden();
    Document& unfinished = builder_.Unfinished();
    unfinished.codePage = DocumentCodePage();
    unfinished.defaultFont = FontIndex(DefaultFont());
    document_ = builder_.Finish(ParagraphNow(), afterParagraph);
}

bool DocumentReader::OnEnter(Destination destination) {
    if (destination == Destination::Picture)
        picture_ = {};
    else if (destination == Destination::Object || destination == Destination::Shape)
        State().firstPicture = objectPictures_.size();
    return destination != Destination::Skip && destination != Destination::Keep;
}

void DocumentReader::OnOther(Destination destination, std::string_view utf8) {
    if (destination == Destination::Picture)
        picture_.ReadHex(utf8);
    else if (destination == Destination::ColorTable)
        colors_.ReadText(utf8);
}

void DocumentReader::OnBinary(Destination destination, std::string_view bytes) {
    if (destination == Destination::Picture)
        picture_.ReadBinary(bytes);
}

void DocumentReader::OnKept(std::string_view rtf) {
    EndHidden();
    const bool deleted = Current().deleted, hidden = deleted || Current().hidden;
    if (auto form = KeptForm(rtf))
        builder_.AddKept(hidden ? UnshownGroup(*form, deleted) : std::move(*form));
}

void DocumentReader::OnWord(const ControlWord& word, const Token& token) {
    const Destination destination = Current().destination;
    if (word.group == WordGroup::CharacterFormat)
        State().ApplyCharacterWord(word, token, colors_);
    else if (destination == Destination::ListTable)
        lists_.ReadListWord(word, token.parameter);
    else if (destination == Destination::ListOverrides)
        lists_.ReadOverrideWord(word, token.parameter);
    else if (word.group == WordGroup::ParagraphFormat)
        State().ApplyParagraphWord(word, token);
    else
        ReadTableWord(word, token);
}

void DocumentReader::ReadTableWord(const ControlWord& word, const Token& token) {
    const Destination destination = Current().destination;
    if (word.group == WordGroup::Table)
        (destination == Destination::RowProperties ? nestedRow_ : row_).ReadWord(word, token.parameter, colors_);
    else if (word.group == WordGroup::Picture && destination == Destination::Picture)
        picture_.ReadWord(word, token);
    else if (destination == Destination::ColorTable)
        colors_.ReadWord(word, token.parameter);
    else if (word.word == Word::Plain)
        State().ResetCharacters(FontIndex(DefaultFont()));
    else if (word.word == Word::Font || word.word == Word::DefaultFont)
        State().chars.font = FontIndex(token.parameter);
}

int32_t DocumentReader::FontIndex(int32_t number) const {
    auto found = fontIndexes_.find(number);
    if (found == fontIndexes_.end())
        found = fontIndexes_.find(DefaultFont());
    return found == fontIndexes_.end() ? -1 : found->second;
}

void DocumentReader::OnFont(const DocumentFont& font) {
    std::vector<DocumentFont>& fonts = builder_.Unfinished().fonts;
    const auto [found, added] = fontIndexes_.emplace(font.number, static_cast<int32_t>(fonts.size()));
    if (added)
        fonts.push_back(font);
    else
        fonts[static_cast<size_t>(found->second)] = font;
}

void DocumentReader::OnOpen() {
    const FormatState copy = formats_.back();
    formats_.push_back(copy);
}

void DocumentReader::OnClose(const Group& closed, size_t end) {
    const FormatState state = formats_.back();
    formats_.pop_back();
    const Destination outer = Current().destination;
    if (closed.isResult) {
        while (!results_.empty() && results_.back().first >= closed.begin)
            results_.pop_back();
        results_.emplace_back(closed.begin, end);
    }
    if (closed.destination == outer)
        return;
    if (closed.destination == Destination::FontTable) {
        State().chars.font = FontIndex(Current().font);
    } else if (closed.destination == Destination::Picture) {
        EndPicture(closed);
    } else if (closed.destination == Destination::Object || closed.destination == Destination::Shape) {
        EndObject(closed, end, state.firstPicture);
    } else if (closed.destination == Destination::OldList) {
        State().oldList = state.oldList;
        State().paragraph.listStart = state.paragraph.listStart;
    }
}

void DocumentReader::EndPicture(const Group& closed) {
    std::optional<Picture> picture = picture_.Take();
    if (!picture)
        return;
    if (Current().destination != Destination::Body || closed.inResult) {
        objectPictures_.push_back({std::move(*picture), closed.inResult});
        return;
    }
    EndHidden();
    builder_.AddPicture(std::move(*picture), Characters());
}

/// Text boxes and what objects say stand in the text, with their pictures. A picture stands for what is left of the
/// object or the shape; if there is none, that is kept.
void DocumentReader::EndObject(const Group& closed, size_t end, size_t firstPicture) {
    const auto first = objectPictures_.begin() + static_cast<std::ptrdiff_t>(firstPicture);
    std::vector<ObjectPicture> pictures(std::make_move_iterator(first), std::make_move_iterator(objectPictures_.end()));
    objectPictures_.resize(firstPicture);
    const bool hasWords = closed.shownBefore != Shown();
    std::optional<std::string> form = ObjectForm(closed, end);
    if (!hasWords && (closed.hidden || closed.deleted))
        return;
    EndHidden();
    std::optional<Picture> whole;
    for (auto& [picture, inResult] : pictures) {
        if (hasWords && (inResult || closed.destination == Destination::Shape))
            builder_.AddPicture(std::move(picture), Characters());
        else
            whole = std::move(picture);
    }
    if (whole) {
        whole->object = std::move(form).value_or(std::string());
        builder_.AddPicture(std::move(*whole), Characters());
    } else if (form) {
        builder_.AddKept(std::move(*form));
    }
}

/// The group without what is in the text; nothing of a shape that is, or of a group that would be read otherwise were
/// it not so deep.
std::optional<std::string> DocumentReader::ObjectForm(const Group& closed, size_t end) {
    auto own = results_.end();
    while (own != results_.begin() && std::prev(own)->first >= closed.begin)
        --own;
    const std::vector<std::pair<size_t, size_t>> results(own, results_.end());
    results_.erase(own, results_.end());
    const bool hasWords = closed.shownBefore != Shown();
    if ((hasWords && closed.destination == Destination::Shape) || IsTooDeep(closed.begin))
        return std::nullopt;
    std::string group = Source()[closed.begin] == '{' ? "" : "{";
    size_t at = closed.begin;
    for (size_t i = 0; hasWords && i < results.size(); ++i) {
        const bool isWhole = Source()[results[i].first] == '{';
        group.append(Source().substr(at, results[i].first - at)).append(isWhole ? "{\\result}" : "{\\result}}");
        at = results[i].second;
    }
    return KeptForm(group.append(Source().substr(at, end - at)));
}

void DocumentReader::OnInstruction(std::string_view utf8) {
    std::string target = LinkTarget(utf8);
    if (target.empty())
        return;
    State().target = static_cast<int32_t>(targets_.size());
    State().chars.link = -1;
    targets_.push_back(std::move(target));
}

}  // namespace

Document ReadRtf(std::string_view rtf) {
    DocumentReader reader(rtf);
    reader.Read();
    return reader.Take();
}

Document DocumentFromText(std::string_view utf8, std::string_view font, int halfPoints) {
    DocumentBuilder builder;
    CharFormat format;
    format.font = builder.Font(font);
    format.halfPoints = static_cast<int16_t>(std::clamp<int>(halfPoints, 1, kMostHalfPoints));
    for (size_t at = 0;;) {
        const size_t end = std::min(utf8.find('\n', at), utf8.size());
        std::string_view line = utf8.substr(at, end - at);
        if (line.ends_with('\r'))
            line.remove_suffix(1);
        builder.AddText(line, format);
        if (end == utf8.size())
            break;
        builder.EndParagraph({});
        at = end + 1;
    }
    return builder.Finish({}, false);
}

}  // namespace lore
