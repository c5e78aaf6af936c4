#include "PobblewigDemoModel/DemoToolCall.h"

#include <QJsonDocument>

namespace pobblewig {

QString DemoToolCall::argumentsText() const
{
    const auto object = JSONValue(arguments).toJson().toObject();
    return QString::fromUtf8(QJsonDocument(object).toJson(QJsonDocument::Compact));
}

} // namespace pobblewig
