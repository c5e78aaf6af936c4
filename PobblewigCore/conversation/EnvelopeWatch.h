#pragma once

#include <QChar>

namespace pobblewig {

/// Whether a text can still become the JSON of an action block, asked at each of its characters.
/// Most texts lose that within a few, which keeps it cheap to ask of all of them.
class EnvelopeWatch {
public:
    void feed(QChar character);

    /// Once it is not, it stays so.
    bool isPossible() const { return m_isPossible; }
    /// Every bracket that was opened is closed.
    bool isComplete() const { return m_isPossible && m_isComplete; }
    bool isInString() const { return m_isInString; }

private:
    void feedInString(QChar character);
    void feedOutside(QChar character);
    bool fits(QChar character) const;

    bool m_isPossible = true;
    bool m_isComplete = false;
    bool m_isInString = false;
    bool m_isEscaped = false;
    qsizetype m_depth = 0;
    /// Other than a blank, outside strings.
    QChar m_previous;
};

} // namespace pobblewig
