#include "foundation/ThisComputer.h"

#include <QHostAddress>

namespace pobblewig {

bool isThisComputer(const QString& host)
{
    return host == u"localhost" || QHostAddress(host).isLoopback();
}

} // namespace pobblewig
