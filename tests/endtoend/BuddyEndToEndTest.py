"""The buddy's own window under a window manager, with a compositor and without one."""

import ctypes
import re
import subprocess
import time
import unittest

from program import DemoModel, Program, wait_for, xdotool
from tray import Item, Tray

SCREEN = (1280, 800)
x11 = ctypes.CDLL("libX11.so.6")


class BuddyEndToEndTest(unittest.TestCase):
    terminals = 0

    def setUp(self):
        self.program = self.enterContext(Program())
        self.is_chat_shown = self.program.window_titled("Pobblewig Chat")
        xdotool("mousemove", "5", "5")

    def run_beside(self, *command):
        process = subprocess.Popen(command, stderr=subprocess.DEVNULL)
        self.addCleanup(process.wait)
        self.addCleanup(process.kill)
        return process

    def terminal(self, *options):
        """A new one in front, by its window."""
        self.terminals += 1
        title = f"terminal {self.terminals}"
        self.run_beside("xterm", "-T", title, *options, "-e", "cat")
        return wait_for(lambda: active_window(title), "the terminal in front")

    def compositor(self):
        process = self.run_beside("picom", "--config", "/dev/null", "--backend", "xrender")
        wait_for(lambda: not is_cut(), "the whole window for the compositor")
        return process

    def buddy_is_at(self, place):
        wait_for(lambda: window_place()[:2] == place, f"the buddy at {place}")


class ShapeEndToEndTest(BuddyEndToEndTest):
    def test_a_click_beside_the_buddy_goes_to_what_is_behind_it(self):
        behind = self.terminal("-geometry", "60x20+600+400")
        self.terminal("-geometry", "20x5+0+0")
        self.program.start()
        wait_for(is_cut, "the shape of the buddy")
        for start_compositor, place in ((None, (700, 500)), (self.compositor, (740, 520))):
            with self.subTest(compositor=bool(start_compositor)):
                if start_compositor:
                    start_compositor()
                beside = self.terminal("-geometry", "20x5+0+200")
                drag_to(*place)
                left, top, _width, _height = window_place()
                click(left + 3, top + 3)
                wait_for(lambda: active_window() == behind, "the terminal behind the buddy")
                self.assertFalse(self.is_chat_shown())
                self.assertNotEqual(beside, behind)
                click(*middle_of_the_buddy())
                wait_for(self.is_chat_shown, "the chat panel")
                wait_for(lambda: active_window() not in (behind, None), "the panel in front")
                # Elsewhere on the buddy, so that two clicks are not a double one.
                x, y = middle_of_the_buddy()
                click(x + 20, y)
                wait_for(lambda: not self.is_chat_shown(), "no chat panel")

    def test_a_compositor_may_come_and_go(self):
        self.program.start()
        wait_for(is_cut, "a cut window")
        compositor = self.compositor()
        compositor.terminate()
        wait_for(is_cut, "a cut window again")


class PlaceEndToEndTest(BuddyEndToEndTest):
    def test_it_stands_where_it_was_left(self):
        self.program.start()
        drag_to(400, 300)
        kept = window_place()
        # The file is written once nothing else is to be done.
        wait_for(lambda: "@Point" in self.desktop_settings(), "the place in the file")
        self.program.kill()
        self.program.start()
        self.buddy_is_at(kept[:2])

    def test_a_throw_ends_on_the_screen(self):
        self.program.start()
        drag_to(500, 400)
        grip = middle_of_the_buddy()
        xdotool("mousemove", *words(grip), "mousedown", "1")
        for step in range(1, 16):
            xdotool("mousemove", *words((grip[0] + 18 * step, grip[1] - 6 * step)))
        released = window_place()
        xdotool("mouseup", "1")
        wait_for(lambda: window_place()[0] > released[0] + 20, "the buddy gliding")
        end = wait_for(at_rest(window_place), "its rest")
        self.assertLessEqual(end[0] + end[2], SCREEN[0])

    def test_each_arrangement_of_screens_has_its_place(self):
        self.addCleanup(xrandr, "--output", "screen", "--mode", "1280x800")
        xrandr("--newmode", "small", *"0 800 0 0 800 600 0 0 600".split(), check=False)
        xrandr("--addmode", "screen", "small")
        self.program.start()
        drag_to(1000, 650)
        large = window_place()
        xrandr("--output", "screen", "--mode", "small")
        wait_for(lambda: is_within(window_place(), (0, 0, 800, 600)), "the buddy back in sight")
        drag_to(200, 200)
        small = window_place()
        xrandr("--output", "screen", "--mode", "1280x800")
        self.buddy_is_at(large[:2])
        xrandr("--output", "screen", "--mode", "small")
        self.buddy_is_at(small[:2])

    def test_it_comes_back_when_its_screen_is_unplugged(self):
        for name in ("left", "right"):
            self.addCleanup(xrandr, "--delmonitor", name, check=False)
        xrandr("--setmonitor", "left", "640/160x500/130+0+0", "screen")
        xrandr("--setmonitor", "right", "640/160x800/200+640+0", "none")
        self.program.start()
        drag_to(1000, 650)
        right = window_place()
        xrandr("--delmonitor", "right")
        wait_for(lambda: is_within(window_place(), (0, 0, 640, 500)), "it on the screen left")
        xrandr("--setmonitor", "right", "640/160x800/200+640+0", "none")
        self.buddy_is_at(right[:2])

    def desktop_settings(self):
        file = self.program.data.parent.parent / "config" / "Pobblewig" / "desktop.conf"
        return file.read_text() if file.exists() else ""


