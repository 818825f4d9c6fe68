// An empty window of Qt's, of the program's size, to compare the start with; with an argument it
// has a menu bar and a tree, which need a font.
#include <QApplication>
#include <QMenuBar>
#include <QTreeView>

int main(int count, char **arguments)
{
    const QApplication application(count, arguments);
    QWidget window;
    window.resize(620, 440);
    if (count > 1) {
        auto *bar = new QMenuBar(&window);
        auto *tree = new QTreeView(&window);
        bar->addMenu(QStringLiteral("&File"));
        const int height = bar->sizeHint().height();
        bar->setGeometry(0, 0, window.width(), height);
        tree->setGeometry(0, height, 174, window.height() - height);
    }
    window.show();
    return QApplication::exec();
}
