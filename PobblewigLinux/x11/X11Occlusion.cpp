#include "PobblewigLinux/x11/X11Occlusion.h"

#include "PobblewigLinux/x11/X11WindowSurvey.h"
#include "PobblewigLinux/x11/X11WindowTree.h"

#include <QRegion>

#include <algorithm>
#include <ranges>

namespace pobblewig {

namespace {

bool hides(const X11WindowFacts& window)
{
    return window.isMapped && window.isOpaque;
}

/// Considers only programs' windows; the server has one of its own for compositors.
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
    const auto self = X11WindowSurvey(connection, { window }).facts().front();
    const auto states = connection.values(statesAsked);
    const auto stack = connection.values(stackAsked);
    const auto top = topmost(connection, treeAsked);
    if (!self.isMapped || std::ranges::count(states, connection.atom("_NET_WM_STATE_HIDDEN")) > 0)
        return true;

    auto selfAndAbove = std::vector(std::ranges::find(stack, window), stack.end());
    selfAndAbove.push_back(top);
    auto facts = X11WindowSurvey(connection, selfAndAbove).facts();
    // A screen locker is in no list of the window manager, but above all the windows that are.
    const auto lid = facts.back();
    facts.pop_back();
    QRegion uncovered(self.rect);
    for (const auto& above : facts | std::views::drop(1)) {
        if (hides(above))
            uncovered -= above.rect;
    }
    if (uncovered.isEmpty())
        return true;
    const auto isUnderLid = hides(lid) && lid.rect.contains(self.rect);
    return isUnderLid && !isInside(connection, window, top);
}

} // namespace pobblewig
