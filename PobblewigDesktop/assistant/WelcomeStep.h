#pragma once

#include "PobblewigDesktop/pages/FormPage.h"

namespace pobblewig {

/// The buddy introduces itself.
class WelcomeStep : public FormPage {
    Q_OBJECT

public:
    explicit WelcomeStep(std::unique_ptr<QWidget> buddy);

    void showState(const PublishedState&) override { }
};

} // namespace pobblewig
