#include <doctor/PictureWords.h>

#include <QRegularExpression>

#include <array>

namespace doctor {

namespace {

/// With one place at most, which may hold anything.
const std::array forms{
    Text("это не картинка, а %1", "no picture, but %1"),
    Text("не читается: %1", "it cannot be read: %1"),
    Text("файл больше %1 байт", "the file is larger than %1 bytes"),
    Text("больше %1 пикселей", "more than %1 pixels"),
    Text("ошибка XML в строке %1", "an error of XML in line %1"),
    Text("это не файл", "no file"),
    Text("файл пуст", "the file is empty"),
    Text("файл обрывается", "the file is cut off"),
    Text("файл повреждён", "the file is damaged"),
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
