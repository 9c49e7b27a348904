#include "Alert.h"

#include <QMessageBox>

void runAlert(QWidget *window, const QString &message, const QString &informativeText)
{
    QMessageBox alert(QMessageBox::Warning, QString(), message, QMessageBox::NoButton, window);
    alert.setInformativeText(informativeText);
    alert.setDefaultButton(alert.addButton(QMessageBox::Ok));
    alert.exec();
}
