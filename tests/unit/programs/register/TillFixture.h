#pragma once

#include <register/CommandError.h>
#include <register/Commands.h>
#include <register/Till.h>

#include <support/FreshSingletons.h>
#include <support/Json.h>
#include <support/PrintQt.h>

#include <gtest/gtest.h>

/// A till with the plug-in that writes down how it is used, and commands to use it with.
class TillFixture : public testing::Test
{
protected:
    /// The plug-in's calls since this was last asked.
    QStringList calls()
    {
        const QString key("RecordingPlugin:calls");
        const auto calls = singletons.config().value(key).toStringList();
        singletons.config().setValue(key, {});
        return calls;
    }

    /// The arguments of the last event that the plug-in got.
    QVariantMap arguments() const
    {
        return singletons.config().value("RecordingPlugin:arguments").toMap();
    }

    /// Runs a command; returns what is wrong with it, empty if nothing.
    QString run(const QByteArray &command) const
    {
        const auto parsed = QJsonDocument::fromJson(command);
        EXPECT_TRUE(parsed.isObject()) << command.toStdString();
        try {
            commands.run(parsed.object());
        } catch (const CommandError &error) {
            return QString::fromUtf8(error.what());
        }
        return {};
    }

    /// Runs a command that must succeed.
    void does(const QByteArray &command) const
    {
        EXPECT_EQ(run(command), QString()) << command.toStdString();
    }

    support::FreshSingletons singletons;
    Till till{QStringLiteral(RECORDING_PLUGIN)};
    Commands commands;
};

/// A wrong command and the error it is answered with.
struct WrongCommand
{
    const char *command;
    const char *error;
};

/// A test's name ought not to hold the command itself.
inline void PrintTo(const WrongCommand &wrong, std::ostream *out)
{
    *out << wrong.command;
}
