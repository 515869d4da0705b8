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
    void OnEnd(bool after_paragraph) override;
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
        bool in_result = false;
    };

    FormatState& State() { return formats_.back(); }
    const CharFormat& Characters();
    ParagraphFormat ParagraphNow();
    int32_t OldListId(const ParagraphFormat& format);
    int32_t FontIndex(int32_t number) const;
    void ReadTableWord(const ControlWord& word, const Token& token);
    void EndPicture(const Group& closed);
    void EndObject(const Group& closed, size_t end, size_t first_picture);
    std::optional<std::string> ObjectForm(const Group& closed, size_t end);
    void EndHidden();

    DocumentBuilder builder_;
    Document document_;
    std::vector<FormatState> formats_;  ///< one for each group
    ColorTable colors_;
    ListTables lists_;
    RowReader row_;
    RowReader nested_row_;
    PictureReader picture_;
    std::vector<ObjectPicture> object_pictures_;      ///< of the objects and the shapes that are open
    std::vector<std::pair<size_t, size_t>> results_;  ///< source bytes of what those objects show
    std::unordered_map<int32_t, int32_t> font_indexes_;
    std::string hidden_;           ///< text that isn't shown, not yet in the document
    bool hidden_deleted_ = false;  ///< it has been deleted, not hidden
    std::vector<std::string> targets_;
    ParagraphFormat last_old_list_;  ///< format of the paragraph before, if it belongs to a list of an older program
    int32_t old_lists_ = 0;
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
        case TextBreak::kParagraph:
            builder_.EndParagraph(ParagraphNow(), level);
            return;
        case TextBreak::kLine:
            builder_.AddText("\n", Characters());
            return;
        case TextBreak::kPage:
            builder_.AddBreak(RunKind::kPageBreak, Characters());
            return;
        case TextBreak::kColumn:
            builder_.AddBreak(RunKind::kColumnBreak, Characters());
            return;
        case TextBreak::kSection:
            builder_.AddBreak(RunKind::kSectionBreak, Characters());
            return;
        case TextBreak::kCell:
            builder_.EndCell(ParagraphNow(), 1);
            return;
        case TextBreak::kNestedCell:
            builder_.EndCell(ParagraphNow(), std::max(2, level));
            return;
        case TextBreak::kRow:
            builder_.EndRow(row_.Row(), {}, 1);
            return;
        case TextBreak::kNestedRow:
            builder_.EndRow(nested_row_.Row(), {}, std::max(2, level));
            return;
    }
}

/// The format of a paragraph that ends here.
ParagraphFormat DocumentReader::ParagraphNow() {
    const FormatState& state = State();
    ParagraphFormat format = state.paragraph;
    const ListTables::Level* level = lists_.Find(state.list_number, format.list_level);
    if (state.list_number > 0) {
        format.list = level == nullptr ? ListKind::kDecimal : level->kind;
        format.list_start = level == nullptr ? int16_t{1} : level->start;
        format.list_id = state.list_number;
    } else {
        format.list = state.old_list;
    }
    if (format.list == ListKind::kNone) {
        format.list_id = 0;
        format.list_level = 0;
        format.list_start = 1;
    } else if (format.list_id == 0) {
        format.list_id = OldListId(format);
        last_old_list_ = format;
        return format;
    }
    last_old_list_ = {};
    return format;
}

int32_t DocumentReader::OldListId(const ParagraphFormat& format) {
    const bool goes_on = last_old_list_.list == format.list && last_old_list_.list_start == format.list_start;
    return goes_on ? last_old_list_.list_id : kFirstOldList + old_lists_++;
}

/// What isn't shown stays as a group that says so.
void DocumentReader::OnHidden(std::string_view utf8) {
    if (hidden_deleted_ != Current().deleted)
        EndHidden();
    hidden_deleted_ = Current().deleted;
    hidden_ += utf8;
}

void DocumentReader::EndHidden() {
    if (hidden_.empty())
        return;
    builder_.AddKept(UnshownText(std::exchange(hidden_, {}), hidden_deleted_));
}

void DocumentReader::OnEnd(bool after_paragraph) {
    EndHidden();
    Document& unfinished = builder_.Unfinished();
    unfinished.code_page = DocumentCodePage();
    unfinished.default_font = FontIndex(DefaultFont());
    document_ = builder_.Finish(ParagraphNow(), after_paragraph);
}

bool DocumentReader::OnEnter(Destination destination) {
    if (destination == Destination::kPicture)
        picture_ = {};
    else if (destination == Destination::kObject || destination == Destination::kShape)
        State().first_picture = object_pictures_.size();
    return destination != Destination::kSkip && destination != Destination::kKeep;
}

