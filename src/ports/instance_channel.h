#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <string_view>

namespace lore {

/// A message from another process of the same user. What the agent and older companions send bears fixed tags.
struct InstanceMessage {
    static constexpr uint32_t kCommand = 0;     ///< a text command
    static constexpr uint32_t kIsMe = 1;        ///< asks whether this is a running instance; 1 is yes
    static constexpr uint32_t kActivate = 2;    ///< brings the window to the front
    static constexpr uint32_t kDocument = 100;  ///< a file to import, or a request; goes to OpenDocumentFile

    uint32_t tag = kCommand;
    std::string text;
};

/// Takes a message and gives the answer, at once: what takes time is done later.
using InstanceReceiver = std::function<uint32_t(const InstanceMessage&)>;

/// The messages between the processes of a program: one channel for each user, role and data folder.
class InstanceChannel {
public:
    virtual ~InstanceChannel() = default;
    /// True if an instance runs and says so.
    virtual bool FindInstance() = 0;
    /// Hands a text to the running instance and brings it to the front if `activate`. False if there is none, or it
    /// doesn't take the text. Waits for the answer, but not for ever.
    virtual bool SendToInstance(std::string_view text, bool activate) = 0;
    /// Makes this process the instance, taking over what a killed one left. The caller makes sure that there is no
    /// other one. False if the system doesn't let it.
    virtual bool Listen(InstanceReceiver receiver) = 0;
};

}  // namespace lore
