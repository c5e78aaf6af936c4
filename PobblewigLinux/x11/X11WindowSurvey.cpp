#include "PobblewigLinux/x11/X11WindowSurvey.h"

namespace pobblewig {

X11WindowSurvey::X11WindowSurvey(
    X11Connection& connection, const std::vector<xcb_window_t>& windows)
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

std::vector<X11WindowFacts> X11WindowSurvey::facts() const
{
    std::vector<X11WindowFacts> facts;
    facts.reserve(m_questions.size());
    for (const auto& question : m_questions)
        facts.push_back(answer(question));
    return facts;
}

X11WindowFacts X11WindowSurvey::answer(const Question& question) const
{
    constexpr int depthWithAlpha = 32;
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

} // namespace pobblewig
