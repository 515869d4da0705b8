#include "edit/color_choice.h"

#include <algorithm>
#include <cstdio>

namespace lore {

std::string BorderColorName(Rgb color) {
    if (color == 0)
        return "No color";
    char text[8];
    std::snprintf(text, sizeof text, "#%02x%02x%02x", RedOf(color), GreenOf(color), BlueOf(color));
    return text;
}

std::vector<ColorChoice> ColorChoices(const CSearchColorList& colors, Rgb current) {
    std::vector<ColorChoice> choices = {{0, BorderColorName(0), 0}};
    for (const CSearchColor& entry : colors.Entries()) {
        if (entry.color == 0)
            choices.front().notes = entry.notes.Count();
        else
            choices.push_back({entry.color, BorderColorName(entry.color), entry.notes.Count()});
    }
    std::stable_sort(choices.begin() + 1, choices.end(),
                     [](const ColorChoice& a, const ColorChoice& b) { return a.notes > b.notes; });
    const bool stands = std::any_of(choices.begin(), choices.end(),
                                    [current](const ColorChoice& choice) { return choice.color == current; });
    if (!stands)
        choices.push_back({current, BorderColorName(current), 0});
    return choices;
}

}  // namespace lore
