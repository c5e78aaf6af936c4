#pragma once

#include <QString>

namespace pobblewig {

/// What a window says of the application that it belongs to. Each can be empty, and each is foreign
/// text.
struct WindowIdentity {
    /// The id that the application goes by on the bus, mostly that of its desktop file.
    QString applicationID = {};
    /// The name of the application among the kinds of applications.
    QString windowClass = {};
    /// Mostly the program's file name.
    QString instance = {};

    bool operator==(const WindowIdentity&) const = default;
};

} // namespace pobblewig
