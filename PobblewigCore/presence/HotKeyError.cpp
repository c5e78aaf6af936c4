#include "presence/HotKeyError.h"

namespace pobblewig {

QString HotKeyError::description() const
{
    const auto name = keys.toString(QKeySequence::NativeText);
    switch (kind) {
    case Kind::taken:
        return QStringLiteral("Another program already uses %1. Choose other keys.").arg(name);
    case Kind::refused:
        return QStringLiteral("The desktop did not hand over %1.").arg(name);
    case Kind::unavailable:
        return QStringLiteral("This desktop lets no program listen for keys of its own.");
    case Kind::unusable:
        return QStringLiteral("%1 cannot be used. Choose one key of this keyboard together with "
                              "Ctrl, Alt or Meta.")
            .arg(name);
    }
    Q_UNREACHABLE();
}

} // namespace pobblewig
