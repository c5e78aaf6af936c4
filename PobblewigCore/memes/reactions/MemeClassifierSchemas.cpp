#include "memes/reactions/MemeClassifierSchemas.h"

#include "memes/MemeEmotion.h"

#include <QJsonDocument>

namespace pobblewig::MemeClassifierSchemas {

namespace {

constexpr auto form = R"({"type":"object","additionalProperties":false,"properties":{
  "emotion":{"type":"string","enum":[EMOTIONS]},
  "confidence":{"type":"number"},
  "reason":{"type":"string"}
},"required":["emotion","confidence"]})";

JSONValue::Object parsed()
{
    QByteArrayList emotions;
    for (const auto emotion : MemeTags::emotions())
        emotions.append('"' + MemeTags::rawValue(emotion).toLatin1() + '"');
    emotions.append("\"none\"");
    const auto text = QByteArray(form).replace("EMOTIONS", emotions.join(','));
    return *JSONValue::fromJson(QJsonDocument::fromJson(text).object()).object();
}

} // namespace

const JSONValue::Object& reaction()
{
    static const auto schema = parsed();
    return schema;
}

} // namespace pobblewig::MemeClassifierSchemas
