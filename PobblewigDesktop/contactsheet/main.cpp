// Draws everything that the buddy does, the chat panel in all its states, and every page of the
// other windows, into pictures.
// Usage: contact-sheet sheet|poster|film|panels|replies|windows|pages FILE.png [RATIO], where the
// ratio is that of device pixels.

#include "PobblewigDesktop/contactsheet/ContactSheet.h"
#include "PobblewigDesktop/contactsheet/PageScenes.h"
#include "PobblewigDesktop/contactsheet/ReplyScenes.h"

#include <QApplication>
#include <QFile>

namespace {

bool write(const QByteArray& bytes, const QString& name)
{
    QFile file(name);
    return file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size();
}

bool areWindows(const QString& kind)
{
    return kind == u"panels" || kind == u"replies" || kind == u"windows" || kind == u"pages";
}

QImage picture(const QString& kind, double ratio)
{
    using namespace pobblewig;
    if (kind == u"panels")
        return ContactSheet::windows(WindowScenes::of(PanelScenes::all()));
    if (kind == u"replies")
        return ContactSheet::windows(WindowScenes::of(ReplyScenes::all()));
    if (kind == u"windows")
        return ContactSheet::windows(WindowScenes::all());
    if (kind == u"pages")
        return ContactSheet::windows(PageScenes::all());
    return kind == u"poster" ? ContactSheet::poster(ratio) : ContactSheet::sheet(ratio);
}

} // namespace

int main(int argc, char** argv)
{
    using namespace pobblewig;
    if (argc > 3 && areWindows(QString::fromLocal8Bit(argv[1])))
        qputenv("QT_SCALE_FACTOR", argv[3]);
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
    return picture(kind, ratio).save(name) ? 0 : 1;
}
