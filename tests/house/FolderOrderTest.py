#!/usr/bin/python3
"""The check of the folders' order sees what it has to see."""

import pathlib
import sys
import tempfile
import unittest

sys.path.insert(0, str(pathlib.Path(__file__).parents[2] / "scripts"))
import FolderOrder  # noqa: E402

HOUSE = {
    "PobblewigCore/foundation/Log.h": "",
    "PobblewigCore/memes/MemeStore.h": "",
    "PobblewigCore/AppCoordinator.h": "",
    "PobblewigCore/memory/MemoryStore.h": "",
    "PobblewigCore/memory/librarian/LibrarianLogic.h": "",
    "PobblewigCore/conversation/ChatService.h": "",
    "PobblewigLinux/Notifications.h": "",
    "PobblewigLinux/x11/X11Pixels.h": "",
    "PobblewigDesktop/ChatPanel.h": "",
    "tests/support/Awaited.h": "",
}
CORE_FILE = "PobblewigCore/notes/NotesStore.cpp"
ALLOWED = [
    (CORE_FILE, '#include "foundation/Log.h"'),
    (CORE_FILE, '#include "NotesStoreTest.moc"'),
    ("PobblewigCore/notes/CMakeLists.txt", "LINKS pobblewig::foundation Qt6::Network"),
    ("PobblewigCore/buddy/BuddyLogic.cpp", '#include "memes/MemeStore.h"'),
    ("PobblewigCore/AppCoordinator.cpp", '#include "memes/MemeStore.h"'),
    ("PobblewigLinux/X11Screen.cpp", '#include "AppCoordinator.h"\n#include <xcb/xcb.h>'),
    ("PobblewigDesktop/Tray.cpp", '#include "AppCoordinator.h"\n#include <QtWidgets/QMenu>'),
    ("PobblewigCore/memory/recall/Tools.cpp", '#include "memory/MemoryStore.h"'),
    ("PobblewigLinux/LinuxSession.cpp", '#include "PobblewigLinux/x11/X11Pixels.h"'),
    ("PobblewigDemoModel/main.cpp", '#include "foundation/Log.h"'),
    ("Pobblewig/main.cpp", '#include "PobblewigLinux/Notifications.h"'),
]
REFUSED = [
    ("PobblewigCore/foundation/Text.cpp", '#include "memes/MemeStore.h"'),
    (CORE_FILE, '#include "memes/MemeStore.h"'),
    (CORE_FILE, '#include "AppCoordinator.h"'),
    ("PobblewigCore/memory/MemoryStore.cpp", '#include "memory/librarian/LibrarianLogic.h"'),
    ("PobblewigCore/memory/recall/Tools.cpp", '#include "memory/librarian/LibrarianLogic.h"'),
    ("PobblewigCore/conversation/proposals/Desk.cpp", '#include "conversation/ChatService.h"'),
    ("PobblewigLinux/portal/Portal.cpp", '#include "PobblewigLinux/x11/X11Pixels.h"'),
    ("PobblewigCore/memory/librarian/deeper/Thing.cpp", ""),
    (CORE_FILE, '#  include "PobblewigCore/AppCoordinator.h"'),
    (CORE_FILE, '#include "PobblewigDesktop/ChatPanel.h"'),
    (CORE_FILE, '#include "../foundation/Log.h"'),
    (CORE_FILE, '#include "support/Awaited.h"'),
    (CORE_FILE, "#include <QtWidgets/QMenu>"),
    (CORE_FILE, "#include <QDBusConnection>"),
    (CORE_FILE, "#include <xcb/xcb.h>"),
    (CORE_FILE, "#include <linux/fs.h>"),
    ("PobblewigCore/AppCoordinator.cpp", "#include <QApplication>"),
    ("PobblewigCore/notes/CMakeLists.txt", "LINKS pobblewig::foundation Qt6::Widgets"),
    ("PobblewigCore/newcomer/Thing.cpp", ""),
    ("PobblewigLinux/Sounds.cpp", '#include "PobblewigDesktop/ChatPanel.h"'),
    ("PobblewigDesktop/Tray.cpp", '#include "PobblewigLinux/Notifications.h"'),
    ("PobblewigDesktop/Tray.cpp", "#include <X11/Xlib.h>"),
    ("PobblewigDemoModel/main.cpp", '#include "memes/MemeStore.h"'),
]


def faults_with(path, text):
    with tempfile.TemporaryDirectory() as root:
        for name, content in (HOUSE | {path: text}).items():
            file = pathlib.Path(root, name)
            file.parent.mkdir(parents=True, exist_ok=True)
            file.write_text(content, encoding="utf-8")
        return list(FolderOrder.faults(root))


class FolderOrderTest(unittest.TestCase):
    def test_what_stands_before_may_be_used(self):
        for path, text in ALLOWED:
            with self.subTest(path=path, text=text):
                self.assertEqual(faults_with(path, text), [])

    def test_all_else_is_named_with_its_file(self):
        for path, text in REFUSED:
            with self.subTest(path=path, text=text):
                (fault,) = faults_with(path, text)
                self.assertTrue(fault.startswith(path + ": "))


if __name__ == "__main__":
    unittest.main()
