#pragma once

#include <doctor/Finding.h>

#include <support/PrintQt.h>

#include <QRegularExpression>
#include <QStringList>

#include <gmock/gmock.h>

namespace doctor {

/// Expects a text to be there in both languages, the right one in each. What a test fills in must
/// be Latin.
inline void expectComplete(const Text &text)
{
    static const QRegularExpression cyrillic("[а-яёА-ЯЁ]");
    EXPECT_TRUE(cyrillic.match(text.in(Language::Russian)).hasMatch())
        << text.in(Language::Russian).toStdString();
    EXPECT_FALSE(text.in(Language::English).isEmpty()) << text.in(Language::Russian).toStdString();
    EXPECT_FALSE(cyrillic.match(text.in(Language::English)).hasMatch())
        << text.in(Language::English).toStdString();
    static const QRegularExpression unfilled("%[1-9]");
    EXPECT_FALSE(unfilled.match(text.in(Language::Russian)).hasMatch());
    EXPECT_FALSE(unfilled.match(text.in(Language::English)).hasMatch());
}

/// Expects each finding to have its texts in both languages, and a remedy unless all is well.
inline Findings complete(Findings findings)
{
    EXPECT_FALSE(findings.empty());
    for (const auto &finding : findings) {
        expectComplete(finding.message);
        EXPECT_EQ(finding.remedy.isEmpty(), finding.status == Status::Ok);
        if (finding.status != Status::Ok)
            expectComplete(finding.remedy);
    }
    return findings;
}

inline QString english(const Finding &finding)
{
    return finding.message.in(Language::English);
}

inline QStringList statuses(const Findings &findings)
{
    QStringList names;
    for (const auto &finding : findings)
        names.append(nameOf(finding.status));
    return names;
}

} // namespace doctor
