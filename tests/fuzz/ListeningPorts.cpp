// The kernel's list of TCP sockets.

#include "support/Fuzz.h"

#include <doctor/ListeningPorts.h>

void fuzzOne(const QByteArray &input)
{
    doctor::parseListeningPorts(input);
}
