#include "notes/board_layout.h"

#include <algorithm>
#include <cstdint>

#include "base/record_file.h"
#include "classify/key_word_list.h"
#include "notes/attachment_kind.h"

namespace lore {

namespace {

constexpr int kPillInset = 17, kAttachmentInset = 21;
constexpr int kTextInset = 16, kTextSide = 22, kTextAbove = 16, kTextBelow = 6, kTextBehind = 17, kTextNarrower = 85;
constexpr size_t kMostKeyWords = 400;
constexpr int kTallestCard = 1 << 24;  // what a card's estimated height is held to

/// The space around a block: before it as the first of the card, before it below others, between its parts, behind it.
struct BlockSpace {
    int first, below, between, behind;
};
constexpr BlockSpace kPathsOnTop{17, 17, 7, 9}, kPathsBelow{0, 8, 7, 7};
constexpr BlockSpace kKeyWordsOnTop{17, 0, 0, 8}, kKeyWordsBelow{0, 9, 0, 8};
constexpr BlockSpace kSourcesOnTop{18, 0, 8, 8}, kSourcesBelow{0, 9, 8, 9};

class Stack {
public:
    Stack(const CardContent& content, const BoardOptions& options, int width, const MeasureCardPart& measure)
        : content_(content), options_(options), width_(width), measure_(measure) {}

    CardLayout Run() {
        AddAround(true);
        AddText();
        AddAttachments();
        AddAround(false);
        layout_.height = y_;
        return std::move(layout_);
    }

private:
    // Above the text categories come first, below it last.
    void AddAround(bool top) {
        if (top && options_.categoriesOnTop)
            AddPaths(kPathsOnTop);
        if (top && options_.keyWordsOnTop)
            AddKeyWords(kKeyWordsOnTop);
        if (options_.sourcesOnTop == top)
            AddSources(top ? kSourcesOnTop : kSourcesBelow);
        if (!top && !options_.keyWordsOnTop)
            AddKeyWords(kKeyWordsBelow);
        if (!top && !options_.categoriesOnTop)
            AddPaths(kPathsBelow);
    }

    void AddPaths(const BlockSpace& space) {
        const size_t sets = !options_.showCategories ? 0 : options_.onlySetOne ? 1 : content_.paths.size();
        const bool numbered = sets > 1 && (content_.paths[1] || content_.paths[2]);
        const size_t before = layout_.parts.size();
        for (size_t set = 0; set < sets; ++set) {
            if (!content_.paths[set])
                continue;
            Part({CardPartKind::Path, set, numbered}, before, space);
            // The path of set 3 stands at a gap of 6, while the card's height counts 7.
            if (set == 2 && layout_.parts.size() - before > 1)
                --layout_.parts.back().top;
        }
        Close(before, space);
    }

    void AddKeyWords(const BlockSpace& space) {
        const size_t before = layout_.parts.size();
        if (options_.showKeyWords && content_.keyWords)
            Part({CardPartKind::KeyWords}, before, space);
        Close(before, space);
    }

    void AddSources(const BlockSpace& space) {
        const size_t before = layout_.parts.size();
        for (size_t i = 0; options_.showSources && i < content_.sources; ++i)
            Part({CardPartKind::Source, i}, before, space);
        Close(before, space);
    }

    // The space of a note without text shows nothing: what follows it still stands first.
    void AddText() {
        if (content_.text) {
            y_ += layout_.parts.empty() ? kTextBehind : 0;
            layout_.textLeft = kTextInset;
            layout_.textTop = y_;
            layout_.textWidth = std::max(1, width_ - 2 * kTextInset);
            y_ += kTextAbove;
            Place({CardPartKind::Text}, kTextInset + kTextSide, std::max(1, width_ - kTextNarrower));
            y_ += kTextBelow;
            layout_.textHeight = y_ - layout_.textTop;
        }
        y_ += kTextBehind;
    }

    void AddAttachments() {
        if (content_.attachments)
            Place({CardPartKind::Attachments}, kAttachmentInset, CardAttachmentWidth(width_));
    }

