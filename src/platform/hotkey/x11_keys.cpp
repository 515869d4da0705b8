#include "platform/hotkey/x11_keys.h"

#include <utility>

#include "settings/option_pages.h"

namespace lore {

namespace {

// Numbers of the X protocol; never change.
constexpr uint16_t kShiftMask = 1, kControlMask = 4, kAltMask = 8;
constexpr uint32_t kFirstFunctionSymbol = 0xFFBE;

constexpr int32_t kFirstFunctionKey = 0x70, kFunctionKeys = 24;

constexpr std::pair<int32_t, uint32_t> kSymbols[] = {
    {0x20, 0x0020},  // blank
    {0x21, 0xFF55},  // page up
    {0x22, 0xFF56},  // page down
    {0x23, 0xFF57},  // end
    {0x24, 0xFF50},  // home
    {0x25, 0xFF51},  // left
    {0x26, 0xFF52},  // up
    {0x27, 0xFF53},  // right
    {0x28, 0xFF54},  // down
    {0x2D, 0xFF63},  // insert
    {0x2E, 0xFFFF},  // delete
};

}  // namespace

uint32_t KeySymbolOf(int32_t virtualKey) {
    if (virtualKey >= '0' && virtualKey <= '9')
        return static_cast<uint32_t>(virtualKey);
    if (virtualKey >= 'A' && virtualKey <= 'Z')
        return static_cast<uint32_t>(virtualKey - 'A' + 'a');
    if (virtualKey >= kFirstFunctionKey && virtualKey < kFirstFunctionKey + kFunctionKeys)
        return kFirstFunctionSymbol + static_cast<uint32_t>(virtualKey - kFirstFunctionKey);
    for (const auto& [key, symbol] : kSymbols) {
        if (key == virtualKey)
            return symbol;
    }
    return 0;
}

uint16_t ModifierMaskOf(int32_t modifiers) {
    constexpr std::pair<int32_t, uint16_t> kMasks[] = {
        {HotKey::kShift, kShiftMask}, {HotKey::kControl, kControlMask}, {HotKey::kAlt, kAltMask}};
    uint16_t mask = 0;
    for (const auto& [bit, one] : kMasks)
        mask = static_cast<uint16_t>(mask | ((modifiers & bit) ? one : 0));
    return mask;
}

}  // namespace lore
