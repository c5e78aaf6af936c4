// Compares the searches of the memory with SQLite's LIKE over the same texts, and shows that the
// table of contents takes time in proportion to what it counts.

#include "Figure.h"
#include "LikeScan.h"
#include "StudentWriter.h"
#include "memory/ObservationStore.h"
#include "memory/ReferenceMemoryStore.h"

#include <QTemporaryDir>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <limits>

namespace pobblewig {

namespace {

using namespace std::string_literals;

constexpr int rounds = 15;
constexpr int page = 20;
constexpr size_t observationCount = 100'000;
constexpr size_t itemCount = 20'000;
const TimePoint start(std::chrono::seconds(1772352900));

/// Of the processor: nothing here waits, and what else runs does not count.
template <typename Work>
double milliseconds(const Work& work)
{
    const auto before = std::clock();
    work();
    return double(std::clock() - before) * 1e3 / CLOCKS_PER_SEC;
}

qsizetype sizeOf(const std::vector<QString>& texts)
{
    qsizetype size = 0;
    for (const auto& text : texts)
        size += text.toUtf8().size();
    return size;
}

/// `search(query, limit)` tells how many it gives. Both take turns, so that a slower clock or a
/// smaller cache meanwhile slows both down.
template <typename Search>
void compare(const char* name, const QString& query, const Search& search, const LikeScan& scan)
{
    const auto tokens = SearchTexts::tokens(query);
    const auto found = scan.count(tokens);
    if (search(query, std::numeric_limits<int>::max()) != found) {
        std::printf("%s: the results differ\n", qUtf8Printable(query));
        std::exit(1);
    }
    std::vector<double> ours(rounds);
    std::vector<double> theirs(rounds);
    for (size_t round = 0; round < rounds; ++round) {
        ours[round] = milliseconds([&] { search(query, page); });
        theirs[round] = milliseconds([&] { scan.count(tokens); });
    }
    Figure { .measured = "search of "s + name + ": " + query.toStdString(),
        .value = median(ours),
        .peer = "SQLite",
        .peerValue = median(theirs) }
        .report();
}

template <typename Search>
void compareAll(const char* name, const std::vector<QString>& texts, const Search& search)
{
    const LikeScan scan(texts);
    const auto first = milliseconds([&] { search(QStringLiteral("exam"), page); });
    std::printf("%zu %s of %.1f MB\n", texts.size(), name, double(sizeOf(texts)) / 1e6);
    Figure { .measured = "first search of "s + name, .value = first }.report();
    for (const auto* query : { "canvas exam", "thermodynamics deadline", "zeitgeist", "the of",
             "wombat platypus", "müller study", "e t" })
        compare(name, QString::fromUtf8(query), search, scan);
}

void searchObservations()
{
    StudentWriter writer;
    ObservationStore store(std::nullopt);
    std::vector<QString> texts(observationCount);
    for (size_t number = 0; number < observationCount; ++number) {
        const std::vector parts { writer.sentences(80), writer.sentences(200),
            writer.sentences(170), writer.sentences(60), writer.word() };
        store.add({
            .id = QUuid::createUuid(),
            .occurredAt = start + std::chrono::minutes(number * 7919 % observationCount),
            .summary = parts[0],
            .observedFacts = { parts[1], parts[2] },
            .inference = parts[3],
            .tags = { parts[4] },
        });
        texts[number] = Text::normalized(QStringList(parts.begin(), parts.end()).join(u' '));
    }
    compareAll("observations", texts, [&](const QString& query, int limit) {
        return store.search({ .text = query, .limit = limit }).size();
    });
}

QString searchableText(const ReferenceItem& item)
{
    QStringList parts { item.title, item.summary };
    for (const auto& [key, value] : item.details)
        parts << key << value.displayString();
    return Text::normalized(parts.join(u' '));
}

std::vector<ReferenceItem> referenceItems(size_t count)
{
    const auto sections =
        ReferenceMemoryStore(std::nullopt, PlatformWording::linuxDesktop).tableOfContents().entries;
    StudentWriter writer;
    std::vector<ReferenceItem> items(count);
    for (size_t number = 0; number < count; ++number) {
        items[number] = {
            .id = QUuid::createUuid(),
            .path = sections[number % sections.size()].path,
            .title = writer.sentences(40),
            .summary = writer.sentences(250),
            .details = { { QStringLiteral("course"), writer.word() },
                { QStringLiteral("due"), QStringLiteral("2026-03-%1").arg(number % 31 + 1) } },
            .source = QStringLiteral("librarian"),
            .createdAt = start,
            .updatedAt = start + std::chrono::minutes(number * 7919 % count),
        };
    }
    return items;
}

/// Through the file, as each item that is added is compared with all others.
ReferenceMemoryStore referenceStore(const std::vector<ReferenceItem>& items)
{
    const QTemporaryDir scratch;
    const DataDirectory directory { QDir(scratch.path()) };
    const JSONFileStore file(directory, QStringLiteral("reference.json"));
    if (!file.save(ReferenceMemoryData { .items = items }))
        std::exit(1);
    return ReferenceMemoryStore(directory, PlatformWording::linuxDesktop);
}

void searchReferenceItems()
{
    const auto items = referenceItems(itemCount);
    const auto store = referenceStore(items);
    std::vector<QString> texts(itemCount);
    std::ranges::transform(items, texts.begin(), searchableText);
    compareAll("reference items", texts,
        [&](const QString& query, int limit) { return store.search(query, {}, limit).size(); });
}

void countReferenceItems()
{
    for (const auto count : { itemCount, 2 * itemCount }) {
        const auto store = referenceStore(referenceItems(count));
        std::vector<double> times(rounds);
        for (auto& time : times)
            time = milliseconds([&] { (void)store.tableOfContents(); });
        Figure { .measured = "table of contents of " + std::to_string(count) + " items",
            .value = median(times) }
            .report();
    }
}

} // namespace

} // namespace pobblewig

int main()
{
    pobblewig::searchObservations();
    pobblewig::searchReferenceItems();
    pobblewig::countReferenceItems();
}
