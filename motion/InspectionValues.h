#pragma once

#include "ProjectDocument.h"

/// The facts that the Edit side shows of a file, each as the values of all elements of that name
/// in document order. Without a document all are empty.
struct InspectionValues
{
    QStringList theme;
    QStringList frameRate;
    QStringList duration; ///< in frames
    QStringList width;
    QStringList height;
    QStringList pixelAspectRatio;
};

InspectionValues readInspectionValues(const Result<ProjectDocument> &document);

/// The running time with one decimal, "10.0" for 250 frames at a rate of 25, computed in single
/// precision from the leading numbers of both texts: a rate of 0 gives "inf", "-inf" or "nan".
QString secondsText(const QString &framesText, const QString &frameRateText);

/// The name of a pixel aspect ratio that Motion writes exactly so; any other text as it stands.
QString pixelAspectRatioLabel(const QString &text);
