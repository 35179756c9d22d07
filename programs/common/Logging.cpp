#include <common/Logging.h>

#include <QByteArray>
#include <QDateTime>
#include <QLoggingCategory>

#include <algorithm>
#include <cstdio>

namespace {

constexpr qsizetype maxMessageLength = 4000;

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

/// What others sent may be part of a message: it is not to look like further lines, change the
/// terminal or fill the disk.
QString asOneLine(const QString &message)
{
    auto text = message.size() > maxMessageLength ? message.left(maxMessageLength) + u'…' : message;
    const auto isControl = [](QChar c) { return c.category() == QChar::Other_Control; };
    std::replace_if(text.begin(), text.end(), isControl, u' ');
    return text;
}

/// One write a line, so that lines of several threads do not mix.
void writeLine(QtMsgType level, const QMessageLogContext &context, const QString &message)
{
    const QByteArray line = QDateTime::currentDateTime().toString(Qt::ISODateWithMs).toUtf8() +
                            ' ' + levelName(level) + ' ' + context.category + ' ' +
                            asOneLine(message).toUtf8() + '\n';
    std::fwrite(line.constData(), 1, static_cast<std::size_t>(line.size()), stderr);
}

} // namespace

void logToStandardError(bool debug)
{
    QLoggingCategory::setFilterRules(debug ? QStringLiteral("*.debug=true\nqt.*.debug=false")
                                           : QStringLiteral("*.debug=false"));
    qInstallMessageHandler(&writeLine);
}
