#pragma once

#include <QJsonObject>

class Cashier;
class Till;

/// What the cashier's page shows of the register: {"display":"http://…","receipt":{…} or null,
/// "dialogs":[{"id":1,"kind":"qr"}, …]}, the receipt as the plug-in sends it and the display's
/// address as the settings have it at this moment.
QJsonObject registerState(const Till &till, const Cashier &cashier);
