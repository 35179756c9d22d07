// The subscription to the stream of the advertising service.

#include <plugin/ViewConnector.h>

void ViewConnector::asyncGetAdsStream(const QUrl &) const {}

void ViewConnector::onAdsStreamConnectFinished() {}

void ViewConnector::onAdsStreamConnectErrorOccurred() {}
