#include "settings/spell_settings.h"

#include "settings/settings.h"

namespace lore {

const std::array<MarkColor, 16>& MarkColors() {
    static constexpr std::array<MarkColor, 16> kColors = {{{"Black", 0x000000},
                                                           {"Maroon", 0x000080},
                                                           {"Green", 0x008000},
                                                           {"Olive", 0x008080},
                                                           {"Navy", 0x800000},
                                                           {"Purple", 0x800080},
                                                           {"Teal", 0x808000},
                                                           {"Gray", 0x808080},
                                                           {"Silver", 0xC0C0C0},
                                                           {"Red", 0x0000FF},
                                                           {"Lime", 0x00FF00},
                                                           {"Yellow", 0x00FFFF},
                                                           {"Blue", 0xFF0000},
                                                           {"Fuchsia", 0xFF00FF},
                                                           {"Aqua", 0xFFFF00},
                                                           {"White", 0xFFFFFF}}};
    return kColors;
}

MarkStyle DerivedMarkStyle(const Settings& settings) {
    constexpr uint32_t kBeyondTheList = 66302;
    const auto index = static_cast<uint32_t>(settings.Int(Option::MarkSelColor));
    MarkStyle style;
    style.color = index < MarkColors().size() ? MarkColors()[index].color : kBeyondTheList;
    style.effects = (settings.Flag(Option::MarkBold) ? 3 : 1) + (settings.Flag(Option::MarkItalics) ? 4 : 0) +
                    (settings.Flag(Option::MarkUnderline) ? 8 : 0) + (settings.Flag(Option::MarkStrike) ? 64 : 0);
    return style;
}

SkippedWords SkippedWordsOf(const Settings& settings) {
    return {settings.Flag(Option::SpellSkipCapitals), settings.Flag(Option::SpellSkipDigits),
            settings.Flag(Option::SpellSkipMixedCase), settings.Flag(Option::SpellSkipAddresses)};
}

}  // namespace lore
