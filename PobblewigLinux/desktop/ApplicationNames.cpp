#include "PobblewigLinux/desktop/ApplicationNames.h"

#include "PobblewigLinux/desktop/ApplicationIdentifiers.h"
#include "foundation/Text.h"

namespace pobblewig {

namespace {

/// The names reach a model and the user, so they must not break a line or change its direction.
QString tidied(QString text)
{
    constexpr int longest = 100;
    text.removeIf([](QChar c) {
        return c.category() == QChar::Other_Format
            || (c.category() == QChar::Other_Control && !c.isSpace());
    });
    return Text::firstCharacters(text.simplified(), longest);
}

/// The first known identifier.
std::optional<QString> identifier(const QStringList& names)
{
    for (const auto& name : names) {
        if (auto known = ApplicationIdentifiers::identifier(name))
            return known;
    }
    return std::nullopt;
}

} // namespace

ApplicationNames::ApplicationNames(DesktopEntries entries)
    : m_entries(std::move(entries))
{
}

std::optional<FrontmostApp> ApplicationNames::application(const WindowIdentity& window)
{
    if (window != m_window) {
        m_application = lookUp(window);
        m_window = window;
    }
    return m_application;
}

std::optional<FrontmostApp> ApplicationNames::lookUp(const WindowIdentity& window)
{
    const auto entry = m_entries.find(window);
    const auto id = entry ? entry->id : QString();
    QStringList names { window.applicationID, window.windowClass, id, window.instance };
    names.removeAll(QString());
    if (names.isEmpty())
        return std::nullopt;

    const auto& spoken = window.windowClass.isEmpty() ? names.front() : window.windowClass;
    const auto& unknown = id.isEmpty() ? names.front() : id;
    FrontmostApp application {
        .name = tidied(entry ? entry->name : spoken),
        .bundleIdentifier = tidied(identifier(names).value_or(unknown)),
    };
    if (application.name.isEmpty() || application.bundleIdentifier.isEmpty())
        return std::nullopt;
    return application;
}

} // namespace pobblewig
