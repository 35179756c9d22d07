#include <adservice/EventLine.h>

#include <QTime>

#include <cstdio>

void printEvent(const QString &subject, const QString &text)
{
    constexpr int subjectWidth = 14;
    const QByteArray line = QStringLiteral("%1  %2  %3\n")
                                .arg(QTime::currentTime().toString(QStringLiteral("HH:mm:ss.zzz")))
                                .arg(subject, -subjectWidth)
                                .arg(text)
                                .toUtf8();
    std::fwrite(line.constData(), 1, static_cast<std::size_t>(line.size()), stdout);
    std::fflush(stdout);
}
