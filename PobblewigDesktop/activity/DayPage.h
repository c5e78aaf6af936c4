#pragma once

#include "PobblewigDesktop/pages/FormPage.h"
#include "activity/ActivityDayLogic.h"
#include "activity/ActivityDesk.h"

class QPushButton;

namespace pobblewig {

class ChartPane;
class DateSteps;

/// What was in front on a day, and for how long.
class DayPage : public FormPage {
    Q_OBJECT

public:
    /// `desk` must outlive the page.
    explicit DayPage(ActivityDesk& desk);

    void showState(const PublishedState& state) override;
    void setTheme(const Palette& palette) override;

private:
    struct Span {
        TimePoint from;
        TimePoint to;
    };

    void addDeletion();
    QPushButton* deletion(const QString& text, std::function<void()> act);
    void step(int direction);
    void show(QDate day);
    void showDay();
    QDate today() const;
    Span lastHour() const;
    Span all() const;
    void askToDelete(const QString& question, Span span, std::function<void()> act);

    ActivityDesk& m_desk;
    /// Null for today, whichever day that is.
    QDate m_day;
    DateSteps* m_steps;
    ChartPane* m_line;
    ChartPane* m_categories;
    ChartPane* m_applications;
    QPushButton* m_deleteHour = nullptr;
    QPushButton* m_deleteDay = nullptr;
    QPushButton* m_deleteAll = nullptr;
};

} // namespace pobblewig
