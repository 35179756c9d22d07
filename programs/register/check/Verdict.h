#pragma once

#include <register/check/CheckResult.h>
#include <register/check/Post.h>

/// What it means that a message fared so, and what the display's author can do about it.
CheckResult verdictOn(const Post &post, const QString &what);
