#include <baselines/NaiveQt.h>

#include <QCoreApplication>
#include <QJsonDocument>
#include <QNetworkReply>
#include <QUrl>

namespace bench {

NaiveQt::NaiveQt(const QString &url) : m_request(QUrl(url))
{
    m_request.setRawHeader("Accept", "application/json");
    m_request.setHeader(QNetworkRequest::ContentTypeHeader, QStringLiteral("application/json"));
}

void NaiveQt::post(const QVariantMap &data)
{
    const auto body = QJsonDocument::fromVariant(data).toJson(QJsonDocument::Compact);
    auto *reply = m_network.post(m_request, body);
    ++m_pending;
    QObject::connect(reply, &QNetworkReply::finished, &m_network, [this, reply] {
        --m_pending;
        reply->deleteLater();
    });
}

void NaiveQt::waitForAnswers()
{
    while (m_pending > 0)
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
}

} // namespace bench
