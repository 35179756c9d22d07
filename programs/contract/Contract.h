#pragma once

#include <QJsonObject>
#include <QString>
#include <QStringList>

#include <map>
#include <memory>

namespace valijson {
class Schema;
}

/**
 * The contract of the wire: the JSON Schemas of docs/protocol, which are part of the program.
 *
 * Owner: who checks. Thread: that of its owner. Errors: none, the schemas are sound or the tests
 * fail.
 */
class Contract
{
public:
    Contract();
    ~Contract();
    Q_DISABLE_COPY_MOVE(Contract)

    /// The schemas that there are; a message's has the name of its type.
    QStringList names() const;

    /// The schema of that name as it stands; empty if there is none.
    QJsonObject schema(const QString &name) const;

    /// What in `body` breaks the schema of that name, each with its place as a JSON Pointer; empty
    /// if it is right.
    QStringList problemsOf(const QString &name, const QJsonObject &body) const;

private:
    std::map<QString, std::unique_ptr<valijson::Schema>> m_schemas;
};
