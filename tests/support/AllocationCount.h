#pragma once

#include <cstddef>
#include <optional>

// The name is the sanitizers' own.
// NOLINTNEXTLINE(bugprone-reserved-identifier)
extern "C" __attribute__((weak)) int __sanitizer_install_malloc_and_free_hooks(
    void (*)(const volatile void*, size_t), void (*)(const volatile void*));

namespace pobblewig {

/// Counts what this thread allocates by whatever function, with the help of the sanitizers.
class AllocationCount {
public:
    /// Nothing where the program was built without them.
    template <typename Function>
    static std::optional<int> during(Function function)
    {
        if (!isCounting())
            return std::nullopt;
        const auto before = count();
        function();
        return count() - before;
    }

private:
    static int& count()
    {
        static thread_local int count = 0;
        return count;
    }

    static bool isCounting()
    {
        static const auto isInstalled = __sanitizer_install_malloc_and_free_hooks
            && __sanitizer_install_malloc_and_free_hooks(
                   [](const volatile void*, size_t) { ++count(); }, [](const volatile void*) {})
                > 0;
        return isInstalled;
    }
};

} // namespace pobblewig
