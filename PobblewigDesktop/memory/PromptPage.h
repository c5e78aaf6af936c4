#pragma once

#include "AppCoordinator.h"
#include "PobblewigDesktop/memory/EntryPage.h"

namespace pobblewig {

/// What a request would tell the model now, part by part, with its size.
class PromptPage : public EntryPage {
    Q_OBJECT

public:
    /// `coordinator` must outlive the page.
    PromptPage(AppCoordinator& coordinator, const Calendar& calendar);

private:
    struct Part {
        QString title;
        QString text;
        int tokens = 0;
    };

    void list() override;
    void showSelected() override;
    void add(const QString& title, const QString& text);
    void add(const std::vector<PromptSection>& sections);
    void addConversation();
    void addFunctions();
    void copyAll() const;

    AppCoordinator& m_coordinator;
    std::vector<Part> m_parts;
};

} // namespace pobblewig
