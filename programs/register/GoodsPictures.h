#pragma once

#include <QString>

class Goods;

/// Tells the store of pictures in which file of the folder each goods' picture is, by the goods'
/// code and by its bar code.
void addGoodsPictures(const Goods &goods, const QString &imagesFolder);
