#include <QApplication>
#include <QLabel>

int main(int argc, char** argv)
{
    QApplication app(argc, argv);
    QLabel l("TOBEL-3");
    l.show();
    return app.exec();
}
