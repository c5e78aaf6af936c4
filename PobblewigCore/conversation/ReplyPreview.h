#pragma once

#include <QString>

namespace pobblewig {

/// What the user sees of a reply while it arrives: the same text at any moment as
/// `ActionParser::sanitizeForPreview` of the whole, at a cost that is linear in all that arrived.
class ReplyPreview {
public:
    void append(const QString& token);

    const QString& text() const { return m_text; }

private:
    QString m_text;
};

} // namespace pobblewig
