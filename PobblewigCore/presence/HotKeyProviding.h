#pragma once

#include "foundation/Task.h"
#include "presence/HotKeyError.h"

#include <QObject>

#include <tl/expected.hpp>

namespace pobblewig {

/// A combination of keys that reaches the program whichever application is in front.
class HotKeyProviding : public QObject {
    Q_OBJECT

public:
    using Outcome = tl::expected<void, HotKeyError>;

    /// Takes these keys instead of the ones before; empty ones only give those up. If they cannot
    /// be had, the ones before stay. Some desktops ask the user first.
    virtual Task<Outcome> assign(QKeySequence keys) = 0;

Q_SIGNALS:
    /// Once each time the keys go down, however long they are held.
    void pressed();
};

/// For desktops that hand out no keys.
class UnavailableHotKeys : public HotKeyProviding {
public:
    Task<Outcome> assign(QKeySequence keys) override
    {
        if (keys.isEmpty())
            co_return {};
        co_return tl::unexpected(HotKeyError { HotKeyError::Kind::unavailable, keys });
    }
};

} // namespace pobblewig
