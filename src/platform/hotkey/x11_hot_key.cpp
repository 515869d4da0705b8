#include "platform/hotkey/x11_hot_key.h"

#include <algorithm>
#include <cstdlib>
#include <xcb/xcb.h>

#include "platform/hotkey/x11_keys.h"

namespace lore {

namespace {

constexpr uint32_t kNumLockSymbol = 0xFF7F;
constexpr qint64 kHeld = 400;  // milliseconds within which another press is the same one
constexpr uint8_t kEventMask = 0x7F;
/// The modifiers that make a key another one; of the rest, locks don't count and others are no part of a hot key.
constexpr uint16_t kKnownModifiers = XCB_MOD_MASK_SHIFT | XCB_MOD_MASK_CONTROL | XCB_MOD_MASK_1;

/// A reply of the server, which is the caller's to free.
template <typename Reply>
using Owned = std::unique_ptr<Reply, decltype(&std::free)>;
template <typename Reply>
Owned<Reply> Own(Reply* reply) {
    return {reply, &std::free};
}

/// A desktop of Wayland has an X server for older programs, which hears keys only while such a program has the focus.
bool IsX11Session() {
    const char* const wayland = std::getenv("WAYLAND_DISPLAY");
    const char* const display = std::getenv("DISPLAY");
    return display && *display && !(wayland && *wayland);
}

}  // namespace

X11HotKey::X11HotKey(std::function<void()> pressed) : pressed_(std::move(pressed)) {
    if (!IsX11Session())
        return;
    connection_ = xcb_connect(nullptr, nullptr);
    if (xcb_connection_has_error(connection_)) {
        xcb_disconnect(connection_);
        connection_ = nullptr;
        return;
    }
    root_ = xcb_setup_roots_iterator(xcb_get_setup(connection_)).data->root;
    notifier_ = std::make_unique<QSocketNotifier>(xcb_get_file_descriptor(connection_), QSocketNotifier::Read);
    QObject::connect(notifier_.get(), &QSocketNotifier::activated, notifier_.get(), [this] { ReadEvents(); });
}

X11HotKey::~X11HotKey() {
    notifier_.reset();
    if (connection_)
        xcb_disconnect(connection_);  // gives the keys back
}

bool X11HotKey::Set(const HotKey& key) {
    key_ = key;
    const bool taken = Take();
    if (connection_)
        ReadEvents();  // what came among the answers wakes nobody
    return taken;
}

bool X11HotKey::Take() {
    if (!connection_)
        return key_.key == 0;
    Release();
    if (key_.key == 0)
        return true;
    const uint32_t symbol = KeySymbolOf(key_.key);
    const std::vector<uint8_t> codes = symbol == 0 ? std::vector<uint8_t>() : CodesOf(symbol);
    const uint16_t modifiers = ModifierMaskOf(key_.modifiers), numLock = NumLockMask();
    for (const uint8_t code : codes) {
        // The server takes locks for modifiers like any other.
        for (const uint16_t locks : {0, int{XCB_MOD_MASK_LOCK}, int{numLock}, XCB_MOD_MASK_LOCK | numLock}) {
            if (!TakeOne(code, modifiers | locks)) {
                Release();
                return false;
            }
        }
    }
    return !codes.empty();
}

bool X11HotKey::TakeOne(uint8_t code, uint16_t modifiers) {
    const auto cookie =
        xcb_grab_key_checked(connection_, 1, root_, modifiers, code, XCB_GRAB_MODE_ASYNC, XCB_GRAB_MODE_ASYNC);
    if (Own(xcb_request_check(connection_, cookie)))
        return false;
    grabs_.push_back({code, modifiers});
    return true;
}

void X11HotKey::Release() {
    for (const Grab& grab : grabs_)
        xcb_ungrab_key(connection_, grab.code, root_, grab.modifiers);
    grabs_.clear();
    xcb_flush(connection_);
}

std::vector<uint8_t> X11HotKey::CodesOf(uint32_t symbol) const {
    const xcb_setup_t& setup = *xcb_get_setup(connection_);
    const auto count = static_cast<uint8_t>(setup.max_keycode - setup.min_keycode + 1);
    const auto mapping = Own(xcb_get_keyboard_mapping_reply(
        connection_, xcb_get_keyboard_mapping(connection_, setup.min_keycode, count), nullptr));
    std::vector<uint8_t> codes;
    if (!mapping || mapping->keysyms_per_keycode == 0)
        return codes;
    const xcb_keysym_t* const symbols = xcb_get_keyboard_mapping_keysyms(mapping.get());
    const int length = xcb_get_keyboard_mapping_keysyms_length(mapping.get());
    // What a key gives alone stands first.
    for (int i = 0; i < length; i += mapping->keysyms_per_keycode) {
        if (symbols[i] == symbol)
            codes.push_back(static_cast<uint8_t>(setup.min_keycode + i / mapping->keysyms_per_keycode));
    }
    return codes;
}

uint16_t X11HotKey::NumLockMask() const {
    const std::vector<uint8_t> codes = CodesOf(kNumLockSymbol);
    const auto mapping =
        Own(xcb_get_modifier_mapping_reply(connection_, xcb_get_modifier_mapping(connection_), nullptr));
    if (!mapping || mapping->keycodes_per_modifier == 0)
        return 0;
    const xcb_keycode_t* const keys = xcb_get_modifier_mapping_keycodes(mapping.get());
    const int length = xcb_get_modifier_mapping_keycodes_length(mapping.get());
    for (int i = 0; i < length; ++i) {
        if (std::find(codes.begin(), codes.end(), keys[i]) != codes.end())
            return static_cast<uint16_t>(1U << static_cast<unsigned>(i / mapping->keycodes_per_modifier));
    }
    return 0;
}

void X11HotKey::ReadEvents() {
    bool isPressed = false, isMapped = false;
    while (const auto event = Own(xcb_poll_for_event(connection_))) {
        const int type = event->response_type & kEventMask;
        if (type == XCB_KEY_PRESS) {
            const auto& press = *reinterpret_cast<const xcb_key_press_event_t*>(event.get());
            isPressed |= std::any_of(grabs_.begin(), grabs_.end(), [&](const Grab& grab) {
                return grab.code == press.detail &&
                       (grab.modifiers & kKnownModifiers) == (press.state & kKnownModifiers);
            });
        }
        isMapped |= type == XCB_MAPPING_NOTIFY;
    }
    if (xcb_connection_has_error(connection_))
        return notifier_->setEnabled(false);  // the desktop has ended
    if (isMapped) {
        Take();  // the keys stand elsewhere now
        ReadEvents();
    }
    if (isPressed && (!sinceEvent_.isValid() || sinceEvent_.elapsed() > kHeld))
        pressed_();
    if (isPressed)
        sinceEvent_.start();
}

}  // namespace lore
