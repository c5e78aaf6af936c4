#pragma once

#include "foundation/JSONCodec.h"

#include <QJsonDocument>

namespace pobblewig {

/// The record as a file would hold it.
template <typename Record>
QJsonObject jsonObject(const Record& record)
{
    return QJsonDocument::fromJson(json::text(record)).object();
}

} // namespace pobblewig
