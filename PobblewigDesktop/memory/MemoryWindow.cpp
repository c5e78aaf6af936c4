#include "PobblewigDesktop/memory/MemoryWindow.h"

#include "PobblewigDesktop/memory/DaysPage.h"
#include "PobblewigDesktop/memory/MemoryDataPage.h"
#include "PobblewigDesktop/memory/NotesPage.h"
#include "PobblewigDesktop/memory/ObservationsPage.h"
#include "PobblewigDesktop/memory/PatternsPage.h"
#include "PobblewigDesktop/memory/PromptPage.h"
#include "PobblewigDesktop/memory/ReferencePage.h"

namespace pobblewig {

namespace {

constexpr QSize usualSize(900, 680);

template <typename Kind>
PageEntry entry(const char* id, const QString& title, Icons::Name icon, AppCoordinator& from,
    const Calendar& calendar)
{
    return { QString::fromLatin1(id), title, icon, [&from, calendar]() -> std::unique_ptr<Page> {
                return std::make_unique<Kind>(from, calendar);
            } };
}

PageEntries entries(AppCoordinator& from, const Calendar& calendar)
{
    using enum Icons::Name;
    return {
        entry<NotesPage>("notes", MemoryWindow::tr("Notes"), document, from, calendar),
        entry<ReferencePage>("reference", MemoryWindow::tr("Reference"), folder, from, calendar),
        entry<DaysPage>("days", MemoryWindow::tr("Days"), clock, from, calendar),
        entry<ObservationsPage>(
            "observations", MemoryWindow::tr("Observations"), list, from, calendar),
        entry<PatternsPage>("patterns", MemoryWindow::tr("Patterns"), pattern, from, calendar),
        entry<PromptPage>("prompt", MemoryWindow::tr("What the model sees"), eye, from, calendar),
        entry<MemoryDataPage>("data", MemoryWindow::tr("Export and delete"), save, from, calendar),
    };
}

} // namespace

MemoryWindow::MemoryWindow(AppCoordinator& coordinator, const Calendar& calendar)
    : PageWindow(tr("Pobblewig Memory"), entries(coordinator, calendar))
{
    resize(usualSize);
}

} // namespace pobblewig
