#pragma once

#include <list>
#include <memory>
#include <unordered_map>
#include <vector>

#include "notes/card_heights.h"
#include "ui/board/card.h"
#include "ui/board/picture_cache.h"

namespace lore {

/// The cards that are laid out, the last used ones, and the heights of all that ever were, for each width and zoom.
class CardStore {
public:
    CardStore(const BoardModel& model, const Theme& theme, QPaintDevice& device);

    const BoardOptions& Options() const { return options_; }
    PictureCache& Pictures() { return pictures_; }
    void SetOptions(const BoardOptions& options);
    /// The width that cards are laid out for from now on.
    void SetWidth(int width);
    int Width() const { return width_; }
    void SetFocusNote(int32_t noteId);

    /// How many cards are kept laid out.
    static constexpr int kMostCards = 192;
    bool HasCardOf(int row) const;
    /// The laid out card of a row; valid until the next call.
    const Card& CardOf(int row);
    /// The height of a row: as it was measured, or else an estimate from the length of its text.
    int LikelyHeight(int row);
    bool IsMeasured(int row) const;

    void DropCards();
    /// Drops cards and measured heights: fonts may be other ones now.
    void ForgetHeights();
    /// Forgets the card and the heights of one note.
    void DropNote(int32_t noteId);

private:
    struct Kept {
        int32_t noteId;
        std::unique_ptr<Card> card;
    };
    struct Measured {
        int width;
        BoardOptions options;
        CardHeights heights;
    };
    void ChooseHeights();

    const BoardModel& model_;
    const Theme& theme_;
    QPaintDevice& device_;
    BoardOptions options_;
    PictureCache pictures_;
    int width_ = 0;
    int32_t focusNote_ = -1;
    std::list<Kept> cards_;  // last used first
    std::unordered_map<int32_t, std::list<Kept>::iterator> byNote_;
    std::list<Measured> measured_;  // the one in use first
};

}  // namespace lore
