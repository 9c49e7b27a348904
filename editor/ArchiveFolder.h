#pragma once

#include <QString>

/// Where the dated copies of originals go; made when the program starts.
inline const QString archiveFolder = QStringLiteral("~/Documents/Brimvale");
