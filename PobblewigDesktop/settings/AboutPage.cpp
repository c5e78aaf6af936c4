#include "PobblewigDesktop/settings/AboutPage.h"

#include "PobblewigDesktop/controls/PanelStyle.h"
#include "PobblewigDesktop/controls/WrappedLabel.h"

#include <QCoreApplication>
#include <QSysInfo>

#include <array>

namespace pobblewig {

namespace {

struct Library {
    const char* name;
    const char* licence;
};

/// What the program is linked to or runs, apart from what only builds and tests it.
constexpr std::array libraries {
    Library { "Qt", "LGPL 3" },
    Library { "QCoro", "MIT" },
    Library { "QtKeychain", "BSD" },
    Library { "tl::expected", "CC0" },
    Library { "libcurl", "curl" },
    Library { "md4c", "MIT" },
    Library { "simdjson", "Apache 2.0" },
    Library { "RapidJSON", "MIT" },
    Library { "libxcb, libxkbcommon, libwayland", "MIT" },
    Library { "libsecret, libcanberra", "LGPL 2.1" },
    Library { "poppler-utils", "GPL 2 or 3" },
    Library { "Noto Color Emoji", "OFL" },
};

QWidget& line(const Library& library)
{
    const auto text =
        QStringLiteral("%1 · %2").arg(QLatin1String(library.name), QLatin1String(library.licence));
    auto* const line = new WrappedLabel(text);
    PanelStyle::setRole(*line, QStringLiteral("detail"));
    return *line;
}

} // namespace

AboutPage::AboutPage()
    : FormPage(tr("About"))
{
    addExplanation(tr("Pobblewig %1, a private companion for your desktop. What it knows about you "
                      "stays in plain files on this computer.")
                       .arg(QCoreApplication::applicationVersion()));
    addExplanation(tr("Qt %1 on %2").arg(QLatin1String(qVersion()), QSysInfo::prettyProductName()));
    addHeading(tr("Libraries and their licences"));
    for (const auto& library : libraries)
        add(line(library));
}

} // namespace pobblewig
