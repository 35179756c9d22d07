#pragma once

#include <QCommandLineParser>
#include <QString>
#include <QStringList>
#include <QUrl>

/**
 * The options of a program, with --help, --version and --debug, which every program has.
 *
 * Errors: the members that read throw UsageError with a line for people.
 */
class CommandLine
{
public:
    /// The version of all programs.
    static QString version();

    explicit CommandLine(const QString &description);

    /// An option with a value; `valueName` is shown in the help.
    void addOption(const QString &name, const QString &description, const QString &valueName);
    void addFlag(const QString &name, const QString &description);

    /// Reads the arguments, the program's name first. Returns false if --help or --version asked
    /// for a text, which has then been printed.
    bool parse(const QStringList &arguments);

    bool isSet(const QString &name) const { return m_parser.isSet(name); }
    QString value(const QString &name) const { return m_parser.value(name); }
    /// A port number from 0 to 65535, 0 standing for one that the system chooses.
    int port(const QString &name, int defaultPort) const;
    /// A whole number within these limits.
    int number(const QString &name, int defaultValue, int least, int most) const;
    /// An address with the scheme http; `example` is shown to whoever gave another.
    QUrl address(const QString &name, const QString &example) const;
    bool debug() const { return isSet(QStringLiteral("debug")); }

private:
    QCommandLineParser m_parser;
};
