#include <QApplication>
#include <QMainWindow>

int main(int argc, char** argv) {
    QApplication application(argc, argv);
    QMainWindow window;
    window.setObjectName("EmptyWindow");
    window.setWindowTitle("Empty");
    window.resize(600, 450);
    window.show();
    return QApplication::exec();
}
