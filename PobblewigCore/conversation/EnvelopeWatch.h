#pragma once

#include <QChar>

namespace pobblewig {

/// Tells after each character whether a text can still become the JSON of an action block. Most
/// texts fail within a few characters, so it is cheap to check all of them.
class EnvelopeWatch {
public:
    void feed(QChar character);

    /// Once false, stays false.
    bool isPossible() const { return m_isPossible; }
    /// Whether all brackets are closed.
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
    /// The previous character outside strings that is not blank.
    QChar m_previous;
};

} // namespace pobblewig
