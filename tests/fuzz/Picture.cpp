// A file that is said to hold a picture: of goods, or of the screen's style.

#include "support/Fuzz.h"

#include <display/LookFile.h>

#include <PictureFile.h>

void fuzzOne(const QByteArray &input)
{
    const auto name = fuzz::inFile(input);
    const auto picture = readPictureFile(name);
    fuzz::require(picture.content == (picture.problem.isEmpty() ? input : QByteArray()),
                  "a picture is read as it is, or not at all");
    const auto look = LookFile::read(name);
    fuzz::require(look.content.isEmpty() || look.contentType.startsWith(u"image/"),
                  "only a picture is part of the screen's style");
}
