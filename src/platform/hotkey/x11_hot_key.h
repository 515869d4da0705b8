#pragma once

#include <QElapsedTimer>
#include <QSocketNotifier>
#include <cstdint>
#include <functional>
#include <memory>
#include <vector>

#include "settings/option_pages.h"

struct xcb_connection_t;

namespace lore {

/// A key that calls this program from any other one, on desktops of X11; others have none. It has a connection of its
/// own, and needs an event loop.
class X11HotKey {
public:
    explicit X11HotKey(std::function<void()> pressed);
    ~X11HotKey();
    X11HotKey(const X11HotKey&) = delete;
    X11HotKey& operator=(const X11HotKey&) = delete;

    /// False where the desktop has no such keys.
    bool IsAvailable() const { return connection_ != nullptr; }
    /// Takes this key in place of the one before; a key of 0 gives that up. False if there is no such key, another
    /// program has it, or the desktop has none.
    bool Set(const HotKey& key);

private:
    /// A key of the keyboard with the modifiers under which it counts.
    struct Grab {
        uint8_t code = 0;
        uint16_t modifiers = 0;
    };
    bool Take();
    void Release();
    bool TakeOne(uint8_t code, uint16_t modifiers);
    std::vector<uint8_t> CodesOf(uint32_t symbol) const;
    uint16_t NumLockMask() const;
    void ReadEvents();

    std::function<void()> pressed_;
    xcb_connection_t* connection_ = nullptr;
    uint32_t root_ = 0;
    HotKey key_;
    std::vector<Grab> grabs_;
    std::unique_ptr<QSocketNotifier> notifier_;
    QElapsedTimer sinceEvent_;  // a key that is held repeats
};

}  // namespace lore
