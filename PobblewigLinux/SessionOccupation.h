#pragma once

#include "PobblewigLinux/desktop/InhibitorReasons.h"
#include "PobblewigLinux/x11/X11Connection.h"
#include "activity/FrontmostAppProviding.h"
#include "interventions/Occupation.h"

namespace pobblewig {

/// Tells a full-screen window by X11, and a call by the application in front and by what programs
/// keep the screen awake for.
class SessionOccupation final : public OccupationProviding {
public:
    /// `x11` may be null. The rest must outlive this object.
    SessionOccupation(
        X11Connection* x11, FrontmostAppProviding& frontmost, const QDBusConnection& bus);

    Task<Occupation> occupation() override;

private:
    bool isFullScreenInFront() const;
    Task<bool> isInCall();

    X11Connection* m_x11;
    FrontmostAppProviding& m_frontmost;
    InhibitorReasons m_inhibitors;
};

} // namespace pobblewig