    void Part(const CardPart& part, size_t before, const BlockSpace& space) {
        const size_t above = layout_.parts.size();
        y_ += above > before ? space.between : above > 0 ? space.below : space.first;
        Place(part, kPillInset, std::max(1, width_ - 2 * kPillInset));
    }

    void Close(size_t before, const BlockSpace& space) { y_ += layout_.parts.size() > before ? space.behind : 0; }

    void Place(CardPart part, int left, int width) {
        part.left = left;
        part.top = y_;
        part.width = width;
        part.height = std::max(0, measure_(part));
        y_ += part.height;
        layout_.parts.push_back(part);
    }

    const CardContent& content_;
    const BoardOptions& options_;
    const int width_;
    const MeasureCardPart& measure_;
    CardLayout layout_;
    int y_ = 0;
};

}  // namespace

CardContent CardContentOf(const CNote& note, size_t knownSources) {
    CardContent content;
    std::transform(note.categories.begin(), note.categories.end(), content.paths.begin(), IsShownPath);
    const std::vector<std::string_view> words = SplitKeyWords(note.keyWords);
    content.keyWords = std::any_of(words.begin(), words.end(), [](std::string_view word) { return !word.empty(); });
    content.text = !note.plainText.empty();
    content.attachments = !note.attachments.empty();
    content.sources = knownSources;
    return content;
}

CardLayout LayOutCard(const CardContent& content, const BoardOptions& options, int cardWidth,
                      const MeasureCardPart& measure) {
    return Stack(content, options, cardWidth, measure).Run();
}

int CardAttachmentWidth(int cardWidth) {
    return std::max(1, cardWidth - 2 * kAttachmentInset);
}

int EstimateCardHeight(const CNote& note, const BoardOptions& options, int cardWidth) {
    constexpr double kCharacterWidth = 7.5, kLineHeight = 21, kPathHeight = 33, kKeyWordHeight = 32;
    constexpr double kPictureHeight = 300, kFileHeight = 24, kSourceLines = 2.2;
    const double zoom = options.zoom;
    const double perLine = std::max(10.0, (cardWidth - kTextNarrower) / (kCharacterWidth * zoom));
    double height = kTextBehind;
    if (!note.plainText.empty())
        height += kTextBehind + kTextAbove + kTextBelow +
                  kLineHeight * zoom * (1 + static_cast<double>(note.plainText.size()) / perLine);
    if (options.showCategories)
        height += kPathHeight * zoom *
                  static_cast<double>(std::count_if(note.categories.begin(), note.categories.end(), IsShownPath));
    if (options.showKeyWords && !note.keyWords.empty())
        height += kTextBehind + kKeyWordHeight * zoom;
    if (options.showSources)
        height += static_cast<double>(note.sources.Count()) * (8 + kSourceLines * options.sourceSize * zoom);
    for (const CAttachment& attachment : note.attachments)
        height += (IsShownPicture(attachment) ? kPictureHeight : kFileHeight) * zoom;
    return static_cast<int>(std::clamp<double>(height, 0, kTallestCard));
}

bool IsShownPath(const CProCategoryTree& path) {
    return path.id > 0;
}

bool IsShownPicture(const CAttachment& attachment) {
    return attachment.type == kImageFile && attachment.show;
}

std::vector<std::string> PathLevels(const CProCategoryTree& path) {
    std::vector<std::string> names;
    const CProCategoryTree* node = &path;
    for (int depth = 0; node && depth < kMaxNesting; ++depth) {
        if (node->id > 0 || !node->name.empty())
            names.push_back(node->name);
        node = node->children.empty() ? nullptr : &node->children.front();
    }
    return names;
}

std::vector<std::string> ShownKeyWords(const std::string& keyWords, size_t* count) {
    CKeyWordList list;
    list.AddKeyWordsOfNote(keyWords, 0);
    list.SortKeyWords();
    std::vector<std::string> words;
    size_t all = 0;
    for (const CKeyWord& entry : list.Entries())
        if (!entry.name.empty() && ++all <= kMostKeyWords)
            words.push_back(entry.name);
    if (count)
        *count = all;
    return words;
}

}  // namespace lore
