#pragma once

#include "AppCoordinator.h"
#include "PobblewigDesktop/bubble/BubbleKeeper.h"

#include <QSettings>

namespace pobblewig {

/// Introduces the buddy to a new user, once.
class FirstLaunch {
public:
    /// Both outlive this object.
    FirstLaunch(BubbleKeeper& bubbles, QSettings& desktopSettings)
        : m_bubbles(bubbles)
        , m_settings(desktopSettings)
    {
    }

    /// Says hello, unless the user knows the buddy already.
    void greet(AppCoordinator& coordinator);

private:
    BubbleKeeper& m_bubbles;
    QSettings& m_settings;
};

} // namespace pobblewig
