#pragma once

#include "PobblewigDesktop/pages/FormPage.h"

namespace pobblewig {

/// The keys of the chat.
class KeysPage : public FormPage {
    Q_OBJECT

public:
    explicit KeysPage(const QString& title);

    void showState(const PublishedState&) override { }
};

} // namespace pobblewig
