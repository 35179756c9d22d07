#pragma once

#include <QString>

namespace doctor {

enum class Language { Russian, English };

/// A text for people in each language there is. A value type; empty when default-constructed.
class Text
{
public:
    Text() = default;
    /// Both in UTF-8, with the places %1 to %9 for `with`.
    Text(const char *russian, const char *english)
        : m_russian(QString::fromUtf8(russian)), m_english(QString::fromUtf8(english))
    {
    }

    /// The text with its places filled: by strings and numbers, which are the same in each
    /// language, and by other texts.
    template <class... Values>
    Text with(const Values &...values) const
    {
        Text filled;
        filled.m_russian = m_russian.arg(value(values, Language::Russian)...);
        filled.m_english = m_english.arg(value(values, Language::English)...);
        return filled;
    }

    const QString &in(Language language) const
    {
        return language == Language::Russian ? m_russian : m_english;
    }
    bool isEmpty() const { return m_russian.isEmpty() && m_english.isEmpty(); }

    friend Text operator+(const Text &first, const Text &second)
    {
        Text both;
        both.m_russian = first.m_russian + second.m_russian;
        both.m_english = first.m_english + second.m_english;
        return both;
    }

private:
    static QString value(const QString &text, Language) { return text; }
    static QString value(const Text &text, Language language) { return text.in(language); }
    static QString value(qint64 number, Language) { return QString::number(number); }

    QString m_russian;
    QString m_english;
};

} // namespace doctor
