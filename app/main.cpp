#include <QApplication>
#include <QMainWindow>

int main(int argc, char** argv) {
    QApplication app(argc, argv);
    QMainWindow window;
    window.setWindowTitle(QStringLiteral("Vantorin Website Downloader 1.9"));
    window.resize(720, 540);
    window.show();
    return app.exec();
}
