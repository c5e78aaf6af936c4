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

    /// Takes these keys instead of the previous ones; empty keys only give those up. If they cannot
    /// be had, the previous ones stay. Some desktops ask the user first.
    virtual Task<Outcome> assign(QKeySequence keys) = 0;

Q_SIGNALS:
    /// Emitted once each time the keys go down, however long they are held.
    void pressed();
};

/// For desktops that do not let programs have keys.
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
