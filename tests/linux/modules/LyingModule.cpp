#include <QObject>
#include <QtPlugin>

namespace pobblewig {

/// Claims an interface that it does not have.
class LyingModule : public QObject {
    Q_OBJECT
    Q_PLUGIN_METADATA(IID "com.pobblewig.Greeting")
};

} // namespace pobblewig

#include "LyingModule.moc"
