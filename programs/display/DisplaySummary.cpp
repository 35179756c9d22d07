// What the display tells at its end.

#include <common/EventLine.h>
#include <common/MessageTypes.h>
#include <common/UsageError.h>
#include <display/Display.h>

#include <QFile>
#include <QJsonDocument>

void Display::printSummary() const
{
    printLine(QStringLiteral("Received: %1 messages, %2 refused").arg(m_received).arg(m_refused));
    for (const auto &type : messageTypes) {
        const auto name = QString::fromLatin1(type.name);
        if (const int count = m_accepted.value(name); count > 0)
            printLine(QStringLiteral("  %1 %2").arg(name, -14).arg(count));
    }
    if (m_pictures.requested() + m_pictures.delivered() + m_pictures.missing() > 0)
        printLine(QStringLiteral("Pictures: %1 asked for, %2 came, %3 said to be missing")
                      .arg(m_pictures.requested())
                      .arg(m_pictures.delivered())
                      .arg(m_pictures.missing()));
    if (m_advertising.shown() + m_advertising.failed() > 0)
        printLine(QStringLiteral("Advertisements: %1 shown, %2 failed, %3 pictures of streams")
                      .arg(m_advertising.shown())
                      .arg(m_advertising.failed())
                      .arg(m_advertising.streamPictures()));
    if (m_check) {
        const auto lines = m_check->report();
        for (const auto &line : lines)
            printLine(line);
    }
}

void Display::writeReport() const
{
    if (m_options.reportFile.isEmpty())
        return;
    QFile file(m_options.reportFile);
    if (!file.open(QIODevice::WriteOnly) ||
        file.write(QJsonDocument(m_check->toJson()).toJson()) < 0 || !file.flush())
        throw UsageError(
            QStringLiteral("--report %1: %2.").arg(m_options.reportFile, file.errorString()));
}
