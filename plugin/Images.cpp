// Pictures for the display.

#include <plugin/ViewConnector.h>

void ViewConnector::processGetImageRequest(const QJsonObject &) {}

void ViewConnector::onImageLoaded(const Image &) {}

void ViewConnector::sendImage(const ImageId &, const QString &) {}
