#pragma once

#include <QString>

class Commands;
class Till;

/// Adds the commands that name a call of the host as it is: event, document, change, action,
/// setting, image, init, deinit. `imagesFolder` is where relative names of pictures start. `till`
/// must outlive the commands.
void addHostCommands(Commands &commands, Till &till, const QString &imagesFolder);
