#include "presence/HotKeyError.h"

#include <QCoreApplication>

namespace pobblewig {

namespace {

struct Texts {
    Q_DECLARE_TR_FUNCTIONS(HotKeyError)
};

} // namespace

QString HotKeyError::description() const
{
    const auto name = keys.toString(QKeySequence::NativeText);
    switch (kind) {
    case Kind::taken:
        return Texts::tr("Another program already uses %1. Choose another shortcut.").arg(name);
    case Kind::refused:
        return Texts::tr("The desktop did not allow %1.").arg(name);
    case Kind::unavailable:
        return Texts::tr("This desktop does not let programs have shortcuts of their own.");
    case Kind::unusable:
        return Texts::tr(
            "%1 cannot be used. Choose one key of this keyboard together with Ctrl, Alt or Meta.")
            .arg(name);
    }
    Q_UNREACHABLE();
}

} // namespace pobblewig
