#include "PobblewigLinux/x11/X11WindowIdentity.h"

namespace pobblewig {

namespace {

struct Question {
    xcb_get_property_cookie_t windowClass;
    xcb_get_property_cookie_t applicationID;
};

xcb_get_property_cookie_t ask(
    xcb_connection_t* connection, xcb_window_t window, xcb_atom_t property)
{
    constexpr std::uint32_t longest = 128; // times four bytes
    return xcb_get_property(connection, false, window, property, XCB_ATOM_ANY, 0, longest);
}

QByteArray answer(xcb_connection_t* connection, xcb_get_property_cookie_t question)
{
    const X11Reply<xcb_get_property_reply_t> reply(
        xcb_get_property_reply(connection, question, nullptr));
    if (!reply || reply->format != 8)
        return {};
    return { static_cast<const char*>(xcb_get_property_value(reply.get())),
        xcb_get_property_value_length(reply.get()) };
}

} // namespace

std::vector<WindowIdentity> X11WindowIdentity::identities(
    X11Connection& connection, std::span<const xcb_window_t> windows)
{
    auto* x11 = connection.get();
    const auto applicationID = connection.atom("_GTK_APPLICATION_ID");
    std::vector<Question> questions;
    questions.reserve(windows.size());
    for (const auto window : windows) {
        questions.push_back(
            { ask(x11, window, XCB_ATOM_WM_CLASS), ask(x11, window, applicationID) });
    }

    std::vector<WindowIdentity> identities;
    identities.reserve(windows.size());
    for (const auto& question : questions) {
        const auto names = answer(x11, question.windowClass).split('\0');
        identities.push_back({
            .applicationID = QString::fromUtf8(answer(x11, question.applicationID)),
            .windowClass = QString::fromUtf8(names.value(1)),
            .instance = QString::fromUtf8(names.value(0)),
        });
    }
    return identities;
}

} // namespace pobblewig
