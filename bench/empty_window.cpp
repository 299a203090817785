// Reference for the start time of the editor: a main window of the same size with an empty, white graphics view.

#include <QApplication>
#include <QGraphicsScene>
#include <QGraphicsView>
#include <QMainWindow>

int main(int argc, char** argv)
{
    QApplication application(argc, argv);
    QGraphicsScene scene(0, 0, 2000, 2000);
    QMainWindow window;
    auto* view = new QGraphicsView(&scene);
    view->setBackgroundBrush(Qt::white);
    window.setCentralWidget(view);
    window.resize(450, 400);
    window.show();
    return QApplication::exec();
}
