#include <record/Masking.h>

QString masked(QString text)
{
    for (auto &character : text) {
        if (character.isLetterOrNumber() || character.isMark() || character.isSurrogate())
            character = mask;
    }
    return text;
}

QString replaceAll(const QString &text, const QRegularExpression &pattern,
                   const std::function<QString(const QRegularExpressionMatch &)> &replacement)
{
    QString result;
    qsizetype end = 0;
    auto match = pattern.globalMatch(text);
    while (match.hasNext()) {
        const auto found = match.next();
        result += QStringView(text).mid(end, found.capturedStart() - end);
        result += replacement(found);
        end = found.capturedEnd();
    }
    return result + (match.isValid() ? text.mid(end) : masked(text.mid(end)));
}
