// Draws everything that the buddy does, and the chat panel in all its states, into pictures.
// Usage: contact-sheet sheet|poster|film|panels|replies FILE.png [RATIO], where the ratio is that
// of device pixels; panels and replies have that of the screen.

#include "PobblewigDesktop/contactsheet/ContactSheet.h"
#include "PobblewigDesktop/contactsheet/ReplyScenes.h"

#include <QApplication>
#include <QFile>

namespace {

bool write(const QByteArray& bytes, const QString& name)
{
    QFile file(name);
    return file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size();
}

} // namespace

int main(int argc, char** argv)
{
    using namespace pobblewig;
    QApplication application(argc, argv);
    QApplication::setStyle(QStringLiteral("fusion"));
    const auto arguments = QApplication::arguments();
    if (arguments.size() < 3)
        return 2;
    const auto& kind = arguments[1];
    const auto& name = arguments[2];
    const auto ratio = arguments.value(3, QStringLiteral("1")).toDouble();
    if (kind == u"film")
        return write(ContactSheet::film(ratio), name) ? 0 : 1;
    const auto image = kind == u"panels" ? ContactSheet::panels(PanelScenes::all())
        : kind == u"replies"             ? ContactSheet::panels(ReplyScenes::all())
        : kind == u"poster"              ? ContactSheet::poster(ratio)
                                         : ContactSheet::sheet(ratio);
    return image.save(name) ? 0 : 1;
}
