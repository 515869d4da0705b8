#include "calendar/bar_colors.h"

namespace lore {

namespace {

constexpr std::array<BarColor, 20> kColors = {{
    {MakeRgb(0x2B, 0x62, 0xC4), "Blue"},   {MakeRgb(0x0F, 0x76, 0x6E), "Teal"},
    {MakeRgb(0x2E, 0x7D, 0x32), "Green"},  {MakeRgb(0x6B, 0x73, 0x12), "Olive"},
    {MakeRgb(0x9A, 0x64, 0x00), "Amber"},  {MakeRgb(0xB4, 0x53, 0x09), "Orange"},
    {MakeRgb(0xC6, 0x28, 0x28), "Red"},    {MakeRgb(0xBE, 0x12, 0x5C), "Rose"},
    {MakeRgb(0xB8, 0x2E, 0x8A), "Pink"},   {MakeRgb(0x86, 0x2E, 0xB8), "Purple"},
    {MakeRgb(0x62, 0x3F, 0xC9), "Violet"}, {MakeRgb(0x3F, 0x46, 0xB5), "Indigo"},
    {MakeRgb(0x1E, 0x3A, 0x6E), "Navy"},   {MakeRgb(0x0B, 0x6F, 0xA8), "Sky"},
    {MakeRgb(0x1B, 0x53, 0x3D), "Pine"},   {MakeRgb(0x4B, 0x6B, 0x2A), "Moss"},
    {MakeRgb(0x79, 0x4B, 0x2D), "Brown"},  {MakeRgb(0x80, 0x1F, 0x33), "Maroon"},
    {MakeRgb(0x4A, 0x5A, 0x6E), "Slate"},  {MakeRgb(0x3A, 0x3A, 0x42), "Graphite"},
}};

}  // namespace

const std::array<BarColor, 20>& BarColors() {
    return kColors;
}

const BarColor& BarColorOf(int32_t number) {
    const bool known = number >= 1 && static_cast<std::size_t>(number) <= kColors.size();
    return kColors[known ? static_cast<std::size_t>(number) - 1 : 0];
}

}  // namespace lore
