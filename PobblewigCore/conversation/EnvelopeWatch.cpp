#include "conversation/EnvelopeWatch.h"

namespace pobblewig {

void EnvelopeWatch::feed(QChar character)
{
    if (!m_isPossible)
        return;
    if (m_isInString)
        feedInString(character);
    else if (!character.isSpace())
        feedOutside(character);
}

void EnvelopeWatch::feedInString(QChar character)
{
    m_isInString = m_isEscaped || character != u'"';
    m_isEscaped = !m_isEscaped && character == u'\\';
}

void EnvelopeWatch::feedOutside(QChar character)
{
    m_isPossible = fits(character);
    m_isInString = character == u'"';
    if (character == u'{' || character == u'[')
        ++m_depth;
    if (character == u'}' || character == u']')
        --m_depth;
    m_isComplete = m_depth == 0;
    m_previous = character;
}

bool EnvelopeWatch::fits(QChar character) const
{
    const bool isFirst = m_previous.isNull();
    if (isFirst || m_isComplete)
        return isFirst && (character == u'{' || character == u'[');
    if (m_previous == u'{')
        return character == u'"' || character == u'}';
    // The entries of a bare array are objects.
    if (m_depth == 1 && m_previous == u'[')
        return character == u'{' || character == u']';
    return character != u'`' && character != u'\\';
}

} // namespace pobblewig
