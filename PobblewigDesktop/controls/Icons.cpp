#include "PobblewigDesktop/controls/Icons.h"

#include "foundation/EnumNames.h"

#include <QFile>
#include <QPainter>
#include <QSvgRenderer>

// Resources of a static library register only when asked to, and from the global namespace.
static void registerIcons()
{
    Q_INIT_RESOURCE(icons);
}

namespace pobblewig {

namespace {

constexpr int iconSide = 20;

QByteArray drawing(Icons::Name name)
{
    QFile file(Icons::resource(name));
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

} // namespace

QString Icons::resource(Name name)
{
    registerIcons();
    const auto spelled = EnumNames::name(name);
    return QStringLiteral(":/icons/%1.svg")
        .arg(QLatin1String(spelled.data(), static_cast<qsizetype>(spelled.size())));
}

QPixmap Icons::pixmap(Name name, const QColor& color, int side, qreal devicePixelRatio)
{
    QPixmap pixmap(QSizeF(side * devicePixelRatio, side * devicePixelRatio).toSize());
    pixmap.setDevicePixelRatio(devicePixelRatio);
    pixmap.fill(Qt::transparent);
    QSvgRenderer renderer(drawing(name).replace("currentColor", color.name().toLatin1()));
    QPainter painter(&pixmap);
    renderer.render(&painter, QRectF(0, 0, side, side));
    return pixmap;
}

QIcon Icons::icon(Name name, const QColor& color, const QColor& disabledColor)
{
    QIcon icon;
    for (const auto ratio : { 1.0, 2.0, 3.0 }) {
        icon.addPixmap(pixmap(name, color, iconSide, ratio), QIcon::Normal);
        icon.addPixmap(pixmap(name, disabledColor, iconSide, ratio), QIcon::Disabled);
    }
    return icon;
}

} // namespace pobblewig
