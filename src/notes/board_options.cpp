#include "notes/board_options.h"

#include <algorithm>
#include <cstdlib>
#include <iterator>

namespace lore {

BoardOptions BoardOptionsOf(const Settings& settings, const SettingsStore& store) {
    BoardOptions options;
    options.showCategories = settings.Flag(Option::ShowCats);
    options.categoriesOnTop = settings.Flag(Option::CatsTop);
    options.onlySetOne = settings.Flag(Option::ShowCatSet1);
    options.showKeyWords = settings.Flag(Option::ShowKeyWords);
    options.keyWordsOnTop = settings.Flag(Option::KewWordsTop);
    options.showSources = settings.Flag(Option::ShowSources);
    options.sourcesOnTop = settings.Flag(Option::SourceTop);
    options.sourceSize = settings.Int(Option::SourceSize);
    options.zoom = NearestBoardZoom(settings.Int(Option::ZoomLvl)) / 100.0;
    options.focusGround = LoadSelectedNoteColor(store);
    options.pictureTitle = LoadFontSetting(store, kImageTitleFont, DefaultImageTitleFont());
    return options;
}

int NearestBoardZoom(int percent) {
    const auto distance = [percent](int zoom) { return std::abs(int64_t{zoom} - percent); };
    return *std::min_element(std::begin(kBoardZooms), std::end(kBoardZooms),
                             [&](int a, int b) { return distance(a) < distance(b); });
}

int BoardZoomStep(int percent, int step) {
    const auto here = std::find(std::begin(kBoardZooms), std::end(kBoardZooms), NearestBoardZoom(percent));
    const auto last = static_cast<int64_t>(std::size(kBoardZooms)) - 1;
    return kBoardZooms[std::clamp<int64_t>(here - std::begin(kBoardZooms) + int64_t{step}, 0, last)];
}

}  // namespace lore
