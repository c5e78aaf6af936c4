#include "settings/AccentChoice.h"

#include "foundation/EnumNames.h"

#include <QCoreApplication>

#include <array>

namespace pobblewig {

namespace {

constexpr std::array names {
    QT_TRANSLATE_NOOP("AccentChoice", "Coral"),
    QT_TRANSLATE_NOOP("AccentChoice", "Amber"),
    QT_TRANSLATE_NOOP("AccentChoice", "Moss"),
    QT_TRANSLATE_NOOP("AccentChoice", "Teal"),
    QT_TRANSLATE_NOOP("AccentChoice", "Sky"),
    QT_TRANSLATE_NOOP("AccentChoice", "Violet"),
    QT_TRANSLATE_NOOP("AccentChoice", "Rose"),
    QT_TRANSLATE_NOOP("AccentChoice", "Graphite"),
};

} // namespace

AccentChoice accentChoice(const QString& name)
{
    return EnumNames::fromName<AccentChoice>(name.toStdString()).value_or(AccentChoice::coral);
}

QString displayName(AccentChoice accent)
{
    return QCoreApplication::translate("AccentChoice", names[size_t(accent)]);
}

} // namespace pobblewig
