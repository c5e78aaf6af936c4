#include "wire/KeySafetyFeature.h"

#include "foundation/FileOperations.h"
#include "foundation/PrivateFiles.h"
#include "foundation/ThisComputer.h"
#include "settings/Environment.h"

#include <QCoreApplication>
#include <QFileInfo>

#include <algorithm>

namespace pobblewig {

namespace {

struct Texts {
    Q_DECLARE_TR_FUNCTIONS(KeySafetyFeature)
};

bool isKey(const Environment::value_type& variable)
{
    const auto& [name, value] = variable;
    const auto hasWord = [&](QStringView word) { return name.contains(word); };
    return !value.isEmpty()
        && (hasWord(u"KEY") || hasWord(u"TOKEN") || hasWord(u"CREDENTIAL") || hasWord(u"SECRET"));
}

bool sendsKeyInTheClear(const LLMConfiguration& model)
{
    const auto hasKey = !model.apiKey.isEmpty() || model.sessionToken;
    return hasKey && model.baseURL.scheme() == u"http" && !isThisComputer(model.baseURL.host());
}

} // namespace

KeySafetyFeature::KeySafetyFeature(QString environmentFile)
    : m_environmentFile(std::move(environmentFile))
{
}

void KeySafetyFeature::start()
{
    if (m_environmentFile.isEmpty())
        return;
    const auto holdsKey = std::ranges::any_of(EnvironmentFile::read(m_environmentFile), isKey);
    if (holdsKey && PrivateFiles::isReadableByOthers(m_environmentFile))
        warn(Texts::tr("The key in %1 could be read by other users of this computer. The file is "
                       "private now; if you share the computer, replace the key.")
                 .arg(m_environmentFile));
    const auto directory = QFileInfo(m_environmentFile).path();
    FileOperations().makePath(directory);
    PrivateFiles::tighten(directory);
}

void KeySafetyFeature::publish(PublishedState& state) const
{
    state.set(KeySafetyState { m_warnings });
}

void KeySafetyFeature::noteUse(const LLMConfiguration& model)
{
    if (sendsKeyInTheClear(model))
        warn(Texts::tr("Your key and your conversation travel to %1 without encryption. Use an "
                       "address that begins with https.")
                 .arg(model.baseURL.host()));
}

void KeySafetyFeature::warn(const QString& warning)
{
    if (m_warnings.contains(warning))
        return;
    m_warnings.append(warning);
    changed();
}

} // namespace pobblewig
