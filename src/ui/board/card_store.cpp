#include "ui/board/card_store.h"

#include <algorithm>
#include <tuple>

#include "notes/board_layout.h"
#include "ui/look/qt_text.h"
#include "ui/look/theme.h"

namespace lore {
namespace {

constexpr size_t kMostLooks = 4;  // widths and zooms whose heights are kept

bool SameLook(const BoardOptions& a, const BoardOptions& b) {
    const auto look = [](const BoardOptions& o) {
        return std::tie(o.showCategories, o.categoriesOnTop, o.onlySetOne, o.showKeyWords, o.keyWordsOnTop,
                        o.showSources, o.sourcesOnTop, o.sourceSize, o.zoom, o.pictureTitle.faceName,
                        o.pictureTitle.height, o.pictureTitle.weight);
    };
    return look(a) == look(b);
}

}  // namespace

CardStore::CardStore(const BoardModel& model, const Theme& theme, QPaintDevice& device)
    : model_(model), theme_(theme), device_(device) {
    ChooseHeights();
}

void CardStore::SetOptions(const BoardOptions& options) {
    options_ = options;
    DropCards();
    ChooseHeights();
}

void CardStore::SetWidth(int width) {
    if (width == width_)
        return;
    width_ = width;
    DropCards();
    ChooseHeights();
}

void CardStore::SetFocusNote(int32_t noteId) {
    const int32_t old = focusNote_;
    focusNote_ = noteId;
    for (const int32_t changed : {old, noteId}) {
        if (const auto found = byNote_.find(changed); found != byNote_.end()) {
            cards_.erase(found->second);
            byNote_.erase(found);
        }
    }
}

void CardStore::ChooseHeights() {
    const auto same = std::find_if(measured_.begin(), measured_.end(), [this](const Measured& known) {
        return known.width == width_ && SameLook(known.options, options_);
    });
    if (same != measured_.end())
        measured_.splice(measured_.begin(), measured_, same);
    else
        measured_.push_front({width_, options_, {}});
    if (measured_.size() > kMostLooks)
        measured_.pop_back();
}

bool CardStore::HasCardOf(int row) const {
    return byNote_.contains(model_.IDAt(row));
}

const Card& CardStore::CardOf(int row) {
    const int32_t id = model_.IDAt(row);
    if (const auto found = byNote_.find(id); found != byNote_.end()) {
        cards_.splice(cards_.begin(), cards_, found->second);
        return *cards_.front().card;
    }
    const bool focus = id == focusNote_;
    const QColor ground = focus ? theme_.Ground(ToQColor(options_.focusGround)) : theme_.Color(ColorRole::Card);
    const CardContext context{model_, options_, theme_, pictures_, &device_, ground};
    cards_.push_front({id, std::make_unique<Card>(model_.ShownNoteAt(row), width_, focus, context)});
    byNote_[id] = cards_.begin();
    measured_.front().heights.SetMeasured(id, cards_.front().card->Height());
    if (cards_.size() > size_t{kMostCards}) {
        byNote_.erase(cards_.back().noteId);
        cards_.pop_back();
    }
    return *cards_.front().card;
}

int CardStore::LikelyHeight(int row) {
    return measured_.front().heights.HeightOf(model_.IDAt(row),
                                              [&] { return EstimateCardHeight(model_.NoteAt(row), options_, width_); });
}

bool CardStore::IsMeasured(int row) const {
    return measured_.front().heights.IsMeasured(model_.IDAt(row));
}

void CardStore::DropCards() {
    cards_.clear();
    byNote_.clear();
}

void CardStore::ForgetHeights() {
    DropCards();
    measured_.clear();
    ChooseHeights();
}

void CardStore::DropNote(int32_t noteId) {
    for (Measured& known : measured_)
        known.heights.Forget(noteId);
    if (const auto found = byNote_.find(noteId); found != byNote_.end()) {
        cards_.erase(found->second);
        byNote_.erase(found);
    }
}

}  // namespace lore
