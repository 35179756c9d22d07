#include <contract/Contract.h>

#include <valijson/adapters/qtjson_adapter.hpp>
#include <valijson/schema.hpp>
#include <valijson/schema_parser.hpp>
#include <valijson/validation_results.hpp>
#include <valijson/validator.hpp>

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QJsonDocument>

#include <algorithm>
#include <iterator>

namespace {

using valijson::adapters::QtJsonAdapter;

const auto folder = QStringLiteral(":/schemas");

QJsonObject read(const QString &fileName)
{
    QFile file(fileName);
    file.open(QIODevice::ReadOnly); // it is part of the program
    return QJsonDocument::fromJson(file.readAll()).object();
}

/// The library tells the way to a value as "<root>", "[positions]", "[0]".
QString pointerTo(const std::vector<std::string> &context)
{
    QString pointer;
    for (const auto &step : context) {
        const auto text = QString::fromStdString(step);
        if (text.startsWith(u'['))
            pointer += u'/' + text.mid(1, text.size() - 2);
    }
    return pointer.isEmpty() ? QStringLiteral("/") : pointer;
}

/// Whether a problem only says that there is one further inside, as the next one then does.
bool isEcho(const QString &problem)
{
    return problem.contains(
               QStringLiteral(": Failed to validate against schema associated with ")) ||
           problem.contains(QStringLiteral(": Failed to validate item "));
}

/// Without the echoes of problems, unless they are all that is told.
QStringList withoutEchoes(const QStringList &problems)
{
    QStringList rest;
    std::remove_copy_if(problems.begin(), problems.end(), std::back_inserter(rest), isEcho);
    return rest.isEmpty() ? problems : rest;
}

} // namespace

Contract::Contract()
{
    const auto files = QDir(folder).entryInfoList(QDir::Files);
    for (const auto &file : files) {
        auto schema = std::make_unique<valijson::Schema>();
        const QJsonValue source(read(file.filePath()));
        valijson::SchemaParser().populateSchema(QtJsonAdapter(source), *schema);
        m_schemas.emplace(file.completeBaseName(), std::move(schema));
    }
}

Contract::~Contract() = default;

QStringList Contract::names() const
{
    QStringList names;
    for (const auto &schema : m_schemas)
        names.append(schema.first);
    return names;
}

QJsonObject Contract::schema(const QString &name) const
{
    return m_schemas.contains(name) ? read(QStringLiteral("%1/%2.json").arg(folder, name))
                                    : QJsonObject();
}

QStringList Contract::problemsOf(const QString &name, const QJsonObject &body) const
{
    const auto schema = m_schemas.find(name);
    if (schema == m_schemas.end())
        return {QStringLiteral("there is no contract for \"%1\"").arg(name)};

    const QJsonValue value(body);
    valijson::ValidationResults results;
    valijson::Validator().validate(*schema->second, QtJsonAdapter(value), &results);
    QStringList problems;
    for (const auto &error : results)
        problems.append(pointerTo(error.context) + QStringLiteral(": ") +
                        QString::fromStdString(error.description));
    return withoutEchoes(problems);
}
