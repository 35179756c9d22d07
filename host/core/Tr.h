#pragma once

#include <HostExport.h>

#include <QMap>
#include <QMetaType>
#include <QString>

namespace tr {

/**
 * A text in several languages, keyed by language code ("ru", "en").
 *
 * A value type; empty when default-constructed.
 */
class HOST_EXPORT Tr
{
public:
    Tr() = default;
    explicit Tr(QMap<QString, QString> texts);

    /// The text in the interface language, the setting "Host:language" ("ru" unless set); where
    /// there is none in that language, the first in the order of language codes; empty without any.
    QString ui() const;

    bool operator==(const Tr &) const = default;

private:
    QMap<QString, QString> m_texts;
};

} // namespace tr

Q_DECLARE_METATYPE(tr::Tr)
