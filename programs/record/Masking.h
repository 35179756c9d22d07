#pragma once

#include <QRegularExpression>
#include <QString>

#include <functional>

/// What stands for a letter or a digit that is hidden.
constexpr QChar mask = u'x';

/// Letters and digits are masked, what is between them stays.
QString masked(QString text);

/// The text with each match replaced. Where matching fails (a limit is reached, or the text is no
/// valid UTF-16), nobody knows what the rest holds: all of it is masked.
QString replaceAll(const QString &text, const QRegularExpression &pattern,
                   const std::function<QString(const QRegularExpressionMatch &)> &replacement);
