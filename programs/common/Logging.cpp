#include <common/Logging.h>

#include <QByteArray>
#include <QDateTime>
#include <QLoggingCategory>

#include <cstdio>

namespace {

const char *levelName(QtMsgType level)
{
    switch (level) {
    case QtDebugMsg:
        return "DEBUG";
    case QtInfoMsg:
        return "INFO";
    case QtWarningMsg:
        return "WARN";
    case QtCriticalMsg:
        return "ERROR";
    case QtFatalMsg:
        return "FATAL";
    }
    return "INFO";
}

/// One write a line, so that lines of several threads do not mix.
void writeLine(QtMsgType level, const QMessageLogContext &context, const QString &message)
{
    const QByteArray line = QDateTime::currentDateTime().toString(Qt::ISODateWithMs).toUtf8() +
                            ' ' + levelName(level) + ' ' + context.category + ' ' +
                            message.toUtf8() + '\n';
    std::fwrite(line.constData(), 1, static_cast<std::size_t>(line.size()), stderr);
}

} // namespace

void logToStandardError(bool debug)
{
    QLoggingCategory::setFilterRules(debug ? QStringLiteral("*.debug=true\nqt.*.debug=false")
                                           : QStringLiteral("*.debug=false"));
    qInstallMessageHandler(&writeLine);
}
