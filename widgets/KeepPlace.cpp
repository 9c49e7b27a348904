#include "KeepPlace.h"

#include <QWidget>

void keepPlaceWhenHidden(QWidget *control)
{
    QSizePolicy policy = control->sizePolicy();
    policy.setRetainSizeWhenHidden(true);
    control->setSizePolicy(policy);
}
