#pragma once

#include "PobblewigStarterMemes/Canvas.h"

#include <functional>
#include <vector>

namespace pobblewig {

/// A picture that is shown for a while.
struct Shot {
    Canvas canvas;
    int milliseconds = 0;
};

/// Shown over and over, if it has more than one shot.
using Film = std::vector<Shot>;

/// Paints a shot for each duration; the painter is told which one.
Film film(std::initializer_list<int> milliseconds, const std::function<Canvas(int step)>& painter);

/// The same for shots that all take equally long.
Film film(int shots, int milliseconds, const std::function<Canvas(int step)>& painter);

} // namespace pobblewig
