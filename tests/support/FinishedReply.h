#pragma once

#include <QList>
#include <QNetworkReply>

#include <algorithm>
#include <utility>

namespace support {

/// The answer to a request that nobody has sent, there as a whole. Owner: as any reply's.
/// Thread: that of its creation. It finishes when its `finished` is emitted.
class FinishedReply : public QNetworkReply
{
public:
    using Fields = QList<std::pair<QByteArray, QByteArray>>;

    FinishedReply(const Fields &fields, QByteArray body) : m_body(std::move(body))
    {
        for (const auto &[name, value] : fields)
            setRawHeader(name, value);
        open(QIODevice::ReadOnly | QIODevice::Unbuffered);
        setFinished(true);
    }

    void abort() override {}
    qint64 bytesAvailable() const override { return m_body.size(); }

protected:
    qint64 readData(char *to, qint64 maxSize) override
    {
        const auto size = std::min<qint64>(maxSize, m_body.size());
        std::copy_n(m_body.begin(), size, to);
        m_body.remove(0, size);
        return size;
    }

private:
    QByteArray m_body;
};

} // namespace support
