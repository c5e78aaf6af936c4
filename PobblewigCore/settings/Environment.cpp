#include "settings/Environment.h"

#include <QFile>
#include <QFileInfo>
#include <QProcessEnvironment>
#include <QStandardPaths>

#include <algorithm>

namespace pobblewig {

namespace {

bool isLetter(QChar c)
{
    return (c >= u'A' && c <= u'Z') || (c >= u'a' && c <= u'z') || c == u'_';
}

bool isName(const QString& text)
{
    const auto fits = [](QChar c) { return isLetter(c) || (c >= u'0' && c <= u'9'); };
    return !text.isEmpty() && isLetter(text.front()) && std::ranges::all_of(text, fits);
}

bool isBlank(QChar c)
{
    return c == u' ' || c == u'\t' || c == u'\r';
}

QString withoutTrailingBlanks(QString text)
{
    while (!text.isEmpty() && isBlank(text.back()))
        text.chop(1);
    return text;
}

class EnvironmentReader {
public:
    explicit EnvironmentReader(QStringView text)
        : m_rest(text)
    {
    }

    Environment read()
    {
        Environment environment;
        while (skip([](QChar c) { return isBlank(c) || c == u'\n'; }), !m_rest.isEmpty()) {
            const bool isComment = m_rest.front() == u'#' || m_rest.front() == u';';
            const auto name = withoutTrailingBlanks(takeUntil(isComment ? u"\n" : u"=\n"));
            if (!take(u'='))
                continue;
            const auto value = takeValue();
            if (isName(name))
                environment.insert_or_assign(name, value);
        }
        return environment;
    }

private:
    QString takeValue()
    {
        QString value;
        while (skip(isBlank), !m_rest.isEmpty() && m_rest.front() != u'\n') {
            if (take(u'\''))
                value += takeQuoted(u'\'', {});
            else if (take(u'"'))
                value += takeQuoted(u'"', u"\"\\`$\n");
            else
                value += takePlain();
        }
        return value;
    }

    /// Reads up to the closing quote, or to the end of the text if there is none.
    QString takeQuoted(QChar quote, QStringView escapable)
    {
        QString text;
        while (!m_rest.isEmpty() && !take(quote)) {
            const bool isEscape =
                m_rest.front() == u'\\' && m_rest.size() > 1 && escapable.contains(m_rest[1]);
            if (isEscape)
                m_rest = m_rest.sliced(1);
            const auto c = takeCharacter();
            if (!isEscape || c != u'\n')
                text += c;
        }
        return text;
    }

    /// Reads to the end of the line. Keeps an escaped blank at the end.
    QString takePlain()
    {
        QString text;
        qsizetype kept = 0;
        while (!m_rest.isEmpty() && m_rest.front() != u'\n') {
            const bool isEscape = take(u'\\');
            if (m_rest.isEmpty() || (isEscape && take(u'\n')))
                continue;
            text += takeCharacter();
            if (isEscape || !isBlank(text.back()))
                kept = text.size();
        }
        return text.first(kept);
    }

    template <typename Predicate>
    void skip(Predicate predicate)
    {
        const auto end = std::ranges::find_if_not(m_rest, predicate);
        m_rest = m_rest.sliced(end - m_rest.begin());
    }

    QString takeUntil(QStringView ends)
    {
        const auto end = std::ranges::find_if(m_rest, [&](QChar c) { return ends.contains(c); });
        const auto taken = m_rest.first(end - m_rest.begin());
        m_rest = m_rest.sliced(taken.size());
        return taken.toString();
    }

    bool take(QChar c)
    {
        const bool isNext = m_rest.startsWith(c);
        if (isNext)
            m_rest = m_rest.sliced(1);
        return isNext;
    }

    QChar takeCharacter()
    {
        const auto c = m_rest.front();
        m_rest = m_rest.sliced(1);
        return c;
    }

    QStringView m_rest;
};

void addDemoModel(Environment& environment)
{
    const auto url = variable(environment, QStringLiteral("POBBLEWIG_DEMO_MODEL_URL"));
    if (!url || variable(environment, QStringLiteral("MAIN_MODEL_ID")))
        return;
    const auto name = QStringLiteral("demo model");
    environment[QStringLiteral("MAIN_MODEL_BASE_URL")] = *url;
    environment[QStringLiteral("MAIN_MODEL_ID")] = name;
    environment[QStringLiteral("MAIN_MODEL_PROVIDER")] = name;
    environment[QStringLiteral("MAIN_MODEL_API_KEY")] = QStringLiteral("demo");
}

} // namespace

std::optional<QString> variable(const Environment& environment, const QString& name)
{
    const auto found = environment.find(name);
    if (found == environment.end() || found->second.isEmpty())
        return std::nullopt;
    return found->second;
}

Environment currentEnvironment(const QString& file)
{
    auto environment = EnvironmentFile::read(file);
    const auto process = QProcessEnvironment::systemEnvironment();
    for (const auto& name : process.keys()) {
        const auto value = process.value(name);
        if (!value.isEmpty() || !variable(environment, name))
            environment.insert_or_assign(name, value);
    }
    addDemoModel(environment);
    return environment;
}

QString EnvironmentFile::defaultPath()
{
    return QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation)
        + QStringLiteral("/Pobblewig/environment");
}

Environment EnvironmentFile::read(const QString& path)
{
    QFile file(path);
    if (!QFileInfo(path).isFile() || !file.open(QIODevice::ReadOnly) || file.size() > largestFile)
        return {};
    return parse(QString::fromUtf8(file.read(largestFile)));
}

Environment EnvironmentFile::parse(const QString& text)
{
    return EnvironmentReader(text).read();
}

} // namespace pobblewig
