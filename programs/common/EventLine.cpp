#include <common/EventLine.h>

#include <QTime>

#include <cstdio>

void printLine(const QString &line)
{
    const QByteArray bytes = line.toUtf8() + '\n';
    std::fwrite(bytes.constData(), 1, static_cast<std::size_t>(bytes.size()), stdout);
    std::fflush(stdout);
}

void printEvent(const QString &kind, const QString &text)
{
    constexpr int kindWidth = 14;
    printLine(QStringLiteral("%1  %2  %3")
                  .arg(QTime::currentTime().toString(QStringLiteral("HH:mm:ss.zzz")))
                  .arg(kind, -kindWidth)
                  .arg(text));
}
