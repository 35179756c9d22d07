#include <display/LastMessages.h>

#include <algorithm>

namespace {

const auto configure = QStringLiteral("Configure");
const auto updateDocument = QStringLiteral("UpdateDocument");
const auto qrPayment = QStringLiteral("QrPayment");
const auto paymentDraft = QStringLiteral("PaymentDraft");
const auto priceList = QStringLiteral("PriceList");
const auto imageData = QStringLiteral("ImageData");

const auto idKey = QStringLiteral("id");
const auto uriKey = QStringLiteral("uri");
const auto typeKey = QStringLiteral("type");
const auto valueKey = QStringLiteral("value");
const auto scrollKey = QStringLiteral("scroll");

/// More scrolling than a price list has pages changes nothing.
constexpr qsizetype maxScrolls = 200;

/// Whether a message takes something off the screen and shows nothing in its place.
bool isEnd(const KeptMessage &message)
{
    return message.body[u"close"].toBool() || message.body[u"hide"].toBool();
}

bool isScroll(const KeptMessage &message)
{
    return message.type == priceList && message.body.contains(scrollKey);
}

bool isPicture(const KeptMessage &message)
{
    return message.type == imageData;
}

/// What a picture is for, and nothing else that somebody may have put there.
QJsonObject idOf(const QJsonObject &body)
{
    const auto id = body[u"id"].toObject();
    return {{typeKey, id[typeKey].toString()}, {valueKey, id[valueKey].toString()}};
}

qint64 pictureBytes(const KeptMessage &message)
{
    constexpr qint64 forTheRest = 256;
    const auto id = message.body[idKey].toObject();
    return message.body[uriKey].toString().size() + id[typeKey].toString().size() +
           id[valueKey].toString().size() + forTheRest;
}

} // namespace

void LastMessages::keep(const KeptMessage &message)
{
    if (isPicture(message)) {
        keepPicture(message);
    } else if (isScroll(message)) {
        keepScroll(message);
    } else {
        if (message.type == configure)
            clear();
        else if (message.type == updateDocument)
            endPayments(message.body);
        remove(message.type);
        if (!isEnd(message))
            m_messages.append(message);
    }
}

QJsonArray LastMessages::toJson() const
{
    QJsonArray array;
    for (const auto &message : m_messages)
        array.append(message.toJson());
    return array;
}

std::optional<KeptMessage> LastMessages::find(const QString &type) const
{
    const auto found = std::find_if(m_messages.begin(), m_messages.end(),
                                    [&](const auto &message) { return message.type == type; });
    return found == m_messages.end() ? std::nullopt : std::optional(*found);
}

void LastMessages::remove(const QString &type)
{
    m_messages.removeIf([&](const KeptMessage &message) { return message.type == type; });
}

void LastMessages::endPayments(const QJsonObject &receipt)
{
    const auto number = receipt[u"number"];
    const auto before = find(updateDocument);
    const bool isPaid = receipt[u"state"].toString() == u"paid";
    if (!isPaid && (!before || before->body[u"number"] == number))
        return;
    remove(qrPayment);
    const auto draft = find(paymentDraft); // may overtake the first message of its receipt
    if (draft && (isPaid || draft->body[u"number"] != number))
        remove(paymentDraft);
}

void LastMessages::keepPicture(KeptMessage message)
{
    const auto id = idOf(message.body);
    message.body = {{idKey, id}, {uriKey, message.body[uriKey].toString()}};
    m_messages.removeIf(
        [&](const KeptMessage &other) { return isPicture(other) && other.body[idKey] == id; });
    m_messages.append(message);

    qint64 bytes = 0;
    qsizetype count = 0;
    for (const auto &each : m_messages) {
        bytes += isPicture(each) ? pictureBytes(each) : 0;
        count += isPicture(each) ? 1 : 0;
    }
    m_messages.removeIf([&](const KeptMessage &each) {
        const bool goes = isPicture(each) && (bytes > maxPictureBytes || count > maxPictures);
        if (goes) {
            bytes -= pictureBytes(each);
            --count;
        }
        return goes;
    });
}

void LastMessages::keepScroll(KeptMessage message)
{
    if (!find(priceList))
        return;
    message.body = {{scrollKey, message.body[scrollKey].toString()}};
    m_messages.append(message);
    const auto scrolls = std::count_if(m_messages.begin(), m_messages.end(), &isScroll);
    if (scrolls > maxScrolls)
        m_messages.erase(std::find_if(m_messages.begin(), m_messages.end(), &isScroll));
}
