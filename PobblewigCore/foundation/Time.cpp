#include "foundation/Time.h"

namespace pobblewig {

TimePoint systemNow()
{
    return std::chrono::floor<std::chrono::milliseconds>(std::chrono::system_clock::now());
}

} // namespace pobblewig
