#pragma once

#include "PobblewigLinux/modules/CalendarsMaking.h"

#include <QObject>

namespace pobblewig {

/// Reads and writes files; nothing of a calendar service comes into the program with it.
class CalendarFolderModule final : public QObject, public CalendarsMaking {
    Q_OBJECT
    Q_PLUGIN_METADATA(IID "com.pobblewig.CalendarsMaking")
    Q_INTERFACES(pobblewig::CalendarsMaking)

public:
    std::unique_ptr<CalendarDataProviding> makeCalendars(const QString& folder) override;
};

} // namespace pobblewig
