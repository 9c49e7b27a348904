#include "InspectionValues.h"

#include "NumberText.h"

#include <array>

using namespace Qt::StringLiterals;

InspectionValues readInspectionValues(const Result<ProjectDocument> &document)
{
    const std::vector<QStringList> values = nodeValues(
        document, {"theme", "frameRate", "duration", "width", "height", "pixelAspectRatio"});
    return {values[0], values[1], values[2], values[3], values[4], values[5]};
}

QString secondsText(const QString &framesText, const QString &frameRateText)
{
    const float seconds = leadingNumber(framesText) / leadingNumber(frameRateText);
    return oneDecimalText(static_cast<double>(seconds));
}

QString pixelAspectRatioLabel(const QString &text)
{
    struct Label
    {
        QString ratio; // as Motion writes it, to the last digit
        QString name;
    };
    static const std::array<Label, 10> labels = {
        {{u"1"_s, u"Square"_s},
         {u"0.90909090909090895"_s, u"NTSC D1/DV"_s},
         {u"1.2121212121212122"_s, u"NTSC D1/DV Anamorphic"_s},
         {u"1.0925925925925926"_s, u"PAL D1/DV"_s},
         {u"1.4567901234567899"_s, u"PAL D1/DV Anamorphic"_s},
         {u"2"_s, u"Anamorphic 2:1"_s},
         {u"0.94999999999999996"_s, u"D4/D16"_s},
         {u"1.8999999999999999"_s, u"D4/D16 Anamorphic"_s},
         {u"1.333333333333333"_s, u"HD (960x720),(1440x1080)"_s},
         {u"1.5"_s, u"HD (1280x1080)"_s}}};
    for (const Label &label : labels) {
        if (label.ratio == text)
            return label.name;
    }
    return text;
}
