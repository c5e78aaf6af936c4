#!/usr/bin/python3
"""Checks that each folder of the house uses only those before it. Usage: FolderOrder.py ROOT"""

import pathlib
import re
import sys

CORE = "PobblewigCore"
LINUX = "PobblewigLinux"
DESKTOP = "PobblewigDesktop"


def rooms(house, *folders):
    return [house + "/" + folder for folder in folders]


ORDER = rooms(
    CORE, "foundation", "markdown", "network", "tools", "features", "mascots", "settings", "prompts",
    "wire", "memory",
    "memory/history", "memory/librarian", "memory/recall", "folders", "screen",
    "activity", "connections", "connections/calendars", "connections/canvas",
    "connections/classroom", "interventions", "conversation/attachments", "conversation/proposals", "conversation",
    "memes", "memes/reactions", "notes", "cloud", "buddy", "presence") + [CORE]
ORDER += rooms(LINUX, "desktop", "x11", "wayland", "portal", "calendars", "pictures", "modules") + [LINUX]
ORDER += rooms(
    DESKTOP, "controls", "buddy", "bubble", "presence", "chat", "chat/past", "pages", "settings",
    "activity", "comingup", "diagnostics", "memory", "assistant", "notes", "memes")
ORDER += [DESKTOP, DESKTOP + "/contactsheet"]
ORDER += ["PobblewigDemoModel", "PobblewigStarterMemes", "Pobblewig"]

# Neighbours that know nothing of each other.
APART = [
    rooms(CORE, "memory/librarian", "memory/recall"),
    rooms(CORE, "connections/calendars", "connections/canvas", "connections/classroom"),
    rooms(CORE, "memes", "notes", "cloud"),
    rooms(LINUX, "x11", "wayland", "portal", "calendars", "pictures"),
    rooms(DESKTOP, "buddy", "presence", "chat"),
    rooms(DESKTOP, "buddy", "chat", "settings", "activity", "comingup", "diagnostics", "memory",
        "assistant", "notes"),
    rooms(DESKTOP, "bubble", "presence", "chat"),
    [LINUX, DESKTOP],
    ["PobblewigDemoModel", "PobblewigStarterMemes", "Pobblewig"],
]
# Folders that use less than their place would let them.
ONLY = {
    "PobblewigDemoModel": {CORE + "/foundation"},
    "PobblewigStarterMemes": set(rooms(CORE, "foundation", "mascots", "memes", "buddy")),
}

# What must not be included or linked, by top folder.
PLATFORM = r"(xcb|X11|linux)/|Qt6?(::|/)?DBus|QDBus|xcb::|PkgConfig::xcb"
FORBIDDEN = {
    CORE: re.compile(PLATFORM + r"|Qt6::Widgets|QtWidgets|QWidget$|QApplication$"),
    "PobblewigDesktop": re.compile(r"(xcb|X11)/|xcb::|PkgConfig::xcb"),
}

INCLUDE = re.compile(r'^\s*#\s*include\s*(?:"(?P<ours>[^"]+)"|<(?P<foreign>[^>]+)>)', re.MULTILINE)
LINKED = re.compile(r"[\w-]+::[\w-]+")
GENERATED = re.compile(r"\.moc$|^moc_|^ui_")


def folder_of(path):
    """The folder of the house that a path relative to its root belongs to, or None."""
    folder = str(pathlib.PurePath(path).parent)
    return folder if folder in ORDER else None


def found(root, name):
    """Where an include of ours stands, relative to the root, or None."""
    for place in (name, CORE + "/" + name):
        if (root / place).is_file():
            return place
    return None


def is_within(folder, outer):
    return folder == outer or folder.startswith(outer + "/")


def are_apart(user, used, group):
    """Whether they stand in two different folders of a group."""
    places = [{outer for outer in group if is_within(folder, outer)} for folder in (user, used)]
    return bool(places[0] and places[1] and not places[0] & places[1])


def may_use(user, used):
    if user == used:
        return True
    if user in ONLY:
        return used in ONLY[user]
    if any(are_apart(user, used, group) for group in APART):
        return False
    return ORDER.index(used) < ORDER.index(user)


def faults_of_include(root, user, name):
    if GENERATED.search(name):
        return
    place = found(root, name)
    if place is None:
        yield f'"{name}" is not found from the root or from {CORE}'
        return
    used = folder_of(place)
    if used is None:
        yield f'"{name}" has no place in the order'
    elif not may_use(user, used):
        yield f'{user} must not use {used} ("{name}")'


def faults_of_file(root, path):
    user = folder_of(path)
    if user is None:
        yield "has no place in the order"
        return
    text = (root / path).read_text(encoding="utf-8")
    if path.name == "CMakeLists.txt":
        foreign = LINKED.findall(text)
    else:
        foreign = [match["foreign"] for match in INCLUDE.finditer(text) if match["foreign"]]
        for match in INCLUDE.finditer(text):
            if match["ours"]:
                yield from faults_of_include(root, user, match["ours"])
    forbidden = FORBIDDEN.get(path.parts[0])
    for name in foreign:
        if forbidden and forbidden.match(name):
            yield f"{user} must not use {name}"


def faults(root):
    """One sentence for each fault below a root."""
    root = pathlib.Path(root)
    kinds = (".h", ".cpp", "CMakeLists.txt")
    for path in sorted(root.glob("Pobblewig*/**/*")):
        if path.is_file() and path.name.endswith(kinds):
            relative = path.relative_to(root)
            for fault in faults_of_file(root, relative):
                yield f"{relative}: {fault}"


if __name__ == "__main__":
    found_faults = list(faults(sys.argv[1]))
    print("\n".join(found_faults))
    sys.exit(1 if found_faults else 0)
