#include "platform/net/net_update_source.h"

#include <QNetworkAccessManager>
#include <QNetworkReply>
#include <QNetworkRequest>
#include <QTimer>
#include <QUrl>

namespace lore {

namespace {

constexpr qint64 kLongestText = 65536;

UpdateReply ReplyOf(QNetworkReply& reply, bool isTooLong) {
    if (isTooLong)
        return {false, {}, "The answer is too long"};
    if (reply.error() != QNetworkReply::NoError)
        return {false, {}, reply.errorString().toStdString()};
    return {true, reply.readAll().toStdString(), {}};
}

}  // namespace

NetUpdateSource::NetUpdateSource(int timeout) : timeout_(timeout) {}

NetUpdateSource::~NetUpdateSource() = default;

void NetUpdateSource::Fetch(const std::string& address, std::function<void(const UpdateReply&)> done) {
    if (!net_)
        net_ = std::make_unique<QNetworkAccessManager>();
    const QUrl url(QString::fromStdString(address), QUrl::StrictMode);
    if (!url.isValid() || (url.scheme() != "https" && url.scheme() != "http") || url.host().isEmpty()) {
        QTimer::singleShot(0, net_.get(), [done] { done({false, {}, "The address isn't a web address"}); });
        return;
    }
    QNetworkRequest request(url);
    request.setTransferTimeout(timeout_);
    request.setAttribute(QNetworkRequest::RedirectPolicyAttribute, QNetworkRequest::NoLessSafeRedirectPolicy);
    request.setAttribute(QNetworkRequest::CookieSaveControlAttribute, QNetworkRequest::Manual);
    request.setHeader(QNetworkRequest::UserAgentHeader, "Lorebinder");
    QNetworkReply* const reply = net_->get(request);
    reply->setReadBufferSize(kLongestText + 1);
    // A server that sends a byte now and then is not waited for either.
    QTimer::singleShot(2 * timeout_, reply, &QNetworkReply::abort);
    QObject::connect(reply, &QNetworkReply::readyRead, reply, [reply] {
        if (reply->bytesAvailable() <= kLongestText)
            return;
        reply->setProperty("isTooLong", true);
        reply->abort();
    });
    QObject::connect(reply, &QNetworkReply::finished, net_.get(), [reply, done] {
        reply->deleteLater();
        done(ReplyOf(*reply, reply->property("isTooLong").toBool()));
    });
}

}  // namespace lore
