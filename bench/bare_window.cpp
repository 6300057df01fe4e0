// The least that a window with a list box can cost: start_up.py compares the program with it.
//
//   bare_window         shows no text, so that Qt does not even look for a font
//   bare_window TEXT    the same with a menu of this name

#include <QApplication>
#include <QListView>
#include <QMainWindow>
#include <QMenuBar>
#include <QStringListModel>

int main(int argc, char **argv) {
    QApplication application(argc, argv);
    QMainWindow window;
    QStringListModel model;
    auto *view = new QListView(&window); // the window deletes it
    view->setModel(&model);
    window.setCentralWidget(view);
    if (argc > 1)
        window.menuBar()->addMenu(QString::fromLocal8Bit(argv[1]));
    window.resize(760, 520);
    window.show();
    return QApplication::exec();
}
