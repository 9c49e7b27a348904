#include "motion/FrameRates.h"
#include "motion/InspectionValues.h"
#include "motion/NumberText.h"
#include "tests/support/TestHome.h"

#include <QCoreApplication>

#include <clocale>
#include <limits>

using namespace Qt::StringLiterals;

class NumbersTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void areTheSameUnderEveryLocale();
};

void NumbersTest::areTheSameUnderEveryLocale()
{
    // Where there is one with a decimal comma, it must not matter.
    std::setlocale(LC_ALL, "de_DE.UTF-8");
    QCOMPARE(leadingNumber(u" \n\t29.97 fps"_s), 29.97F);
    QCOMPARE(leadingNumber(u"-1.5e2x"_s), -150.0F);
    QCOMPARE(leadingNumber(u"3,9"_s), 3.0F);
    for (const QString &none :
         {u""_s, u"."_s, u"+"_s, u" \n"_s, u"e1"_s, u"inf seconds"_s, u"0x10"_s})
        QCOMPARE(leadingNumber(none), 0.0F);
    QCOMPARE(leadingNumber(u"+5.e"_s), 5.0F);
    QCOMPARE(leadingNumber(u".5e-"_s), 0.5F);
    QCOMPARE(leadingNumber(u"1e400"_s), std::numeric_limits<float>::infinity());
    QCOMPARE(secondsText(u"1"_s, u"4"_s), u"0.2"_s); // a tie goes to the even digit
    QCOMPARE(secondsText(u"1234567"_s, u"1"_s), u"1234567.0"_s);
    QCOMPARE(secondsText(u"-250"_s, u""_s), u"-inf"_s);
    QCOMPARE(secondsText(u"0"_s, u"x"_s), u"nan"_s);
    QCOMPARE(conformedRate(5, u"9.9 seconds"_s)->frames, u"296.703"_s);
    QCOMPARE(conformedRate(8, u"8.9"_s)->frames, u"533.466"_s);
    QCOMPARE(conformedRate(8, u"100000.1 seconds"_s)->frames, u"5994006"_s);
    QCOMPARE(conformedRate(9, u"1000000.0 seconds"_s)->frames, u"6e+07"_s);
    QCOMPARE(pixelAspectRatioLabel(u"1.333333333333333"_s), u"HD (960x720),(1440x1080)"_s);
}

QTEST_GUILESS_MAIN(NumbersTest)

#include "NumbersTest.moc"
