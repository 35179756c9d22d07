#pragma once

#include <contract/Contract.h>

#include <common/MessageTypes.h>

#include <gtest/gtest.h>

namespace support {

/// Expects that a message is as the contract says; `name` is that of its type.
inline void expectKeepsToContract(const QString &name, const QJsonObject &body)
{
    static const Contract contract;
    EXPECT_EQ(contract.problemsOf(name, body), QStringList()) << name.toStdString();
}

/// The same for a message as it was posted to a path.
inline void expectPostKeepsToContract(const QString &path, const QJsonObject &body)
{
    expectKeepsToContract(messageTypeOfPath(path), body);
}

} // namespace support
