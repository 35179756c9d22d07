#pragma once

#include <QString>

class Goods;
class PageRoutes;

/// Adds "/goods", the catalogue as JSON, and "/pictures/CODE", the picture of each article that has
/// one in the folder. Without a folder there are no pictures. A picture is read when it is asked
/// for; 404 if it cannot be read then.
void addGoodsRoutes(PageRoutes &routes, const Goods &goods, const QString &imagesFolder);
