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

    /// On the present screens: its own place there, else as near as possible to where it was put
    /// last. Nothing while there is no screen.
    std::optional<QPoint> place(QSize size);

    /// Where it can slide to from here without leaving its screen.
    QRect surroundings(QPoint place, QSize size);

    /// Of the free part of its screen; cheap enough to ask at every step.
    BuddyReach reach(QPoint place, QSize size) const;

    /// The whole of its screen, in device pixels.
    QRect screen(QPoint place, QSize size) const;

    void keep(QPoint place);

Q_SIGNALS:
    /// The place may be another one now.
    void screensChanged();

private:
    void watch(QScreen* screen);
    BuddyPlacement::Screen screenAt(QPoint place, QSize size) const;

    QSettings& m_settings;
    std::vector<BuddyPlacement::Screen> m_screens;
    /// In whichever arrangement that was.
    std::optional<QPoint> m_latest;
};

} // namespace pobblewig
