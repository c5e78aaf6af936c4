#include "PobblewigDesktop/settings/ConfirmationsPage.h"

#include "PobblewigDesktop/controls/Switch.h"
#include "PobblewigDesktop/pages/FieldRow.h"
#include "settings/ActionAutonomy.h"

namespace pobblewig {

ConfirmationsPage::ConfirmationsPage(AppCoordinator& coordinator, const Calendar& calendar)
    : FormPage(tr("Confirmations"))
    , m_editor(coordinator)
    , m_calendar(calendar)
{
    addExplanation(tr("The assistant proposes, you confirm. What you have allowed always is done "
                      "without a question until you switch the question on again."));
    addClass(ActionAutonomy::settingsChange.toString(), tr("Ask before changing a setting"),
        tr("Ordinary settings only. What guards your data always asks."));
    addClass(ActionAutonomy::calendarWrite.toString(), tr("Ask before adding to the calendar"),
        tr("New events in your calendars."));
    addClass(ActionAutonomy::reminderWrite.toString(), tr("Ask before adding a reminder"),
        tr("New reminders in your lists."));
    addHeading(tr("Always asks"));
    addExplanation(
        tr("Forgetting something, new check-in rules, shared folders, excluded apps, how "
           "long history is kept, and connections."));
    connect(&m_editor, &SettingsEditor::undoOffered, this, &Page::undoOffered);
}

void ConfirmationsPage::showState(const PublishedState& state)
{
    const auto& settings = state.of<SettingsState>().settings;
    for (const auto& row : m_rows) {
        row.asks->showOn(ActionAutonomy::requiresConfirmation(row.actionClass, settings));
        showSince(row, settings);
    }
}

void ConfirmationsPage::setTheme(const Palette& palette)
{
    for (const auto& row : m_rows)
        row.asks->setTheme(palette);
}

void ConfirmationsPage::addClass(
    const QString& actionClass, const QString& name, const QString& scope)
{
    auto* const asks = new Switch;
    auto* const row = new FieldRow({ name, scope }, *asks);
    m_rows.push_back({ actionClass, name, scope, asks, row });
    connect(asks, &Switch::switched, this,
        [this, row = m_rows.back()](bool isOn) { setAsks(row, isOn); });
    add(*row);
}

void ConfirmationsPage::setAsks(const Row& row, bool asks)
{
    const auto done = asks ? tr("It asks again.") : tr("It no longer asks.");
    m_editor.change(done, [&](AppSettings& settings) {
        ActionAutonomy::setAsks(settings, row.actionClass, asks, systemNow());
    });
}

void ConfirmationsPage::showSince(const Row& row, const AppSettings& settings)
{
    const auto since = ActionAutonomy::allowedSince(settings, row.actionClass);
    row.row->setExplanation(
        since ? tr("%1 Allowed since %2.").arg(row.scope, m_calendar.moment(*since)) : row.scope);
}

} // namespace pobblewig
