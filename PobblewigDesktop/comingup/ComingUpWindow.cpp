#include "PobblewigDesktop/comingup/ComingUpWindow.h"

#include "PobblewigDesktop/comingup/ComingUpPage.h"

namespace pobblewig {

namespace {

PageEntries entries(const ReferenceMemoryStore& reference, const Moment& moment)
{
    return { { QStringLiteral("days"), ComingUpWindow::tr("Coming up"), Icons::Name::week,
        [&reference, moment] { return std::make_unique<ComingUpPage>(reference, moment); } } };
}

} // namespace

ComingUpWindow::ComingUpWindow(const ReferenceMemoryStore& reference, const Moment& moment)
    : PageWindow(tr("Coming up"), entries(reference, moment))
{
}

} // namespace pobblewig
