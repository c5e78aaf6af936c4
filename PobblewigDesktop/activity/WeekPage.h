#pragma once

#include "PobblewigDesktop/pages/FormPage.h"
#include "activity/ActivityDesk.h"

#include <QDate>

namespace pobblewig {

class ChartPane;
class DateSteps;

/// What was in front in a week, day by day.
class WeekPage : public FormPage {
    Q_OBJECT

public:
    /// `desk` must outlive the page.
    explicit WeekPage(ActivityDesk& desk);

    void showState(const PublishedState& state) override;
    void setTheme(const Palette& palette) override;

private:
    void showWeek();

    ActivityDesk& m_desk;
    /// 0 is this week, -1 the one before.
    int m_week = 0;
    DateSteps* m_steps;
    ChartPane* m_days;
    ChartPane* m_categories;
    ChartPane* m_applications;
};

} // namespace pobblewig
