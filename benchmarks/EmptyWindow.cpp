#include <QApplication>
#include <QWidget>

// The peer of the desktop measurements: what any Qt Widgets program costs.
int main(int argc, char** argv)
{
    QApplication application(argc, argv);
    QWidget window;
    window.show();
    return QApplication::exec();
}
