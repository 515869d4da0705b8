#include "platform/instance/local_channel.h"

#include <QByteArray>
#include <QCryptographicHash>
#include <QDeadlineTimer>
#include <QDir>
#include <QFile>
#include <QLocalServer>
#include <QLocalSocket>
#include <QTimer>
#include <QtEndian>
#include <sys/stat.h>
#include <unistd.h>

namespace lore {

namespace {

constexpr qsizetype kHeadBytes = 8;
constexpr quint32 kMostBytes = 65536;     // of a message; a longer one is refused unread
constexpr int kConnectTime = 2000;        // milliseconds
constexpr int kAnswerTime = 10'000;       // milliseconds; a busy program may take some
constexpr int kLongestSilence = 5000;     // milliseconds that a sender may take
constexpr int kMostWaiting = 16;          // senders at a time
constexpr qsizetype kLongestFolder = 40;  // a socket's path is short by nature

QString SocketFolder() {
    const QString folder = qEnvironmentVariable("XDG_RUNTIME_DIR");
    return !folder.isEmpty() && folder.size() <= kLongestFolder && QDir(folder).exists() ? folder : QDir::tempPath();
}

/// A socket that somebody else has put there is none of ours.
bool IsOwn(const std::string& name) {
    struct stat info = {};
    return ::lstat(name.c_str(), &info) == 0 && S_ISSOCK(info.st_mode) && info.st_uid == ::getuid();
}

QByteArray NumberBytes(quint32 value) {
    QByteArray bytes(sizeof value, '\0');
    qToLittleEndian(value, bytes.data());
    return bytes;
}

quint32 NumberAt(const QByteArray& bytes, qsizetype position) {
    return qFromLittleEndian<quint32>(bytes.constData() + position);
}

}  // namespace

LocalChannel::LocalChannel(const std::string& role, const std::filesystem::path& dataRoot) {
    // A folder that is missing yet has the name that it will have once it stands.
    std::error_code error;
    const std::filesystem::path absolute = std::filesystem::absolute(dataRoot, error);
    const std::filesystem::path& named = error ? dataRoot : absolute;
    const std::filesystem::path root = std::filesystem::weakly_canonical(named, error);
    const std::string path = (error ? named : root).string();
    const QByteArray mark = QCryptographicHash::hash(QByteArray::fromStdString(path), QCryptographicHash::Sha256);
    name_ = (SocketFolder() + '/' + QString::fromStdString(role) + '-' + QString::number(::getuid()) + '-' +
             mark.toHex().left(16))
                .toStdString();
}

LocalChannel::~LocalChannel() = default;

/// Sends a message and waits for its answer; 0 without one.
quint32 LocalChannel::Ask(QLocalSocket& socket, quint32 tag, std::string_view text) {
    const QDeadlineTimer limit(kAnswerTime);
    socket.write(NumberBytes(tag) + NumberBytes(static_cast<quint32>(text.size())) +
                 QByteArray(text.data(), static_cast<qsizetype>(text.size())));
    while (socket.bytesAvailable() < static_cast<qint64>(sizeof(quint32))) {
        if (!socket.waitForReadyRead(static_cast<int>(limit.remainingTime()))) {
            isSilent_ = socket.state() == QLocalSocket::ConnectedState;
            return 0;
        }
    }
    return NumberAt(socket.read(sizeof(quint32)), 0);
}

bool LocalChannel::Connect(QLocalSocket& socket) {
    isSilent_ = false;
    if (!IsOwn(name_))
        return false;
    socket.connectToServer(QString::fromStdString(name_));
    return socket.waitForConnected(kConnectTime) && Ask(socket, InstanceMessage::kIsMe, {}) != 0;
}

bool LocalChannel::FindInstance() {
    QLocalSocket socket;
    return Connect(socket);
}

bool LocalChannel::SendToInstance(std::string_view text, bool activate) {
    QLocalSocket socket;
    if (!Connect(socket) || Ask(socket, InstanceMessage::kDocument, text.substr(0, kMostBytes)) == 0)
        return false;
    if (activate)
        Ask(socket, InstanceMessage::kActivate, {});
    return true;
}

bool LocalChannel::SendCommand(std::string_view text) {
    QLocalSocket socket;
    return Connect(socket) && Ask(socket, InstanceMessage::kCommand, text.substr(0, kMostBytes)) != 0;
}

bool LocalChannel::Open() {
    const QString name = QString::fromStdString(name_);
    server_ = std::make_unique<QLocalServer>();
    server_->setSocketOptions(QLocalServer::UserAccessOption);
    server_->setMaxPendingConnections(kMostWaiting);
    QLocalServer::removeServer(name);
    return server_->listen(name);
}

bool LocalChannel::Listen(InstanceReceiver receiver) {
    receiver_ = std::move(receiver);
    if ((!server_ || !server_->isListening()) && !Open())
        return false;
    QObject::connect(server_.get(), &QLocalServer::newConnection, server_.get(), [this] { ServeAll(); });
    ServeAll();
    return true;
}

void LocalChannel::ServeAll() {
    while (QLocalSocket* const socket = server_->nextPendingConnection())
        Serve(socket);
}

void LocalChannel::Serve(QLocalSocket* socket) {
    auto* const silence = new QTimer(socket);
    silence->setSingleShot(true);
    silence->start(kLongestSilence);
    socket->setReadBufferSize(kHeadBytes + kMostBytes);
    QObject::connect(silence, &QTimer::timeout, socket, &QLocalSocket::abort);
    QObject::connect(socket, &QLocalSocket::disconnected, socket, &QObject::deleteLater);
    QObject::connect(socket, &QLocalSocket::readyRead, socket, [this, socket] { TakeMessages(*socket); });
    TakeMessages(*socket);
}

void LocalChannel::TakeMessages(QLocalSocket& socket) {
    while (socket.bytesAvailable() >= kHeadBytes) {
        const QByteArray head = socket.peek(kHeadBytes);
        const quint32 length = NumberAt(head, sizeof(quint32));
        if (length > kMostBytes)
            return socket.abort();
        if (socket.bytesAvailable() < kHeadBytes + static_cast<qint64>(length))
            return;
        socket.skip(kHeadBytes);
        const QByteArray text = socket.read(length);
        const InstanceMessage message{NumberAt(head, 0), text.toStdString()};
        socket.write(NumberBytes(receiver_(message)));
        socket.flush();
    }
}

}  // namespace lore
