// An empty window of Qt's, of the program's size, to compare the start with.
#include <QApplication>
#include <QWidget>

int main(int count, char **arguments)
{
    const QApplication application(count, arguments);
    QWidget window;
    window.resize(620, 440);
    window.show();
    return QApplication::exec();
}
