#pragma once

#include <QByteArray>

/// A small project as Motion writes it, 300 frames at 29.97, without a theme.
QByteArray motionFile();

/// A document that has something of all that XML allows, in one.
QByteArray everythingInOne();
