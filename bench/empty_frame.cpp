// The least that a frame window can be: what the program's start and memory are measured against.
// A frame window with an area for child windows, a menu bar and a status bar, all empty.
#include <QApplication>
#include <QMainWindow>
#include <QMdiArea>
#include <QMenuBar>
#include <QStatusBar>

int main(int argc, char** argv) {
    QApplication application(argc, argv);
    QMainWindow window;
    window.setCentralWidget(new QMdiArea);
    window.menuBar()->addMenu(QStringLiteral("File"));
    window.statusBar();
    window.resize(1366, 768);
    window.show();
    return QApplication::exec();
}
