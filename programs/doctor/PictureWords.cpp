#include <doctor/PictureWords.h>

#include <QRegularExpression>

namespace doctor {

namespace {

/// With one place at most, which may hold anything.
const Text forms[] = {
    {"это не картинка, а %1", "no picture, but %1"},
    {"не читается: %1", "it cannot be read: %1"},
    {"файл больше %1 байт", "the file is larger than %1 bytes"},
    {"больше %1 пикселей", "more than %1 pixels"},
    {"ошибка XML в строке %1", "an error of XML in line %1"},
    {"это не файл", "no file"},
    {"файл пуст", "the file is empty"},
    {"файл обрывается", "the file is cut off"},
    {"файл повреждён", "the file is damaged"},
};

QRegularExpression expressionOf(const Text &form)
{
    const auto escaped = QRegularExpression::escape(form.in(Language::Russian));
    return QRegularExpression(QRegularExpression::anchoredPattern(
        QString(escaped).replace(QStringLiteral("\\%1"), QStringLiteral("(.*)"))));
}

} // namespace

Text pictureWords(const QString &problem)
{
    for (const auto &form : forms) {
        const auto match = expressionOf(form).match(problem);
        if (match.hasMatch())
            return match.lastCapturedIndex() == 0 ? form : form.with(match.captured(1));
    }
    return Text("%1", "%1").with(problem);
}

} // namespace doctor
