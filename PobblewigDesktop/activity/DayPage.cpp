#include "PobblewigDesktop/activity/DayPage.h"

#include "PobblewigDesktop/activity/ActivityCharts.h"
#include "PobblewigDesktop/activity/DateSteps.h"

#include <QHBoxLayout>
#include <QMessageBox>
#include <QPushButton>

#include <algorithm>

namespace pobblewig {

namespace {

using namespace std::chrono_literals;

constexpr int gap = 8;

} // namespace

DayPage::DayPage(ActivityDesk& desk)
    : FormPage(tr("Day"))
    , m_desk(desk)
    , m_steps(new DateSteps({ tr("Previous day"), tr("Next day"), tr("Today") }))
    , m_line(new ChartPane(tr("From midnight to midnight")))
    , m_categories(new ChartPane(tr("By category")))
    , m_applications(new ChartPane(tr("By application")))
{
    add(*m_steps);
    add(*m_line);
    add(*m_categories);
    add(*m_applications);
    addExplanation(tr("The application in front is recorded while Pobblewig runs, its name and the "
                      "time only. Gaps are pauses, a locked screen and what is excluded; low parts "
                      "are times without "
                      "input."));
    addDeletion();
    connect(m_steps, &DateSteps::stepped, this, &DayPage::step);
    connect(m_steps, &DateSteps::presentRequested, this, [this] { show(today()); });
}

void DayPage::showState(const PublishedState&)
{
    showDay();
}

void DayPage::setTheme(const Palette& palette)
{
    m_steps->setTheme(palette);
    for (auto* const pane : { m_line, m_categories, m_applications })
        pane->setTheme(palette);
}

void DayPage::addDeletion()
{
    addHeading(tr("Delete"));
    addGap();
    m_deleteHour = deletion(tr("The last hour…"), [this] {
        const auto span = lastHour();
        askToDelete(tr("Delete the activity of the last hour?"), span,
            [this, span] { m_desk.deleteActivity(span.from, span.to); });
    });
    m_deleteDay = deletion(tr("This day…"), [this] {
        const auto day =
            ActivityDayLogic::day({}, m_day.isNull() ? today() : m_day, m_desk.calendar());
        const auto name = m_desk.calendar().locale.toString(day.day, QLocale::LongFormat);
        askToDelete(tr("Delete the activity of %1?").arg(name), { day.start, day.end },
            [this, day] { m_desk.deleteActivity(day.start, day.end); });
    });
    m_deleteAll = deletion(tr("Everything…"), [this] {
        askToDelete(
            tr("Delete all recorded activity?"), all(), [this] { m_desk.deleteActivityHistory(); });
    });
    auto* const buttons = new QWidget;
    auto* const row = new QHBoxLayout(buttons);
    row->setContentsMargins(0, 0, 0, gap);
    row->setSpacing(gap);
    for (auto* const button : { m_deleteHour, m_deleteDay, m_deleteAll })
        row->addWidget(button);
    row->addStretch(1);
    add(*buttons);
}

QPushButton* DayPage::deletion(const QString& text, std::function<void()> act)
{
    auto* const button = new QPushButton(text);
    button->setAutoDefault(false);
    button->setAccessibleDescription(tr("Delete"));
    connect(button, &QPushButton::clicked, this, std::move(act));
    return button;
}

void DayPage::step(int direction)
{
    show((m_day.isNull() ? today() : m_day).addDays(direction));
}

void DayPage::show(QDate day)
{
    m_day = day < today() ? day : QDate();
    showDay();
}

void DayPage::showDay()
{
    const auto sessions = m_desk.sessions();
    const auto calendar = m_desk.calendar();
    const auto day = ActivityDayLogic::day(sessions, m_day.isNull() ? today() : m_day, calendar);
    m_steps->setShown(calendar.locale.toString(day.day, QLocale::LongFormat), m_day.isNull());
    m_line->setContents(ActivityCharts::line(day, calendar));
    m_categories->setContents(ActivityCharts::categories({ day }));
    m_applications->setContents(ActivityCharts::applications({ day }));
    m_categories->setHidden(day.spans.empty());
    m_applications->setHidden(day.spans.empty());
    const auto [from, to] = lastHour();
    m_deleteHour->setDisabled(ActivityDayLogic::between(sessions, from, to).empty());
    m_deleteDay->setDisabled(day.spans.empty());
    m_deleteAll->setDisabled(sessions.empty());
}

QDate DayPage::today() const
{
    return m_desk.calendar().day(m_desk.now());
}

DayPage::Span DayPage::lastHour() const
{
    return { m_desk.now() - 1h, m_desk.now() };
}

DayPage::Span DayPage::all() const
{
    Span span { m_desk.now(), m_desk.now() + 24h };
    for (const auto& session : m_desk.sessions())
        span.from = std::min(span.from, session.startedAt);
    return span;
}

void DayPage::askToDelete(const QString& question, Span span, std::function<void()> act)
{
    double seconds = 0;
    for (const auto& part : ActivityDayLogic::between(m_desk.sessions(), span.from, span.to))
        seconds += part.seconds();
    auto* const box = new QMessageBox(
        QMessageBox::NoIcon, tr("Delete activity"), question, QMessageBox::Cancel, this);
    box->setAttribute(Qt::WA_DeleteOnClose);
    box->setInformativeText(
        tr("The record of %1 will be gone for good. Your rules and what Pobblewig has noted about "
           "you stay.")
            .arg(ActivityCharts::duration(seconds)));
    auto* const agreed = box->addButton(tr("Delete"), QMessageBox::DestructiveRole);
    box->setDefaultButton(QMessageBox::Cancel);
    connect(agreed, &QAbstractButton::clicked, this, std::move(act));
    box->open();
}

} // namespace pobblewig
