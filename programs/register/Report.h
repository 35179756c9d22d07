#pragma once

#include <QString>

class Till;

/// Writes what the plug-in was asked for and the register's own current document, as JSON:
/// {"asked":{"UpdateDocument":[<ms on the monotonic clock>, …], …},"document":{…}}. Throws
/// UsageError if the file cannot be written.
void writeReport(const QString &fileName, const Till &till);
