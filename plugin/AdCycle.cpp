// Advertisements, one after the other, driven by the display's results.

#include <plugin/ViewConnector.h>

void ViewConnector::processAdResult(const QJsonObject &) {}

void ViewConnector::sendAdvertising() {}
