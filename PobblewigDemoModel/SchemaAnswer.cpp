#include "PobblewigDemoModel/SchemaAnswer.h"

#include <algorithm>

namespace pobblewig {

namespace {

const JSONValue& member(const JSONValue& schema, const QString& name)
{
    static const JSONValue none;
    if (!schema.object())
        return none;
    const auto found = schema.object()->find(name);
    return found == schema.object()->end() ? none : found->second;
}

const JSONValue* firstOf(const JSONValue& list)
{
    return list.array() && !list.array()->empty() ? &list.array()->front() : nullptr;
}

/// The type of a schema. If there are several, null if it is among them, else the first.
QString typeOf(const JSONValue& schema)
{
    const auto& type = member(schema, QStringLiteral("type"));
    const JSONValue null(QStringLiteral("null"));
    const auto* first = firstOf(type);
    if (!first)
        return type.displayString();
    return std::ranges::count(*type.array(), null) > 0 ? QStringLiteral("null")
                                                       : first->displayString();
}

JSONValue emptiestObject(const JSONValue& schema)
{
    const auto& properties = member(schema, QStringLiteral("properties"));
    JSONValue::Object object;
    if (const auto* required = member(schema, QStringLiteral("required")).array()) {
        for (const auto& name : *required)
            object[name.displayString()] =
                SchemaAnswer::emptiest(member(properties, name.displayString()));
    }
    return object;
}

JSONValue emptiestNumber(const JSONValue& schema)
{
    const auto& minimum = member(schema, QStringLiteral("minimum"));
    return minimum.number() ? minimum : JSONValue(0);
}

} // namespace

JSONValue SchemaAnswer::emptiest(const JSONValue& schema)
{
    if (const auto* choice = firstOf(member(schema, QStringLiteral("enum"))))
        return *choice;
    for (const auto& choices : { QStringLiteral("anyOf"), QStringLiteral("oneOf") }) {
        if (const auto* choice = firstOf(member(schema, choices)))
            return emptiest(*choice);
    }
    const auto type = typeOf(schema);
    if (type == u"object")
        return emptiestObject(schema);
    if (type == u"array")
        return JSONValue::Array();
    if (type == u"string")
        return QString();
    if (type == u"boolean")
        return false;
    if (type == u"number" || type == u"integer")
        return emptiestNumber(schema);
    return {};
}

} // namespace pobblewig
