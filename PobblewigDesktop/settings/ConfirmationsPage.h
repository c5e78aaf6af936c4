#pragma once

#include "PobblewigDesktop/pages/FormPage.h"
#include "PobblewigDesktop/pages/SettingsEditor.h"

namespace pobblewig {

class FieldRow;
class Switch;

/// What the assistant asks before it does something, class by class: what "Allow always" permits,
/// since when, and what asks in any case.
class ConfirmationsPage : public FormPage {
    Q_OBJECT

public:
    /// `coordinator` must outlive the page.
    ConfirmationsPage(AppCoordinator& coordinator, const Calendar& calendar);

    void showState(const PublishedState& state) override;
    void setTheme(const Palette& palette) override;

private:
    struct Row {
        QString actionClass;
        QString name;
        QString scope;
        Switch* asks;
        FieldRow* row;
    };

    void addClass(const QString& actionClass, const QString& name, const QString& scope);
    void setAsks(const Row& row, bool asks);
    void showSince(const Row& row, const AppSettings& settings);

    SettingsEditor m_editor;
    Calendar m_calendar;
    std::vector<Row> m_rows;
};

} // namespace pobblewig
