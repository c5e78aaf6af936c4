"""The buddy's own window on screens that come and go, and what the whole program makes of it."""

import ctypes
import json
import re
import struct
import subprocess
import unittest
import zlib

from program import DemoModel, Program, wait_for, xdotool
from tray import Item, Tray

x11 = ctypes.CDLL("libX11.so.6")


class BuddyEndToEndTest(unittest.TestCase):
    def setUp(self):
        self.program = self.enterContext(Program())
        xdotool("mousemove", "5", "5")

    def drag_into_corner(self, area, across, down):
        """Of an area of the screen, -1 or 1 each way: there it cannot slide on, however fast it
        was carried. Returns where the window then is."""
        x, ground = feet(window_place())
        _left, _top, width, height = window_place()
        left, top, right, bottom = area
        target = (left + width // 2 if across < 0 else right - (width - width // 2),
                  top + height if down < 0 else bottom)
        xdotool("mousemove", *words((x, ground - 30)), "mousedown", "1")
        for part in range(1, 11):
            xdotool("mousemove", str(x + (target[0] - x) * part // 10),
                    str(ground - 30 + (target[1] - ground) * part // 10))
        wait_for(lambda: feet(window_place()) == target, "the buddy where it is carried")
        xdotool("mouseup", "1")
        return window_place()

    def buddy_is_at(self, place):
        wait_for(lambda: window_place() == place, f"the buddy at {place}")

    def test_each_arrangement_of_screens_has_its_place(self):
        self.addCleanup(xrandr, "--output", "screen", "--mode", "1280x800")
        xrandr("--newmode", "small", *"0 800 0 0 800 600 0 0 600".split(), check=False)
        xrandr("--addmode", "screen", "small")
        self.program.start()
        large = self.drag_into_corner((0, 0, 1280, 800), 1, -1)
        xrandr("--output", "screen", "--mode", "small")
        wait_for(lambda: is_within(window_place(), (0, 0, 800, 600)), "the buddy back in sight")
        small = self.drag_into_corner((0, 0, 800, 600), -1, -1)
        xrandr("--output", "screen", "--mode", "1280x800")
        self.buddy_is_at(large)
        xrandr("--output", "screen", "--mode", "small")
        self.buddy_is_at(small)

    def test_it_comes_back_when_its_screen_is_unplugged(self):
        for name in ("left", "right"):
            self.addCleanup(xrandr, "--delmonitor", name, check=False)
        xrandr("--setmonitor", "left", "640/160x500/130+0+0", "screen")
        xrandr("--setmonitor", "right", "640/160x800/200+640+0", "none")
        self.program.start()
        right = self.drag_into_corner((640, 0, 1280, 800), 1, 1)
        xrandr("--delmonitor", "right")
        wait_for(lambda: is_within(window_place(), (0, 0, 640, 500)), "it on the screen left")
        xrandr("--setmonitor", "right", "640/160x800/200+640+0", "none")
        self.buddy_is_at(right)

    def test_it_sleeps_when_told_and_wakes_at_a_touch(self):
        tray = Tray()
        self.addCleanup(tray.close)
        self.program.start()
        wait_for(lambda: tray.items, "the program in the tray")
        alone = window_place()
        Item(tray.items[0][0]).click("Sleep now")
        asleep = wait_for(lambda: window_place()[2] > alone[2] and window_place(), "room for Zs")
        self.assertEqual(feet(asleep), feet(alone))
        x, ground = feet(asleep)
        xdotool("mousemove", *words((x, ground - 30)), "click", "2")
        self.buddy_is_at(alone)

    def test_confirmed_proposals_change_its_looks_at_once(self):
        model = DemoModel()
        self.addCleanup(model.stop)
        self.program.environment |= model.variables
        self.program.start()
        self.program.open_chat()
        self.program.send("become a blue axolotl")
        self.program.unfold()
        for proposal, color in (("form", (240, 208, 130)), ("color", (166, 206, 234))):
            self.assertNotEqual(color_of_the_buddy(), color)
            self.program.press("Confirm")
            wait_for(lambda: color_of_the_buddy() == color, f"the buddy's new {proposal}")

    def test_a_moment_that_calls_for_it_makes_it_a_meme(self):
        model = DemoModel()
        self.addCleanup(model.stop)
        self.program.environment |= model.variables
        memes = self.program.data / "memes"
        memes.mkdir()
        (memes / "tada.png").write_bytes(magenta_picture())
        # Likelier than any other.
        entry = {"file": "tada.png", "emotions": ["celebrating"], "weight": 1e12}
        (memes / "memes.json").write_text(json.dumps({"memes": [entry]}))
        self.program.start()
        self.program.open_chat()
        before = window_place(), color_of_the_buddy()
        self.program.send("I passed the exam")
        wait_for(lambda: color_of_the_buddy() == (255, 0, 255), "the meme")
        wait_for(lambda: (window_place(), color_of_the_buddy()) == before, "the buddy itself")
        self.program.send("What time is it?")
        wait_for(lambda: self.program.log_text().count("buddy: meme mode: ") == 2, "the verdict")
        self.assertEqual(self.program.log_text().count("meme mode: reacted"), 1)
        self.assertNotEqual(color_of_the_buddy(), (255, 0, 255))


def magenta_picture():
    """A PNG of 8 x 8 pixels."""
    def chunk(kind, data):
        return (struct.pack(">I", len(data)) + kind + data
                + struct.pack(">I", zlib.crc32(kind + data)))
    rows = (b"\0" + b"\xff\x00\xff" * 8) * 8
    return (b"\x89PNG\r\n\x1a\n" + chunk(b"IHDR", struct.pack(">2I5B", 8, 8, 8, 2, 0, 0, 0))
            + chunk(b"IDAT", zlib.compress(rows)) + chunk(b"IEND", b""))


def words(numbers):
    return [str(number) for number in numbers]


def xrandr(*arguments, check=True):
    subprocess.run(["xrandr", *arguments], check=check, timeout=30, capture_output=True)


def window_place():
    """Left, top, width, height."""
    window = xdotool("search", "--sync", "--onlyvisible", "--name", "^Pobblewig$").split()[0]
    facts = subprocess.run(["xwininfo", "-id", window], text=True, timeout=30,
                           capture_output=True).stdout
    names = ("Absolute upper-left X", "Absolute upper-left Y", "Width", "Height")
    return tuple(int(re.search(rf"{name}:\s+(-?\d+)", facts)[1]) for name in names)


def feet(place):
    left, top, width, height = place
    return left + width // 2, top + height


def is_within(place, area):
    left, top, width, height = place
    return (left >= area[0] and top >= area[1] and left + width <= area[2]
            and top + height <= area[3])


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
