#include <QObject>
#include <QtPlugin>

namespace pobblewig {

/// A plugin of something else.
class StrangeModule : public QObject {
    Q_OBJECT
    Q_PLUGIN_METADATA(IID "org.example.Strange")
};

} // namespace pobblewig

#include "StrangeModule.moc"
