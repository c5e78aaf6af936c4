#include "conversation/WaitingLogic.h"

#include <QCoreApplication>

#include <algorithm>

namespace pobblewig {

namespace {

using namespace std::chrono;

constexpr auto patience = seconds(4);

struct Texts {
    Q_DECLARE_TR_FUNCTIONS(WaitingLogic)
};

QString shown(milliseconds time)
{
    return Texts::tr("%n s", "seconds", int(duration_cast<seconds>(time).count()));
}

} // namespace

QString WaitingLogic::words(const Waiting& waiting, const QString& host, TimePoint now)
{
    const auto time = now - waiting.since;
    if (time < patience)
        return {};
    switch (waiting.cause) {
    case Waiting::Cause::reply:
        return Texts::tr("waiting for %1, %2")
            .arg(host.isEmpty() ? Texts::tr("the model") : host, shown(time));
    case Waiting::Cause::tools:
        return Texts::tr("reading notes, %1").arg(shown(time));
    case Waiting::Cause::loading:
        return Texts::tr("the model is loading, %1").arg(shown(time));
    }
    Q_UNREACHABLE();
}

QString WaitingLogic::words(const Thinking& thinking, TimePoint now)
{
    const auto ongoing = thinking.since ? now - *thinking.since : milliseconds();
    // The clock can be set back.
    const auto time = shown(std::max(milliseconds(), thinking.before + ongoing));
    return thinking.since ? Texts::tr("Thinking, %1").arg(time)
                          : Texts::tr("Thought for %1").arg(time);
}

} // namespace pobblewig