void DocumentReader::OnOther(Destination destination, std::string_view utf8) {
    if (destination == Destination::kPicture)
        picture_.ReadHex(utf8);
    else if (destination == Destination::kColorTable)
        colors_.ReadText(utf8);
}

void DocumentReader::OnBinary(Destination destination, std::string_view bytes) {
    if (destination == Destination::kPicture)
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
    if (word.group == WordGroup::kCharacterFormat)
        State().ApplyCharacterWord(word, token, colors_);
    else if (destination == Destination::kListTable)
        lists_.ReadListWord(word, token.parameter);
    else if (destination == Destination::kListOverrides)
        lists_.ReadOverrideWord(word, token.parameter);
    else if (word.group == WordGroup::kParagraphFormat)
        State().ApplyParagraphWord(word, token);
    else
        ReadTableWord(word, token);
}

void DocumentReader::ReadTableWord(const ControlWord& word, const Token& token) {
    const Destination destination = Current().destination;
    if (word.group == WordGroup::kTable)
        (destination == Destination::kRowProperties ? nested_row_ : row_).ReadWord(word, token.parameter, colors_);
    else if (word.group == WordGroup::kPicture && destination == Destination::kPicture)
        picture_.ReadWord(word, token);
    else if (destination == Destination::kColorTable)
        colors_.ReadWord(word, token.parameter);
    else if (word.word == Word::kPlain)
        State().ResetCharacters(FontIndex(DefaultFont()));
    else if (word.word == Word::kFont || word.word == Word::kDefaultFont)
        State().chars.font = FontIndex(token.parameter);
}

int32_t DocumentReader::FontIndex(int32_t number) const {
    auto found = font_indexes_.find(number);
    if (found == font_indexes_.end())
        found = font_indexes_.find(DefaultFont());
    return found == font_indexes_.end() ? -1 : found->second;
}

void DocumentReader::OnFont(const DocumentFont& font) {
    std::vector<DocumentFont>& fonts = builder_.Unfinished().fonts;
    const auto [found, added] = font_indexes_.emplace(font.number, static_cast<int32_t>(fonts.size()));
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
    if (closed.is_result)
        results_.emplace_back(closed.begin, end);
    if (closed.destination == outer)
        return;
    if (closed.destination == Destination::kFontTable) {
        State().chars.font = FontIndex(Current().font);
    } else if (closed.destination == Destination::kPicture) {
        EndPicture(closed);
    } else if (closed.destination == Destination::kObject || closed.destination == Destination::kShape) {
        EndObject(closed, end, state.first_picture);
    } else if (closed.destination == Destination::kOldList) {
        State().old_list = state.old_list;
        State().paragraph.list_start = state.paragraph.list_start;
    }
}

void DocumentReader::EndPicture(const Group& closed) {
    std::optional<Picture> picture = picture_.Take();
    if (!picture)
        return;
    if (Current().destination != Destination::kBody || closed.in_result) {
        object_pictures_.push_back({std::move(*picture), closed.in_result});
        return;
    }
    EndHidden();
    builder_.AddPicture(std::move(*picture), Characters());
}

/// Text boxes and what objects say stand in the text, with their pictures. A picture stands for what is left of the
/// object or the shape; if there is none, that is kept.
void DocumentReader::EndObject(const Group& closed, size_t end, size_t first_picture) {
    const auto first = object_pictures_.begin() + static_cast<std::ptrdiff_t>(first_picture);
    std::vector<ObjectPicture> pictures(std::make_move_iterator(first),
                                        std::make_move_iterator(object_pictures_.end()));
    object_pictures_.resize(first_picture);
    const bool has_words = closed.shown_before != Shown();
    std::optional<std::string> form = ObjectForm(closed, end);
    if (!has_words && (closed.hidden || closed.deleted))
        return;
    EndHidden();
    std::optional<Picture> whole;
    for (auto& [picture, in_result] : pictures) {
        if (has_words && (in_result || closed.destination == Destination::kShape))
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
    const bool has_words = closed.shown_before != Shown();
    if ((has_words && closed.destination == Destination::kShape) || IsTooDeep(closed.begin))
        return std::nullopt;
    std::string group = Source()[closed.begin] == '{' ? "" : "{";
    size_t at = closed.begin;
    for (size_t i = 0; has_words && i < results.size(); ++i) {
        group.append(Source().substr(at, results[i].first - at)).append("{\\result}");
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

Document DocumentFromText(std::string_view utf8, std::string_view font, int half_points) {
    DocumentBuilder builder;
    CharFormat format;
    format.font = builder.Font(font);
    format.half_points = static_cast<int16_t>(std::clamp<int>(half_points, 1, kMostHalfPoints));
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
