#pragma once

#include "PobblewigLinux/x11/X11Connection.h"

#include <QRect>

namespace pobblewig {

/// Facts about a window. One that has gone is not mapped.
struct X11WindowFacts {
    bool isMapped = false;
    bool isOpaque = false;
    /// In screen coordinates.
    QRect rect;
};

/// Queries all windows before waiting for the first reply, in a single round trip. The replies of
/// each survey must be read.
class X11WindowSurvey {
public:
    X11WindowSurvey(X11Connection& connection, const std::vector<xcb_window_t>& windows);

    std::vector<X11WindowFacts> facts() const;

private:
    struct Question {
        xcb_get_window_attributes_cookie_t attributes;
        xcb_get_geometry_cookie_t geometry;
        xcb_translate_coordinates_cookie_t place;
    };

    X11WindowFacts answer(const Question& question) const;

    xcb_connection_t* m_connection;
    std::vector<Question> m_questions;
};

} // namespace pobblewig
