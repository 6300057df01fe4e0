// The least that a window with a list box can cost: start_up.py compares the program with it.

#include <QApplication>
#include <QListView>
#include <QMainWindow>
#include <QStringListModel>

int main(int argc, char **argv) {
    QApplication application(argc, argv);
    QMainWindow window;
    QStringListModel model;
    auto *view = new QListView(&window); // the window deletes it
    view->setModel(&model);
    window.setCentralWidget(view);
    window.resize(760, 520);
    window.show();
    return QApplication::exec();
}
