#include "conversation/ActionParser.h"
#include "conversation/ReplyPreview.h"

#include <benchmark/benchmark.h>

using namespace pobblewig;

namespace {

const char* const pieces[] = {
    "word by word and line by line,\nas most replies are. ",
    "```buddy-actions\n{\"actions\":[]}\n``` and ",
    "```json\n{\"a\":[1,\"two\"]}\n```\nis a sample. ",
    "`a` and ``b``, ```c``` ",
    "```json\n ",
    "a```json\n{\" ",
    "```\n[]\n``` \n ",
};
const char* const kinds[] = { "text", "blocks", "samples", "backticks", "tags", "strings",
    "last blocks" };

/// Each word with the blank behind it.
QStringList words(const benchmark::State& state)
{
    const auto piece = QString::fromLatin1(pieces[state.range(0)]);
    const auto reply = piece.repeated(state.range(1) / piece.size());
    QStringList tokens;
    for (qsizetype from = 0; from < reply.size();) {
        const auto end = reply.indexOf(u' ', from) + 1;
        tokens += reply.sliced(from, end - from);
        from = end;
    }
    return tokens;
}

void named(benchmark::State& state)
{
    state.SetLabel(kinds[state.range(0)]);
    state.SetItemsProcessed(state.iterations() * state.range(1));
}

void previewAReply(benchmark::State& state)
{
    const auto tokens = words(state);
    for (auto _ : state) {
        ReplyPreview preview;
        for (const auto& token : tokens) {
            preview.append(token);
            benchmark::DoNotOptimize(preview.text().constData());
        }
    }
    named(state);
}
BENCHMARK(previewAReply)
    ->ArgsProduct({ { 0, 1, 2, 3, 4, 5, 6 }, { 50'000, 100'000 } })
    ->Unit(benchmark::kMicrosecond);

/// The peer: no preview at all.
void appendAReply(benchmark::State& state)
{
    const auto tokens = words(state);
    for (auto _ : state) {
        QString reply;
        for (const auto& token : tokens) {
            reply += token;
            benchmark::DoNotOptimize(reply.constData());
        }
    }
    named(state);
}
BENCHMARK(appendAReply)
    ->ArgsProduct({ { 0, 1, 2, 3, 4, 5, 6 }, { 50'000, 100'000 } })
    ->Unit(benchmark::kMicrosecond);

/// Reads the whole reply for what it asks to have done: twice the length takes twice the time.
void parseAReply(benchmark::State& state)
{
    const auto reply = words(state).join(QString());
    for (auto _ : state)
        benchmark::DoNotOptimize(ActionParser::parse(reply, {}));
    named(state);
}
BENCHMARK(parseAReply)
    ->ArgsProduct({ { 0, 1, 2, 3, 4, 5, 6 }, { 200'000, 400'000 } })
    ->Unit(benchmark::kMicrosecond);

/// What it would cost to look at the whole for each token; a tenth as long already shows it.
void sanitizeEveryTime(benchmark::State& state)
{
    const auto tokens = words(state);
    for (auto _ : state) {
        QString reply;
        for (const auto& token : tokens) {
            reply += token;
            benchmark::DoNotOptimize(ActionParser::sanitizeForPreview(reply));
        }
    }
    named(state);
}
BENCHMARK(sanitizeEveryTime)
    ->ArgsProduct({ { 0 }, { 5'000, 10'000 } })
    ->Unit(benchmark::kMicrosecond);

} // namespace

BENCHMARK_MAIN();
