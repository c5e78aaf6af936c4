#include "PobblewigDesktop/diagnostics/DiagnosticsWindow.h"

#include "PobblewigDesktop/diagnostics/FilesPage.h"
#include "PobblewigDesktop/diagnostics/OverviewPage.h"
#include "PobblewigDesktop/diagnostics/RequestsPage.h"
#include "PobblewigDesktop/diagnostics/RulesAndToolsPage.h"
#include "PobblewigDesktop/pages/KeysPage.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QPushButton>

namespace pobblewig {

namespace {

PageEntries entries(const DiagnosticsDesk& desk)
{
    using enum Icons::Name;
    return {
        { QStringLiteral("overview"), DiagnosticsWindow::tr("Overview"), info,
            [desk] { return std::make_unique<OverviewPage>(desk); } },
        { QStringLiteral("models"), DiagnosticsWindow::tr("Models"), chip,
            [desk] { return std::make_unique<RequestsPage>(desk); } },
        { QStringLiteral("tools"), DiagnosticsWindow::tr("Rules and tools"), check,
            [desk] { return std::make_unique<RulesAndToolsPage>(desk); } },
        { QStringLiteral("files"), DiagnosticsWindow::tr("Files"), folder,
            [desk] { return std::make_unique<FilesPage>(desk); } },
        { QStringLiteral("keys"), DiagnosticsWindow::tr("Keyboard"), list,
            [] { return std::make_unique<KeysPage>(DiagnosticsWindow::tr("Keyboard")); } },
    };
}

} // namespace

DiagnosticsWindow::DiagnosticsWindow(const DiagnosticsDesk& desk)
    : PageWindow(tr("Pobblewig Diagnostics"), entries(desk))
{
    auto* const copy = new QPushButton(tr("Copy report"));
    copy->setAutoDefault(false);
    copy->setToolTip(tr("Without messages, notes, keys and names of windows"));
    copy->setAccessibleDescription(copy->toolTip());
    connect(copy, &QPushButton::clicked, this, [desk] {
        QGuiApplication::clipboard()->setText(DiagnosticsReport::text(desk.snapshot()));
    });
    addAbovePages(*copy);
}

} // namespace pobblewig
