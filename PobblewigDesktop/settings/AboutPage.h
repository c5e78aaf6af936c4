#pragma once

#include "PobblewigDesktop/pages/FormPage.h"

namespace pobblewig {

/// What this program is, its version, and whose work it stands on.
class AboutPage : public FormPage {
    Q_OBJECT

public:
    AboutPage();

    void showState(const PublishedState&) override { }
};

} // namespace pobblewig
