#pragma once

#include "buddy/BuddyPill.h"
#include "buddy/BuddyPlacement.h"

#include <QObject>
#include <QSettings>

#include <optional>

class QScreen;

namespace pobblewig {

/// Where the user has put the buddy, for each arrangement of the screens.
class BuddyPlaces : public QObject {
    Q_OBJECT

public:
    /// Reads and writes the group "buddy".
    explicit BuddyPlaces(QSettings& settings);

    /// The place on the present screens: the one kept for them, or else the one nearest to where
    /// the buddy was last put. Returns nothing while there is no screen.
    std::optional<QPoint> place(QSize size);

    /// The places that the buddy can slide to without leaving its screen.
    QRect surroundings(QPoint place, QSize size);

    /// The reach within the free part of its screen; cheap enough to ask at every step.
    BuddyReach reach(QPoint place, QSize size) const;

    /// The whole of the buddy's screen, in device pixels.
    QRect screen(QPoint place, QSize size) const;

    void keep(QPoint place);

Q_SIGNALS:
    /// The place may have changed.
    void screensChanged();

private:
    void watch(QScreen* screen);
    BuddyPlacement::Screen screenAt(QPoint place, QSize size) const;

    QSettings& m_settings;
    std::vector<BuddyPlacement::Screen> m_screens;
    /// The last place, whichever arrangement it was kept for.
    std::optional<QPoint> m_latest;
};

} // namespace pobblewig
