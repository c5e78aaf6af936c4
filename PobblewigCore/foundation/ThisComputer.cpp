#include "foundation/ThisComputer.h"

#include <QRegularExpression>

namespace pobblewig {

bool isThisComputer(const QString& host)
{
    static const QRegularExpression loopback(
        QStringLiteral("\\A(localhost|127(\\.[0-9]{1,3}){3}|\\[?::1\\]?)\\z"));
    return loopback.match(host).hasMatch();
}

} // namespace pobblewig