class LifeEndToEndTest(BuddyEndToEndTest):
    def test_it_gives_way_to_a_full_screen(self):
        for compositor in (False, True):
            with self.subTest(compositor=compositor):
                self.program.start()
                if compositor:
                    self.compositor()
                film = self.run_beside("xterm", "-fullscreen", "-e", "cat")
                wait_for(lambda: not buddy_windows(), "no buddy over the film")
                self.program.open_chat()
                self.assertEqual(buddy_windows(), [])
                xdotool("key", "Escape")
                film.kill()
                wait_for(buddy_windows, "the buddy again")
                self.program.kill()

    def test_a_double_click_pets_it(self):
        self.program.start()
        drag_to(600, 400)
        alone = window_place()
        xdotool("mousemove", *words(middle_of_the_buddy()), "click", "--repeat", "2", "--delay",
                "60", "1")
        wait_for(lambda: window_place()[3] > alone[3], "room for hearts")
        wait_for(lambda: window_place() == alone, "the end of it")
        self.assertFalse(self.is_chat_shown())

    def test_it_sleeps_when_told_and_wakes_at_a_touch(self):
        tray = Tray()
        self.addCleanup(tray.close)
        self.program.start()
        wait_for(lambda: tray.items, "the program in the tray")
        item = Item(tray.items[0][0])
        alone = window_place()
        item.click("Sleep now")
        asleep = wait_for(lambda: window_place()[2] > alone[2] and window_place(), "room for Zs")
        self.assertEqual(feet(asleep), feet(alone))
        wait_for(lambda: item.tool_tip().endswith("asleep"), "the sleep in words")
        xdotool("mousemove", *words(middle_of_the_buddy()), "click", "2")
        wait_for(lambda: window_place() == alone, "the buddy awake")
        wait_for(lambda: not item.tool_tip().endswith("asleep"), "the waking in words")

    def test_confirmed_proposals_change_its_looks_at_once(self):
        model = DemoModel()
        self.addCleanup(model.stop)
        self.program.environment |= model.variables
        self.program.start()
        self.program.open_chat()
        drag_to(300, 300)
        self.program.send("become a blue axolotl")
        for proposal, color in (("form", (240, 208, 130)), ("color", (166, 206, 234))):
            self.assertNotEqual(color_of_the_buddy(), color)
            self.program.press("Confirm")
            wait_for(lambda: color_of_the_buddy() == color, f"the buddy's new {proposal}")


def words(numbers):
    return [str(number) for number in numbers]


def xrandr(*arguments, check=True):
    subprocess.run(["xrandr", *arguments], check=check, timeout=30, capture_output=True)


def active_window(title=None):
    """With the title, if one is given; else nothing."""
    found = subprocess.run(["xdotool", "getactivewindow", "getwindowname"] if title else
                           ["xdotool", "getactivewindow"],
                           text=True, timeout=30, capture_output=True).stdout.strip()
    if title:
        return active_window() if found == title else None
    return int(found) if found else None


def buddy_windows():
    return subprocess.run(["xdotool", "search", "--onlyvisible", "--name", "^Pobblewig$"],
                          text=True, timeout=30, capture_output=True).stdout.split()


def buddy_facts(*options):
    window = wait_for(buddy_windows, "the buddy's window")[0]
    return subprocess.run(["xwininfo", "-id", window, *options], text=True, timeout=30,
                          capture_output=True).stdout


def window_place():
    """Left, top, width, height."""
    facts = buddy_facts()
    names = ("Absolute upper-left X", "Absolute upper-left Y", "Width", "Height")
    return tuple(int(re.search(rf"{name}:\s+(-?\d+)", facts)[1]) for name in names)


def is_cut():
    return "No window shape defined" not in buddy_facts("-shape")


def feet(place):
    left, top, width, height = place
    return left + width // 2, top + height


def is_within(place, area):
    left, top, width, height = place
    return (left >= area[0] and top >= area[1] and left + width <= area[0] + area[2]
            and top + height <= area[1] + area[3])


def middle_of_the_buddy():
    """Between its eyes and its feet, whatever is seen around it."""
    x, ground = feet(window_place())
    return x, ground - 30


def click(x, y):
    xdotool("mousemove", str(x), str(y), "click", "1")


def drag_to(x, y):
    """Puts the feet there, and holds still before letting go. To where they are it is a click."""
    grip = middle_of_the_buddy()
    ground = feet(window_place())
    xdotool("mousemove", *words(grip), "mousedown", "1")
    for part in range(1, 11):
        xdotool("mousemove", str(grip[0] + (x - ground[0]) * part // 10),
                str(grip[1] + (y - ground[1]) * part // 10))
    wait_for(lambda: feet(window_place()) == (x, y), "the buddy where it is carried")
    time.sleep(0.3)
    xdotool("mouseup", "1")


def at_rest(value):
    """A condition that holds once two looks in a row find the same."""
    looks = [None]

    def is_same():
        looks.append(value())
        time.sleep(0.1)
        return looks[-1] == looks[-2] and looks[-1]
    return is_same


def color_of_the_buddy():
    """Between an eye and the side, as it is on the screen."""
    x, ground = feet(window_place())
    x11.XOpenDisplay.restype = x11.XDefaultRootWindow.restype = ctypes.c_void_p
    x11.XGetImage.restype = ctypes.c_void_p
    display = ctypes.c_void_p(x11.XOpenDisplay(None))
    root = ctypes.c_void_p(x11.XDefaultRootWindow(display))
    every_plane = ctypes.c_ulong(2 ** 32 - 1)
    image = ctypes.c_void_p(x11.XGetImage(display, root, x - 44, ground - 30, 1, 1, every_plane, 2))
    pixel = x11.XGetPixel(image, 0, 0)
    x11.XCloseDisplay(display)
    return pixel >> 16 & 255, pixel >> 8 & 255, pixel & 255


if __name__ == "__main__":
    unittest.main()
