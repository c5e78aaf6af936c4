#pragma once

#include <QString>

namespace pobblewig {

/// How a window identifies its application. Each field may be empty, and all are untrusted text.
struct WindowIdentity {
    /// The application's id on the bus, mostly that of its desktop file.
    QString applicationID = {};
    /// The name of the application's window class.
    QString windowClass = {};
    /// Mostly the program's file name.
    QString instance = {};

    bool operator==(const WindowIdentity&) const = default;
};

} // namespace pobblewig
