#pragma once

#include "AppCoordinator.h"
#include "PobblewigDesktop/pages/FormPage.h"

namespace pobblewig {

class FieldRow;
class Switch;

/// The rules by which Pobblewig checks in, each with a switch and what it would do now.
class RulesPage : public FormPage {
    Q_OBJECT

public:
    /// `coordinator` must outlive the page.
    explicit RulesPage(AppCoordinator& coordinator);

    void showState(const PublishedState& state) override;
    void setTheme(const Palette& palette) override;

private:
    struct Row {
        Switch* isOn;
        FieldRow* row;
    };

    QWidget& offer();
    void showRules(const std::vector<AccountabilityRule>& rules);
    Row line(const AccountabilityRule& rule);
    void deleteRule(const AccountabilityRule& rule);

    AppCoordinator& m_coordinator;
    std::vector<QUuid> m_shown;
    std::vector<Row> m_rows;
    QWidget* m_list;
    QWidget* m_offer;
    Palette m_palette;
};

} // namespace pobblewig
