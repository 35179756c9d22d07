#include <display/EventLine.h>

#include <QTextStream>
#include <QTime>

void printLine(const QString &line)
{
    QTextStream(stdout) << line << '\n';
}

void printEvent(const QString &kind, const QString &text)
{
    printLine(QStringLiteral("%1  %2  %3")
                  .arg(QTime::currentTime().toString(QStringLiteral("HH:mm:ss.zzz")))
                  .arg(kind, -14)
                  .arg(text));
}
