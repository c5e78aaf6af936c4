#include "foundation/Log.h"

#include <cstdio>
#include <utility>

namespace pobblewig {

namespace {

Log::Sink& currentSink()
{
    static Log::Sink sink = [](const QString& line) {
        std::fprintf(stderr, "%s\n", line.toUtf8().constData());
    };
    return sink;
}

} // namespace

void Log::line(const QString& text)
{
    currentSink()(text);
}

Log::Sink Log::setSink(Sink sink)
{
    return std::exchange(currentSink(), std::move(sink));
}

} // namespace pobblewig
