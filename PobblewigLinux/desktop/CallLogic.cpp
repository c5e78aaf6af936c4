#include "PobblewigLinux/desktop/CallLogic.h"

#include <algorithm>
#include <array>

namespace pobblewig {

namespace {

constexpr std::array<QStringView, 6> callApps { u"us.zoom.xos", u"com.microsoft.teams",
    u"com.webex.meetingmanager", u"com.skype.skype", u"org.jitsi.jitsi-meet", u"org.gnome.jami" };

constexpr std::array<QStringView, 6> callWords { u"webrtc", u"video call", u"voice call",
    u"conference", u"meeting", u"in a call" };

} // namespace

bool CallLogic::isCallApp(const QString& identifier)
{
    return std::ranges::any_of(
        callApps, [&](auto app) { return identifier.compare(app, Qt::CaseInsensitive) == 0; });
}

bool CallLogic::isCallReason(const QString& reason)
{
    return std::ranges::any_of(
        callWords, [&](auto word) { return reason.contains(word, Qt::CaseInsensitive); });
}

} // namespace pobblewig
