#pragma once

#include <QByteArray>
#include <QDebug>
#include <QString>
#include <QStringList>
#include <QUrl>
#include <QVariant>

#include <ostream>

// How GoogleTest shows Qt's values when an expectation fails; without these it prints their bytes.
// Found by the namespace of the type, hence in the global one.

inline void printByDebug(const auto &value, std::ostream *out)
{
    QString text;
    QDebug(&text).nospace() << value;
    *out << text.toStdString();
}

inline void PrintTo(const QString &value, std::ostream *out)
{
    *out << '"' << value.toStdString() << '"';
}

inline void PrintTo(const QByteArray &value, std::ostream *out)
{
    *out << '"' << value.toStdString() << '"';
}

inline void PrintTo(const QStringList &value, std::ostream *out)
{
    printByDebug(value, out);
}

inline void PrintTo(const QUrl &value, std::ostream *out)
{
    printByDebug(value, out);
}

inline void PrintTo(const QVariant &value, std::ostream *out)
{
    printByDebug(value, out);
}

inline void PrintTo(const QVariantMap &value, std::ostream *out)
{
    printByDebug(value, out);
}
