#include <doctor/AdServiceCheck.h>

#include <doctor/AdAnswerSteps.h>
#include <doctor/Redaction.h>
#include <doctor/StreamAddress.h>

#include <KeyAgreement.h>

#include <QJsonDocument>

namespace doctor {

namespace {

using namespace std::chrono_literals;

constexpr auto subscriptionDeadline = 5s; // the register waits 15 s, a person does not
constexpr auto streamTimeout = 2s;
constexpr qsizetype maxAnswerBytes = 16'384; // what the register takes
constexpr int fine = 200;                    // HTTP status
constexpr int firstError = 400;

QByteArray subscription(const QByteArray &publicKey)
{
    return QJsonDocument(
               QJsonObject{{QStringLiteral("pk"), QString::fromLatin1(publicKey.toBase64())}})
        .toJson(QJsonDocument::Compact);
}

Finding checkStream(const AdStream &stream)
{
    const auto step = QStringLiteral("stream");
    const auto place = redactedUrl(stream.listen);
    const auto answer = exchange(
        {streamAddress(stream.listen, QString::number(stream.number), stream.key), streamTimeout});
    if (answer.outcome != Outcome::Answered)
        return adStepFailed(
            step,
            Text("Поток на %1 недоступен: %2.", "The stream at %1 cannot be reached: %2.")
                .with(place, reasonOf(answer)),
            remedyOf(answer,
                     {"Сообщите владельцу сервиса рекламы.", "Tell the owner of the ad service."}));
    if (answer.status != fine)
        return adStepFailed(
            step,
            Text("Поток на %1 отвечает HTTP %2: выданный номер или ключ не подходит.",
                 "The stream at %1 answers HTTP %2: the number or key given does not fit.")
                .with(place, answer.status),
            {"Сообщите владельцу сервиса рекламы.", "Tell the owner of the ad service."});
    return adStepDone(step, Text("Поток на %1 идёт.", "The stream at %1 comes.").with(place));
}

bool isUsable(const QUrl &url)
{
    return url.isValid() && (url.scheme() == u"http" || url.scheme() == u"https") &&
           !url.host().isEmpty();
}

/// The steps up to a complete answer.
Findings judgeExchange(const QUrl &url, const HttpAnswer &answer)
{
    const auto place = redactedUrl(url.toString());
    if (answer.outcome == Outcome::AnswerTimedOut)
        return {adStepFailed(QStringLiteral("reach"),
                             Text("Сервис рекламы %1 не ответил до конца за %2 с.",
                                  "The ad service %1 did not answer completely within %2 s.")
                                 .with(place, qint64{subscriptionDeadline.count()}),
                             {"Касса ждёт ответа до 15 секунд. Проверьте сеть и нагрузку сервиса.",
                              "The register waits for up to 15 seconds. Check the network and "
                              "the load of the service."})};
    if (answer.outcome != Outcome::Answered)
        return {adStepFailed(
            QStringLiteral("reach"),
            Text("Сервис рекламы %1 недоступен: %2.", "The ad service %1 cannot be reached: %2.")
                .with(place, reasonOf(answer)),
            remedyOf(answer, {"Если он на этом компьютере: "
                              "systemctl --user restart viewconnector-adservice",
                              "If it is on this machine: "
                              "systemctl --user restart viewconnector-adservice"}))};
    Findings findings{adStepDone(
        QStringLiteral("reach"),
        Text("Сервис рекламы %1 отвечает через %2 мс.", "The ad service %1 answers after %2 ms.")
            .with(place, QString::number(answer.firstByteTime.count(), 'f', 1)))};
    findings.push_back(
        answer.status < firstError
            ? adStepDone(QStringLiteral("status"),
                         Text("Ответ HTTP %1.", "HTTP answer %1.").with(answer.status))
            : adStepFailed(QStringLiteral("status"),
                           Text("Сервис рекламы отвечает ошибкой HTTP %1.",
                                "The ad service answers with the HTTP error %1.")
                               .with(answer.status),
                           {"Проверьте адрес в ViewConnector.Ads:url; если он верен, сообщите "
                            "владельцу сервиса.",
                            "Check the address in ViewConnector.Ads:url; if it is right, tell the "
                            "service's owner."}));
    return findings;
}

} // namespace

AdServiceResult checkAdService(const QString &setting)
{
    if (setting.isEmpty())
        return {{skipped(QStringLiteral("ads"),
                         {"Сервис рекламы не проверен: он не указан.",
                          "The ad service was not checked: there is none in the settings."},
                         {"Если он нужен, укажите его адрес в ViewConnector.Ads:url.",
                          "If one is wanted, give its address in ViewConnector.Ads:url."})},
                {}};
    const QUrl url(setting);
    const auto place = redactedUrl(setting);
    if (!isUsable(url))
        return {{adStepFailed(QStringLiteral("address"),
                              Text("ViewConnector.Ads:url «%1» — не адрес http или https.",
                                   "ViewConnector.Ads:url \"%1\" is no address with http or https.")
                                  .with(place),
                              {"Укажите адрес вида https://сервис/путь или удалите строку.",
                               "Give an address like https://service/path, or remove the line."})},
                {}};

    AdServiceResult result;
    result.findings.push_back(adStepDone(
        QStringLiteral("address"),
        Text("Адрес сервиса рекламы: %1.", "Address of the ad service: %1.").with(place)));
    const auto [privateKey, publicKey] = ssl::generateKeyPairEC();
    const auto reply =
        exchange({url, subscriptionDeadline, subscription(publicKey.der()), maxAnswerBytes});
    if (reply.date().isValid())
        result.clock = PeerClock{{"сервиса рекламы", "of the ad service"},
                                 reply.date(),
                                 QDateTime::currentDateTimeUtc()};
    append(result.findings, judgeExchange(url, reply));
    if (hasFailed(result.findings))
        return result;
    AdStream stream;
    append(result.findings, judgeAdAnswer(reply, privateKey, stream));
    if (!hasFailed(result.findings))
        result.findings.push_back(checkStream(stream));
    return result;
}

} // namespace doctor
