#pragma once

#include <QByteArray>

/// A small project as Motion writes it, 300 frames at 29.97, without a theme.
QByteArray motionFile();
