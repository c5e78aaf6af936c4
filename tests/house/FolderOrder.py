#!/usr/bin/python3
"""Checks that each folder of the house uses only those before it. Usage: FolderOrder.py ROOT"""

import pathlib
import re
import sys

CORE = "PobblewigCore"
ORDER = [CORE + "/" + folder for folder in (
    "foundation", "mascots", "settings", "prompts", "wire", "memory", "screen", "connections",
    "activity", "conversation", "memes", "notes", "cloud", "buddy", "presence")]
ORDER += [CORE, "PobblewigLinux", "PobblewigDesktop", "PobblewigDemoModel", "Pobblewig"]

# Neighbours that know nothing of each other.
APART = [
    {CORE + "/memes", CORE + "/notes", CORE + "/cloud"},
    {"PobblewigLinux", "PobblewigDesktop"},
    {"PobblewigDemoModel", "Pobblewig"},
]
# Folders that use less than their place would let them.
ONLY = {"PobblewigDemoModel": {CORE + "/foundation"}}

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
    parts = pathlib.PurePath(path).parts
    if len(parts) > 2 and parts[0] == CORE:
        return "/".join(parts[:2])
    return parts[0] if len(parts) > 1 else None


def found(root, name):
    """Where an include of ours stands, relative to the root, or None."""
    for place in (name, CORE + "/" + name):
        if (root / place).is_file():
            return place
    return None


def may_use(user, used):
    if user == used:
        return True
    if user in ONLY:
        return used in ONLY[user]
    if any(user in group and used in group for group in APART):
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
    if used not in ORDER:
        yield f"{used} has no place in the order"
    elif not may_use(user, used):
        yield f'{user} must not use {used} ("{name}")'


def faults_of_file(root, path):
    user = folder_of(path)
    if user not in ORDER:
        yield f"{user} has no place in the order"
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
