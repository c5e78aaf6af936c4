#include "memes/MemeStarterFiles.h"

#include "memes/MemeEmotion.h"
#include "memes/MemeManifest.h"

namespace pobblewig::MemeStarterFiles {

namespace {

const auto beforeTags = QStringLiteral(
    R"(POBBLEWIG — MEME LIBRARY

Meme mode: after a chat reply, a small classifier judges the emotional
register of the exchange and your buddy briefly becomes a meme from this
library that matches it.

FOLDERS
- This directory is the default folder, "My Memes" — loose images here
  work exactly like the classic single-folder library.
- Any other subfolder is a folder of its own, with its own memes.json.
  Easiest: Settings → Companion → "Edit library…" → "New folder".
- The "Community" subfolder is reserved: it holds the community packs
  you subscribe to (Settings → Companion → "Community memes…"). Packs
  are read-only — unsubscribe in the app to remove one.
- folders.json here records each folder's on/off switch (the toggle in
  the editor). A disabled folder keeps its files but is never picked.
  Turning off "My Memes" also shelves the bundled starter memes — they
  ship as the default folder's content and ride its switch.

HOW TO ADD A MEME
1. Drop an image file into a folder (GIF, PNG, JPEG, WebP; GIFs play
   animated).
2. Add an entry to that folder's memes.json:

   {
     "memes": [
       { "file": "this-is-fine.gif", "emotions": ["frustrated"], "weight": 1.0, "name": "This is fine" }
     ]
   }

   - file:     the filename in that folder (required)
   - emotions: one or more tags from the list below (required)
   - weight:   optional, default 1 — higher = picked more often among
               memes sharing an emotion
   - name:     optional label for your own reference

EMOTION TAGS (pick from these exactly):
)");

const auto afterTags = QStringLiteral(
    R"(
NOTES
- When several folders contain the same filename, My Memes wins, then
  your own folders, then community packs.
- Entries with unknown tags or missing files are skipped (and logged),
  not fatal — the rest of the library still loads.
- Edits are picked up automatically; no restart needed. Settings →
  Companion → "Reload library" forces a rescan.
- The classifier can always decide the moment doesn't call for a meme;
  an empty or sparse library just means fewer memes, never errors.
)");

void writeUnlessThere(const QString& path, const QString& text, const FileOperations& operations)
{
    if (!QFileInfo::exists(path))
        std::ignore = writeDurably(path, text.toUtf8(), operations);
}

} // namespace

QString curationReadme()
{
    static const auto text = beforeTags + MemeTags::emotionLines() + u'\n' + afterTags;
    return text;
}

void seed(const QDir& directory, const FileOperations& operations)
{
    if (operations.makePath(directory.absolutePath()))
        return;
    writeUnlessThere(directory.filePath(QLatin1String(MemeManifest::fileName)),
        QStringLiteral("{\"memes\": []}"), operations);
    writeUnlessThere(
        directory.filePath(QStringLiteral("README.txt")), curationReadme(), operations);
}

} // namespace pobblewig::MemeStarterFiles
