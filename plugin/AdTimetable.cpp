// The timetable of advertisements in the settings.

#include <plugin/ViewConnector.h>

QList<QVariant> ViewConnector::readAdTimetable() const
{
    return {};
}
