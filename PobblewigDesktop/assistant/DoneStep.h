#pragma once

#include "PobblewigDesktop/pages/FormPage.h"

#include <QKeySequence>

namespace pobblewig {

/// How to begin.
class DoneStep : public FormPage {
    Q_OBJECT

public:
    /// The keys are those that call the chat, or none.
    explicit DoneStep(const std::function<QKeySequence()>& chatKeys);

    void showState(const PublishedState&) override { }
};

} // namespace pobblewig
