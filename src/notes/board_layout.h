#pragma once

#include <array>
#include <cstddef>
#include <functional>
#include <string>
#include <vector>

#include "classify/category_tree.h"
#include "notes/board_options.h"
#include "notes/note.h"

namespace lore {

enum class CardPartKind { Path, KeyWords, Source, Text, Attachments };

/// One part of a card.
struct CardPart {
    CardPartKind kind = CardPartKind::Text;
    size_t index = 0;                  ///< of a path: its set from 0; of a source: its place among those that are shown
    bool numbered = false;             ///< of a path: the number of its set stands in front
    int left = 0, top = 0, width = 0;  ///< in pixels from the card's top left corner
    int height = 0;                    ///< as measured
};

/// What a note has that its card can show.
struct CardContent {
    std::array<bool, kSetCount> paths{};
    bool keyWords = false, text = false, attachments = false;
    size_t sources = 0;  ///< those that the NoteBook knows
};
CardContent CardContentOf(const CNote& note, size_t knownSources);

/// Where everything stands on a card, from top to bottom; pixels, the same at every zoom.
struct CardLayout {
    std::vector<CardPart> parts;
    int height = 0;  ///< of the card with the space that parts it from its neighbours
    int textLeft = 0, textTop = 0, textWidth = 0, textHeight = 0;  ///< ground of the text; all 0 without one
};

/// Gives the height of a part that is laid out for its width. Asked once for each part, from top to bottom.
using MeasureCardPart = std::function<int(const CardPart& part)>;

/// Stacks what a note shows: by the options, categories, key words and sources above or below text and attachments.
CardLayout LayOutCard(const CardContent& content, const BoardOptions& options, int cardWidth,
                      const MeasureCardPart& measure);

/// The width that pictures and files may take in a card of a width; at least 1.
int CardAttachmentWidth(int cardWidth);
/// A rough height for a note that wasn't laid out yet, from the length of its texts alone.
int EstimateCardHeight(const CNote& note, const BoardOptions& options, int cardWidth);

/// True for a category path that shows a category.
bool IsShownPath(const CProCategoryTree& path);
/// True for an image that is drawn as a picture in the card.
bool IsShownPicture(const CAttachment& attachment);
/// The names of a path from the root down.
std::vector<std::string> PathLevels(const CProCategoryTree& path);
/// The words of a line of key words, each once, in the order of the list of key words and without empty ones; at most
/// as many as a card could show. `count`, if not null, becomes the number of all.
std::vector<std::string> ShownKeyWords(const std::string& keyWords, size_t* count = nullptr);

}  // namespace lore
