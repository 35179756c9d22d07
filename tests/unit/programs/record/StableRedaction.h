#pragma once

#include <record/Redaction.h>

#include <gtest/gtest.h>

/// What becomes of a text; a second time must not change it.
inline QString redactedText(const QString &given)
{
    const auto once = Redaction::text(given);
    EXPECT_EQ(Redaction::text(once), once);
    return once;
}
