// A plain Qt window of 80 widgets: what any program with a window like Brimvale's needs to start.

#include <QApplication>
#include <QGridLayout>
#include <QLabel>
#include <QLineEdit>
#include <QMainWindow>
#include <QPushButton>
#include <QRadioButton>

int main(int argc, char *argv[])
{
    const QApplication application(argc, argv);
    QMainWindow window;
    auto *content = new QWidget;
    auto *grid = new QGridLayout(content);
    for (int row = 0; row < 20; ++row) {
        const QString text = QString::number(row);
        grid->addWidget(new QLabel(text), row, 0);
        grid->addWidget(new QLineEdit(text), row, 1);
        grid->addWidget(new QRadioButton(text), row, 2);
        grid->addWidget(new QPushButton(text), row, 3);
    }
    window.setCentralWidget(content);
    window.resize(700, 540);
    window.show();
    return QApplication::exec();
}
