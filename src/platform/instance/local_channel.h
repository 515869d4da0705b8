#pragma once

#include <filesystem>
#include <memory>
#include <string>

#include "ports/instance_channel.h"

class QLocalServer;
class QLocalSocket;

namespace lore {

/// The roles that have a channel.
inline constexpr char kProgramRole[] = "TQRLorebinder";
inline constexpr char kAgentRole[] = "LorebinderAgent";

/// Messages over a local socket. A message is a tag and a length, 32 bits each, lowest byte first, and the bytes; the
/// answer has 32 bits. The listening side needs an event loop.
class LocalChannel : public InstanceChannel {
public:
    LocalChannel(const std::string& role, const std::filesystem::path& dataRoot);
    ~LocalChannel() override;

    bool FindInstance() override;
    bool SendToInstance(std::string_view text, bool activate) override;
    bool Listen(InstanceReceiver receiver) override;
    /// Makes this process the instance before it can act: what others send waits for Listen, which tries once more
    /// where this fails. Called, as Listen, by the one process that has the data folder.
    bool Open();
    /// Hands a text command to the running instance. False if there is none, or it doesn't take the command.
    bool SendCommand(std::string_view text);

    /// True if the last of these found an instance that takes messages and answers none: it hangs, or has been busy for
    /// ten seconds.
    bool IsSilent() const { return isSilent_; }

    /// The socket's place.
    const std::string& Name() const { return name_; }

private:
    bool Connect(QLocalSocket& socket);
    uint32_t Ask(QLocalSocket& socket, uint32_t tag, std::string_view text);
    void ServeAll();
    void Serve(QLocalSocket* socket);
    void TakeMessages(QLocalSocket& socket);

    std::string name_;
    bool isSilent_ = false;
    InstanceReceiver receiver_;
    std::unique_ptr<QLocalServer> server_;
};

}  // namespace lore
