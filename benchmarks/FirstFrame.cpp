#include <xcb/xcb.h>

#include <chrono>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <spawn.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <vector>

// Starts a program and prints how many milliseconds pass until anything changes on the screen, and
// how many of a processor the program takes until then.

extern char** environ;

namespace {

using Pixels = std::vector<std::uint8_t>;

Pixels screen(xcb_connection_t* connection, const xcb_screen_t& root)
{
    const auto cookie = xcb_get_image(connection, XCB_IMAGE_FORMAT_Z_PIXMAP, root.root, 0, 0,
        root.width_in_pixels, root.height_in_pixels, ~0u);
    const std::unique_ptr<xcb_get_image_reply_t, decltype(&std::free)> image(
        xcb_get_image_reply(connection, cookie, nullptr), &std::free);
    const auto* data = xcb_get_image_data(image.get());
    return { data, data + xcb_get_image_data_length(image.get()) };
}

double milliseconds(const timeval& time)
{
    return double(time.tv_sec) * 1e3 + double(time.tv_usec) / 1e3;
}

} // namespace

int main(int argc, char** argv)
{
    auto* connection = xcb_connect(nullptr, nullptr);
    if (argc < 2 || xcb_connection_has_error(connection)) {
        std::fprintf(stderr, "usage: FirstFrame PROGRAM [ARGUMENT...], with an X server\n");
        return 2;
    }
    const auto& root = *xcb_setup_roots_iterator(xcb_get_setup(connection)).data;
    const auto before = screen(connection, root);

    using Clock = std::chrono::steady_clock;
    const auto start = Clock::now();
    pid_t process = 0;
    if (posix_spawnp(&process, argv[1], nullptr, nullptr, argv + 1, environ) != 0)
        return 1;
    auto elapsed = Clock::duration::zero();
    bool changed = false;
    while (!changed && elapsed < std::chrono::seconds(20)) {
        changed = screen(connection, root) != before;
        elapsed = Clock::now() - start;
    }
    kill(process, SIGKILL);
    rusage usage {};
    wait4(process, nullptr, 0, &usage);
    if (!changed)
        return 1;
    std::printf("%.2f %.2f\n", std::chrono::duration<double, std::milli>(elapsed).count(),
        milliseconds(usage.ru_utime) + milliseconds(usage.ru_stime));
    return 0;
}
