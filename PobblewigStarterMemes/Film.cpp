#include "PobblewigStarterMemes/Film.h"

namespace pobblewig {

Film film(std::initializer_list<int> milliseconds, const std::function<Canvas(int step)>& painter)
{
    Film film;
    for (const auto duration : milliseconds)
        film.push_back({ painter(int(film.size())), duration });
    return film;
}

Film film(int shots, int milliseconds, const std::function<Canvas(int step)>& painter)
{
    Film film;
    for (int step = 0; step < shots; ++step)
        film.push_back({ painter(step), milliseconds });
    return film;
}

} // namespace pobblewig
