#include <common/CommandLine.h>

#include <common/UsageError.h>

#include <QFileInfo>
#include <QTextStream>

QString CommandLine::version()
{
    return QStringLiteral(PROGRAM_VERSION);
}

CommandLine::CommandLine(const QString &description)
{
    m_parser.setApplicationDescription(description);
    addFlag(QStringLiteral("help"), QStringLiteral("Show this help and exit."));
    addFlag(QStringLiteral("version"), QStringLiteral("Show the version and exit."));
    addFlag(QStringLiteral("debug"), QStringLiteral("Log lines of level DEBUG too."));
}

void CommandLine::addOption(const QString &name, const QString &description,
                            const QString &valueName)
{
    m_parser.addOption({name, description, valueName});
}

void CommandLine::addFlag(const QString &name, const QString &description)
{
    m_parser.addOption({name, description});
}

bool CommandLine::parse(const QStringList &arguments)
{
    const bool understood = m_parser.parse(arguments);
    if (understood && isSet(QStringLiteral("help"))) {
        QTextStream(stdout) << m_parser.helpText();
        return false;
    }
    if (understood && isSet(QStringLiteral("version"))) {
        QTextStream(stdout) << QFileInfo(arguments.value(0)).fileName() << ' ' << version() << '\n';
        return false;
    }
    if (!understood)
        throw UsageError(m_parser.errorText() + QStringLiteral(" See --help."));
    if (const auto extra = m_parser.positionalArguments(); !extra.isEmpty())
        throw UsageError(
            QStringLiteral("Unexpected argument \"%1\". See --help.").arg(extra.first()));
    return true;
}

int CommandLine::port(const QString &name, int defaultPort) const
{
    if (!isSet(name))
        return defaultPort;
    bool isNumber = false;
    const int port = value(name).toInt(&isNumber);
    if (!isNumber || port < 0 || port > 65535)
        throw UsageError(QStringLiteral("--%1 \"%2\" is no port: give a number from 0 to 65535.")
                             .arg(name, value(name)));
    return port;
}

int CommandLine::number(const QString &name, int defaultValue, int least, int most) const
{
    if (!isSet(name))
        return defaultValue;
    bool isNumber = false;
    const int number = value(name).toInt(&isNumber);
    if (!isNumber || number < least || number > most)
        throw UsageError(QStringLiteral("--%1 \"%2\" does not fit: give a number from %3 to %4.")
                             .arg(name, value(name))
                             .arg(least)
                             .arg(most));
    return number;
}

QUrl CommandLine::address(const QString &name, const QString &example) const
{
    QUrl address(value(name));
    if (address.scheme() != u"http" || address.host().isEmpty())
        throw UsageError(QStringLiteral("--%1 \"%2\" is no address: give one like %3.")
                             .arg(name, value(name), example));
    return address;
}
