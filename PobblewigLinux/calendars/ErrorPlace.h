#pragma once

#include "connections/calendars/CalendarDataProviding.h"

#include <QCoreApplication>

#include <gio/gio.h>

namespace pobblewig {

/// The place for an error that functions of GLib ask for, and what they put there.
class ErrorPlace {
    Q_DECLARE_TR_FUNCTIONS(ErrorPlace)

public:
    ErrorPlace() = default;
    ~ErrorPlace() { g_clear_error(&m_error); }
    Q_DISABLE_COPY_MOVE(ErrorPlace)

    operator GError**()
    {
        g_clear_error(&m_error);
        return &m_error;
    }

    bool is(GQuark domain, int code) const { return g_error_matches(m_error, domain, code); }

    /// The error in words for the user.
    tl::unexpected<WriteError> failure() const { return tl::unexpected(WriteError { sentence() }); }

private:
    QString sentence() const
    {
        if (is(G_IO_ERROR, G_IO_ERROR_CANCELLED))
            return tr("The calendar service does not answer.");
        if (is(G_DBUS_ERROR, G_DBUS_ERROR_SERVICE_UNKNOWN))
            return tr("There is no calendar service on this desktop.");
        return tr("The calendar service refuses: %1")
            .arg(m_error ? QString::fromUtf8(m_error->message) : QString());
    }

    GError* m_error = nullptr;
};

} // namespace pobblewig
