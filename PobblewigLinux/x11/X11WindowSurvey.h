#pragma once

#include "PobblewigLinux/x11/X11Connection.h"

#include <QRect>

namespace pobblewig {

/// Of a window that has gone meanwhile: not mapped.
struct X11WindowFacts {
    bool isMapped = false;
    bool isOpaque = false;
    /// On the screen.
    QRect rect;
};

/// Asks about all windows before it waits for the first answer: one round trip in all. Each survey
/// has to be followed by its answers.
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
