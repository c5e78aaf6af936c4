#include "PobblewigLinux/X11Occlusion.h"

#include <QRegion>

#include <algorithm>

namespace pobblewig {

namespace {

constexpr int depthWithAlpha = 32;

struct WindowFacts {
    bool isMapped = false;
    bool isOpaque = false;
    QRect rect;
};

/// Asks about all windows before it waits for the first answer: one round trip in all.
class WindowSurvey {
public:
    WindowSurvey(X11Connection& connection, const std::vector<xcb_window_t>& windows)
        : m_connection(connection.get())
    {
        for (const auto window : windows) {
            m_questions.push_back({
                xcb_get_window_attributes(m_connection, window),
                xcb_get_geometry(m_connection, window),
                xcb_translate_coordinates(m_connection, window, connection.root(), 0, 0),
            });
        }
    }

    std::vector<WindowFacts> facts() const
    {
        std::vector<WindowFacts> facts;
        facts.reserve(m_questions.size());
        for (const auto& question : m_questions)
            facts.push_back(answer(question));
        return facts;
    }

private:
    struct Question {
        xcb_get_window_attributes_cookie_t attributes;
        xcb_get_geometry_cookie_t geometry;
        xcb_translate_coordinates_cookie_t place;
    };

    WindowFacts answer(const Question& question) const
    {
        const X11Reply<xcb_get_window_attributes_reply_t> attributes(
            xcb_get_window_attributes_reply(m_connection, question.attributes, nullptr));
        const X11Reply<xcb_get_geometry_reply_t> geometry(
            xcb_get_geometry_reply(m_connection, question.geometry, nullptr));
        const X11Reply<xcb_translate_coordinates_reply_t> place(
            xcb_translate_coordinates_reply(m_connection, question.place, nullptr));
        if (!attributes || !geometry || !place)
            return {};
        return {
            .isMapped = attributes->map_state == XCB_MAP_STATE_VIEWABLE,
            .isOpaque = geometry->depth != depthWithAlpha,
            .rect = { place->dst_x, place->dst_y, geometry->width, geometry->height },
        };
    }

    xcb_connection_t* m_connection;
    std::vector<Question> m_questions;
};

} // namespace

bool X11Occlusion::isCovered(X11Connection& connection, xcb_window_t window)
{
    const auto statesAsked = connection.ask(window, "_NET_WM_STATE");
    const auto stackAsked = connection.ask(connection.root(), "_NET_CLIENT_LIST_STACKING");
    const auto self = WindowSurvey(connection, { window }).facts().front();
    const auto states = connection.values(statesAsked);
    const auto stack = connection.values(stackAsked);
    if (!self.isMapped || std::ranges::count(states, connection.atom("_NET_WM_STATE_HIDDEN")) > 0)
        return true;

    const auto place = std::ranges::find(stack, window);
    if (place == stack.end())
        return false;
    QRegion uncovered(self.rect);
    for (const auto& above : WindowSurvey(connection, { place + 1, stack.end() }).facts()) {
        if (above.isMapped && above.isOpaque)
            uncovered -= above.rect;
    }
    return uncovered.isEmpty();
}

} // namespace pobblewig
