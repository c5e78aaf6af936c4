#pragma once

#include "PobblewigLinux/x11/X11Connection.h"
#include "presence/WindowActivating.h"

namespace pobblewig {

/// Activates windows under X11 as task lists and pagers do, on behalf of the user.
class X11WindowActivation : public WindowActivating {
public:
    explicit X11WindowActivation(X11Connection& connection);

    void activate(quintptr window) override;

private:
    X11Connection& m_connection;
};

} // namespace pobblewig
