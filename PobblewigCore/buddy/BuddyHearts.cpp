#include "buddy/BuddyHearts.h"

#include <cmath>

namespace pobblewig {

void BuddyHearts::rise(double now)
{
    constexpr int handful = 5;
    constexpr double apart = 0.17;
    if (const auto tooMany = m_hearts.size() + handful - atOnce; tooMany > 0)
        m_hearts.erase(m_hearts.begin(), m_hearts.begin() + tooMany);
    for (int i = 0; i < handful; ++i) {
        // By the golden section, so that neighbours in time are far apart.
        const auto x = 2 * std::fmod(0.3 + m_count * 0.618034, 1) - 1;
        m_hearts.append({ .x = x, .born = now + i * apart, .isLarge = m_count % 3 == 0 });
        ++m_count;
    }
}

void BuddyHearts::tick(double now)
{
    const auto gone = [now](const Heart& heart) { return now - heart.born > lifetime; };
    m_hearts.removeIf(gone);
}

} // namespace pobblewig
