#include "PobblewigDesktop/memory/PromptPage.h"

#include "PobblewigDesktop/memory/SearchWords.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QPlainTextEdit>
#include <QPushButton>

#include <numeric>

namespace pobblewig {

namespace {

constexpr int textHeight = 220;

QString title(PromptPart part)
{
    switch (part) {
    case PromptPart::identity:
        return PromptPage::tr("Who Pobblewig is");
    case PromptPart::principles:
        return PromptPage::tr("The principles of its roles");
    case PromptPart::voice:
        return PromptPage::tr("Its voice");
    case PromptPart::tools:
        return PromptPage::tr("How it looks things up");
    case PromptPart::actions:
        return PromptPage::tr("What it may propose");
    case PromptPart::reference:
        return PromptPage::tr("Table of contents: facts, days and weeks");
    case PromptPart::notes:
        return PromptPage::tr("Notes and patterns");
    case PromptPart::openEnds:
        return PromptPage::tr("What the last days left open");
    case PromptPart::session:
        return PromptPage::tr("The current session");
    case PromptPart::situation:
        return PromptPage::tr("The current situation");
    case PromptPart::clock:
        return PromptPage::tr("Mode and time");
    }
    return {};
}

QString inTokens(int tokens)
{
    return PromptPage::tr("about %1 tokens").arg(QLocale().toString(tokens));
}

} // namespace

PromptPage::PromptPage(AppCoordinator& coordinator, const Calendar&)
    : EntryPage({ .title = tr("What the model sees now"),
        .explanation = tr("What would go to the model if you wrote something now, in this order. "
                          "What you write comes last."),
        .empty = tr("The parts of the next request appear here."),
        .search = tr("Search what the model sees"),
        .text = tr("Part of the request") })
    , m_coordinator(coordinator)
{
    text().setFixedHeight(textHeight);
    connect(&addButton(tr("Refresh")), &QPushButton::clicked, this, [this] { list(); });
    connect(&addButton(tr("Copy this part")), &QPushButton::clicked, this,
        [this] { QGuiApplication::clipboard()->setText(text().toPlainText()); });
    connect(&addButton(tr("Copy everything")), &QPushButton::clicked, this, &PromptPage::copyAll);
}

void PromptPage::list()
{
    const auto prompt = m_coordinator.chat().promptNow();
    m_parts.clear();
    add(Prompts::mainAssistantSections(prompt));
    if (prompt.nativeTools)
        addFunctions();
    addConversation();
    add(Prompts::appContextSections(prompt));
    const SearchWords words(wanted());
    std::erase_if(m_parts, [&](const auto& part) { return !words.match(part.text); });
    setEntries(
        m_parts.size(),
        [this](size_t index) {
            return EntryRow { m_parts[index].title, inTokens(m_parts[index].tokens) };
        },
        std::nullopt);
    setEmpty(m_parts.empty(), isNarrowed());
}

void PromptPage::showSelected()
{
    const auto row = selectedRow();
    text().setPlainText(row ? m_parts[*row].text : QString());
    const auto all = std::accumulate(m_parts.begin(), m_parts.end(), 0,
        [](int sum, const auto& part) { return sum + part.tokens; });
    setFacts(tr("All listed parts: %1, estimated by their length.").arg(inTokens(all)));
}

void PromptPage::add(const QString& title, const QString& text)
{
    if (!text.trimmed().isEmpty())
        m_parts.push_back({ title, text, MemoryStore::estimateTokens(text) });
}

void PromptPage::add(const std::vector<PromptSection>& sections)
{
    for (const auto& section : sections)
        add(title(section.part), section.text);
}

void PromptPage::addConversation()
{
    QStringList lines;
    for (const auto& message : m_coordinator.chat().messagesNow())
        lines.append(message.role == LLMMessage::Role::user
                ? tr("You: %1").arg(message.content)
                : QStringLiteral("Pobblewig: ") + message.content);
    add(tr("The conversation: %1 messages").arg(lines.size()), lines.join(u"\n\n"));
}

void PromptPage::addFunctions()
{
    QStringList lines;
    for (const auto& function : m_coordinator.chat().functionsNow())
        lines.append(QStringLiteral("%1: %2 %3")
                         .arg(function.name, function.description,
                             QString::fromUtf8(json::text(JSONValue(function.parameters)))));
    add(tr("The functions it may call: %1").arg(lines.size()), lines.join(u'\n'));
}

void PromptPage::copyAll() const
{
    QString all;
    for (const auto& part : m_parts)
        all += part.text;
    QGuiApplication::clipboard()->setText(all);
}

} // namespace pobblewig
