#include "settings/ConversationKeeping.h"

#include <QCoreApplication>

#include <array>

namespace pobblewig {

namespace {

constexpr std::array names {
    QT_TRANSLATE_NOOP("ConversationKeeping", "For a year"),
    QT_TRANSLATE_NOOP("ConversationKeeping", "For 30 days"),
    QT_TRANSLATE_NOOP("ConversationKeeping", "Only the last 30 messages"),
};

} // namespace

QString displayName(ConversationKeeping keeping)
{
    return QCoreApplication::translate("ConversationKeeping", names[size_t(keeping)]);
}

} // namespace pobblewig
