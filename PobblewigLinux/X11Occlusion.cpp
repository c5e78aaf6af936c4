#include "PobblewigLinux/X11Occlusion.h"

#include "PobblewigLinux/X11WindowTree.h"

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

bool hides(const WindowFacts& window)
{
    return window.isMapped && window.isOpaque;
}

/// Of programs: the server itself has one for what compositors paint.
xcb_window_t topmost(X11Connection& connection, xcb_query_tree_cookie_t asked)
{
    const X11Reply<xcb_query_tree_reply_t> tree(
        xcb_query_tree_reply(connection.get(), asked, nullptr));
    auto top = xcb_window_t(XCB_WINDOW_NONE);
    for (int child = 0; tree && child < xcb_query_tree_children_length(tree.get()); ++child) {
        const auto window = xcb_query_tree_children(tree.get())[child];
        top = X11WindowTree::connectionOf(connection, window) != 0 ? window : top;
    }
    return top;
}

bool isInside(X11Connection& connection, xcb_window_t window, xcb_window_t outer)
{
    while (window != outer && window != XCB_WINDOW_NONE) {
        const X11Reply<xcb_query_tree_reply_t> tree(xcb_query_tree_reply(
            connection.get(), xcb_query_tree(connection.get(), window), nullptr));
        window = tree ? tree->parent : XCB_WINDOW_NONE;
    }
    return window == outer;
}

} // namespace

bool X11Occlusion::isCovered(X11Connection& connection, xcb_window_t window)
{
    const auto statesAsked = connection.ask(window, "_NET_WM_STATE");
    const auto stackAsked = connection.ask(connection.root(), "_NET_CLIENT_LIST_STACKING");
    const auto treeAsked = xcb_query_tree(connection.get(), connection.root());
    const auto self = WindowSurvey(connection, { window }).facts().front();
    const auto states = connection.values(statesAsked);
    const auto stack = connection.values(stackAsked);
    const auto top = topmost(connection, treeAsked);
    if (!self.isMapped || std::ranges::count(states, connection.atom("_NET_WM_STATE_HIDDEN")) > 0)
        return true;

    auto others = std::vector(std::ranges::find(stack, window), stack.end());
    others.push_back(top);
    const auto facts = WindowSurvey(connection, others).facts();
    QRegion uncovered(self.rect);
    for (size_t i = 1; i + 1 < facts.size(); ++i) {
        if (hides(facts[i]))
            uncovered -= facts[i].rect;
    }
    if (uncovered.isEmpty())
        return true;
    // What locks the screen stands in no list of the window manager, but above all that do.
    const auto isUnderTop = hides(facts.back()) && facts.back().rect.contains(self.rect);
    return isUnderTop && !isInside(connection, window, top);
}

} // namespace pobblewig
