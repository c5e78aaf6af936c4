#include "PobblewigLinux/x11/X11WindowTree.h"

#include <unistd.h>
#include <xcb/shape.h>

#include <algorithm>
#include <span>

namespace pobblewig {

namespace {

constexpr int depthWithAlpha = 32;

std::span<const xcb_window_t> childrenOf(const xcb_query_tree_reply_t& tree)
{
    return { xcb_query_tree_children(&tree), std::size_t(xcb_query_tree_children_length(&tree)) };
}

/// Maps a top-level window to the program's window inside.
using Clients = std::map<xcb_window_t, xcb_window_t>;

bool hasShapes(xcb_connection_t* connection)
{
    const auto* extension = xcb_get_extension_data(connection, &xcb_shape_id);
    return extension && extension->present;
}

/// Climbs from all windows of the window manager's list at once, one level for each round trip.
Clients clients(X11Connection& connection)
{
    struct Climb {
        xcb_window_t client;
        xcb_window_t reached;
    };
    const auto managed = connection.values(connection.root(), "_NET_CLIENT_LIST_STACKING");
    std::vector<Climb> climbs;
    climbs.reserve(managed.size());
    for (const auto client : managed)
        climbs.push_back({ client, client });
    Clients clients;
    while (!climbs.empty()) {
        std::vector<xcb_query_tree_cookie_t> questions;
        questions.reserve(climbs.size());
        for (const auto& climb : climbs)
            questions.push_back(xcb_query_tree(connection.get(), climb.reached));
        std::vector<Climb> higher;
        for (std::size_t index = 0; index < climbs.size(); ++index) {
            const auto& [client, reached] = climbs[index];
            const X11Reply<xcb_query_tree_reply_t> reply(
                xcb_query_tree_reply(connection.get(), questions[index], nullptr));
            if (reply && reply->parent == connection.root())
                clients[reached] = client;
            else if (reply && reply->parent != XCB_WINDOW_NONE)
                higher.push_back({ client, reply->parent });
        }
        climbs = std::move(higher);
    }
    return clients;
}

struct Question {
    xcb_window_t window;
    xcb_get_window_attributes_cookie_t attributes;
    xcb_get_geometry_cookie_t geometry;
    xcb_shape_get_rectangles_cookie_t shape = {};
};

/// Sends all queries at once; the replies are read later.
std::vector<Question> questionsOfTopLevels(X11Connection& connection)
{
    auto* const xcb = connection.get();
    const X11Reply<xcb_query_tree_reply_t> tree(
        xcb_query_tree_reply(xcb, xcb_query_tree(xcb, connection.root()), nullptr));
    if (!tree)
        return {};
    const auto windows = childrenOf(*tree);
    std::vector<Question> questions;
    questions.reserve(windows.size());
    for (const auto window : windows) {
        questions.push_back(
            { window, xcb_get_window_attributes(xcb, window), xcb_get_geometry(xcb, window) });
        if (hasShapes(xcb))
            questions.back().shape = xcb_shape_get_rectangles(xcb, window, XCB_SHAPE_SK_BOUNDING);
    }
    return questions;
}

QRegion shapeOf(xcb_connection_t* connection, const Question& question, const QRect& whole)
{
    if (!hasShapes(connection))
        return whole;
    const X11Reply<xcb_shape_get_rectangles_reply_t> reply(
        xcb_shape_get_rectangles_reply(connection, question.shape, nullptr));
    if (!reply)
        return whole;
    QRegion shape;
    const auto* first = xcb_shape_get_rectangles_rectangles(reply.get());
    const auto count = std::size_t(xcb_shape_get_rectangles_rectangles_length(reply.get()));
    for (const auto& part : std::span(first, count))
        shape += QRect(part.x, part.y, part.width, part.height);
    return shape;
}

std::optional<X11TopLevel> answer(xcb_connection_t* connection, const Question& question)
{
    const X11Reply<xcb_get_window_attributes_reply_t> attributes(
        xcb_get_window_attributes_reply(connection, question.attributes, nullptr));
    const X11Reply<xcb_get_geometry_reply_t> geometry(
        xcb_get_geometry_reply(connection, question.geometry, nullptr));
    const auto border = geometry ? geometry->border_width : 0;
    const auto size =
        geometry ? QSize(geometry->width + 2 * border, geometry->height + 2 * border) : QSize();
    const auto shape = shapeOf(connection, question, { { -border, -border }, size });
    if (!attributes || !geometry || attributes->map_state != XCB_MAP_STATE_VIEWABLE
        || attributes->_class != XCB_WINDOW_CLASS_INPUT_OUTPUT)
        return std::nullopt;
    return X11TopLevel {
        .window = question.window,
        .client = question.window,
        .frame = { { geometry->x, geometry->y }, size },
        .border = border,
        .depth = geometry->depth,
        .shape = shape.translated(border, border),
    };
}

} // namespace

bool X11TopLevel::isOpaque() const
{
    return depth != depthWithAlpha && shape == QRect(QPoint(), frame.size());
}

X11TopLevel X11WindowTree::rootWindow(X11Connection& connection)
{
    const auto root = connection.root();
    const X11Reply<xcb_get_geometry_reply_t> geometry(xcb_get_geometry_reply(
        connection.get(), xcb_get_geometry(connection.get(), root), nullptr));
    if (!geometry)
        return {};
    const QRect frame(0, 0, geometry->width, geometry->height);
    return { .window = root, .frame = frame, .depth = geometry->depth, .shape = frame };
}

std::vector<X11TopLevel> X11WindowTree::topLevels(X11Connection& connection)
{
    const auto questions = questionsOfTopLevels(connection);
    const auto framed = clients(connection);
    std::vector<X11TopLevel> topLevels;
    topLevels.reserve(questions.size());
    for (const auto& question : questions) {
        auto topLevel = answer(connection.get(), question);
        if (!topLevel)
            continue;
        if (const auto client = framed.find(topLevel->window); client != framed.end())
            topLevel->client = client->second;
        topLevels.push_back(*std::move(topLevel));
    }
    return topLevels;
}

std::vector<X11Inside> X11WindowTree::withDescendants(
    X11Connection& connection, xcb_window_t window)
{
    auto* const xcb = connection.get();
    std::vector<X11Inside> found { { .window = window } };
    for (std::size_t index = 0; index < found.size(); ++index) {
        const auto inner = found[index].window;
        const auto treeCookie = xcb_query_tree(xcb, inner);
        const auto placeCookie = xcb_translate_coordinates(xcb, inner, connection.root(), 0, 0);
        const X11Reply<xcb_query_tree_reply_t> tree(xcb_query_tree_reply(xcb, treeCookie, nullptr));
        const X11Reply<xcb_translate_coordinates_reply_t> place(
            xcb_translate_coordinates_reply(xcb, placeCookie, nullptr));
        if (!tree || !place)
            continue;
        found[index].origin = { place->dst_x, place->dst_y };
        const auto children = childrenOf(*tree);
        found.reserve(found.size() + children.size());
        for (const auto child : children)
            found.push_back({ .window = child });
    }
    return found;
}

bool X11WindowTree::isOnScreen(X11Connection& connection, xcb_window_t window)
{
    const X11Reply<xcb_get_window_attributes_reply_t> attributes(xcb_get_window_attributes_reply(
        connection.get(), xcb_get_window_attributes(connection.get(), window), nullptr));
    return attributes && attributes->map_state == XCB_MAP_STATE_VIEWABLE;
}

std::optional<QRect> X11WindowTree::content(X11Connection& connection, xcb_window_t client)
{
    auto* const xcb = connection.get();
    const auto geometryCookie = xcb_get_geometry(xcb, client);
    const auto placeCookie = xcb_translate_coordinates(xcb, client, connection.root(), 0, 0);
    const X11Reply<xcb_get_geometry_reply_t> geometry(
        xcb_get_geometry_reply(xcb, geometryCookie, nullptr));
    const X11Reply<xcb_translate_coordinates_reply_t> place(
        xcb_translate_coordinates_reply(xcb, placeCookie, nullptr));
    if (!geometry || !place)
        return std::nullopt;
    const QRect whole(place->dst_x, place->dst_y, geometry->width, geometry->height);
    const auto shadow = connection.values(client, "_GTK_FRAME_EXTENTS");
    if (shadow.size() != 4)
        return whole;
    const auto inner =
        whole.adjusted(int(shadow[0]), int(shadow[2]), -int(shadow[1]), -int(shadow[3]));
    return inner.isEmpty() ? whole : inner;
}

QString X11WindowTree::title(X11Connection& connection, xcb_window_t client)
{
    constexpr std::uint32_t longest = 1024;
    for (const auto property : { connection.atom("_NET_WM_NAME"), xcb_atom_t(XCB_ATOM_WM_NAME) }) {
        const auto cookie =
            xcb_get_property(connection.get(), false, client, property, XCB_ATOM_ANY, 0, longest);
        const X11Reply<xcb_get_property_reply_t> reply(
            xcb_get_property_reply(connection.get(), cookie, nullptr));
        if (!reply || reply->format != 8 || reply->value_len == 0)
            continue;
        const QByteArrayView text(
            static_cast<char*>(xcb_get_property_value(reply.get())), reply->value_len);
        return reply->type == XCB_ATOM_STRING ? QString::fromLatin1(text) : QString::fromUtf8(text);
    }
    return {};
}

bool X11WindowTree::isDesktop(X11Connection& connection, xcb_window_t client)
{
    const auto types = connection.values(client, "_NET_WM_WINDOW_TYPE");
    return std::ranges::count(types, connection.atom("_NET_WM_WINDOW_TYPE_DESKTOP")) > 0;
}

std::optional<std::uint32_t> X11WindowTree::processID(
    X11Connection& connection, xcb_window_t client)
{
    const auto values = connection.values(client, "_NET_WM_PID");
    return values.empty() ? std::nullopt : std::optional(values.front());
}

std::uint32_t X11WindowTree::connectionOf(X11Connection& connection, xcb_window_t window)
{
    return window & ~xcb_get_setup(connection.get())->resource_id_mask;
}

bool X11WindowTree::isOurs(X11Connection& connection, xcb_window_t window)
{
    return connectionOf(connection, window) == xcb_get_setup(connection.get())->resource_id_base
        || processID(connection, window) == std::uint32_t(getpid());
}

} // namespace pobblewig
