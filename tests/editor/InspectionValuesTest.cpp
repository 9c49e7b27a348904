#include "editor/InspectionValues.h"

#include "editor/FrameRates.h"
#include "editor/NumberText.h"
#include "editor/ProjectKind.h"
#include "tests/support/TestHome.h"

#include <QCoreApplication>

#include <clocale>
#include <limits>

using namespace Qt::StringLiterals;

class InspectionValuesTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void values_areAllOfEachName();
    void leadingNumber_isReadAsFarAsItGoes_data();
    void leadingNumber_isReadAsFarAsItGoes();
    void seconds_haveOneDecimal_data();
    void seconds_haveOneDecimal();
    void pixelAspectRatio_isNamedWhenExactlyKnown_data();
    void pixelAspectRatio_isNamedWhenExactlyKnown();
    void conformedRate_keepsTheSeconds_data();
    void conformedRate_keepsTheSeconds();
    void kind_isToldByTheExactExtension();
};

void InspectionValuesTest::initTestCase()
{
    // Where there is one with a decimal comma, it must not matter.
    std::setlocale(LC_ALL, "de_DE.UTF-8");
}

void InspectionValuesTest::values_areAllOfEachName()
{
    const TestHome home;
    const auto document = openProjectDocument(home.makeFile(
        u"x.motn"_s, "<ozml><theme>A<b>B</b>\n</theme><width>1</width><scene><width>2</width>"
                     "<height> 3</height><frameRate/><duration>4</duration></scene>"
                     "<theme>C</theme></ozml>"));
    const InspectionValues values = readInspectionValues(document);
    QCOMPARE(values.theme, (QStringList{u"AB\n"_s, u"C"_s}));
    QCOMPARE(values.frameRate, QStringList{u""_s});
    QCOMPARE(values.duration, QStringList{u"4"_s});
    QCOMPARE(values.width, (QStringList{u"1"_s, u"2"_s}));
    QCOMPARE(values.height, QStringList{u" 3"_s});
    QVERIFY(values.pixelAspectRatio.isEmpty());
    QVERIFY(!firstValue(values.pixelAspectRatio));
    QCOMPARE(firstValue(values.width), u"1"_s);
    QVERIFY(readInspectionValues(openProjectDocument(home.path(u"y.motn"_s))).theme.isEmpty());
}

void InspectionValuesTest::leadingNumber_isReadAsFarAsItGoes_data()
{
    constexpr float infinite = std::numeric_limits<float>::infinity();
    QTest::addColumn<QString>("text");
    QTest::addColumn<float>("number");
    QTest::newRow("a duration") << u"10.0 seconds"_s << 10.0F;
    QTest::newRow("blanks before it") << u" \n\t29.97"_s << 29.97F;
    QTest::newRow("a sign and an exponent") << u"-1.5e2x"_s << -150.0F;
    QTest::newRow("a fraction alone") << u"+.5."_s << 0.5F;
    QTest::newRow("an exponent without digits") << u"7e+"_s << 7.0F;
    QTest::newRow("a decimal comma") << u"3,9"_s << 3.0F;
    QTest::newRow("hexadecimal") << u"0x10"_s << 0.0F;
    QTest::newRow("infinity in letters") << u"inf seconds"_s << 0.0F;
    QTest::newRow("not a number in letters") << u"nan"_s << 0.0F;
    QTest::newRow("a sign alone") << u"-"_s << 0.0F;
    QTest::newRow("nothing") << QString() << 0.0F;
    QTest::newRow("too large for a float") << u"-1e50"_s << -infinite;
    QTest::newRow("too large for any") << u"1e999"_s << infinite;
    QTest::newRow("too small for any") << u"1e-999"_s << 0.0F;
}

void InspectionValuesTest::leadingNumber_isReadAsFarAsItGoes()
{
    QFETCH(QString, text);
    QTEST(leadingNumber(text), "number");
}

void InspectionValuesTest::seconds_haveOneDecimal_data()
{
    QTest::addColumn<QString>("frames");
    QTest::addColumn<QString>("rate");
    QTest::addColumn<QString>("seconds");
    QTest::newRow("even") << u"250"_s << u"25"_s << u"10.0"_s;
    QTest::newRow("rounded up") << u"300"_s << u"29.97"_s << u"10.0"_s;
    QTest::newRow("rounded down") << u"100"_s << u"30"_s << u"3.3"_s;
    QTest::newRow("a tie to the even digit") << u"1"_s << u"4"_s << u"0.2"_s;
    QTest::newRow("no frames") << u"0"_s << u"25"_s << u"0.0"_s;
    QTest::newRow("no rate") << u"250"_s << u"0"_s << u"inf"_s;
    QTest::newRow("no rate, backwards") << u"-250"_s << u""_s << u"-inf"_s;
    QTest::newRow("neither") << u"0"_s << u"x"_s << u"nan"_s;
    QTest::newRow("without thousands") << u"1234567"_s << u"1"_s << u"1234567.0"_s;
}

void InspectionValuesTest::seconds_haveOneDecimal()
{
    QFETCH(QString, frames);
    QFETCH(QString, rate);
    QTEST(secondsText(frames, rate), "seconds");
}

void InspectionValuesTest::pixelAspectRatio_isNamedWhenExactlyKnown_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("label");
    QTest::newRow("square") << u"1"_s << u"Square"_s;
    QTest::newRow("sixteen digits") << u"1.333333333333333"_s << u"HD (960x720),(1440x1080)"_s;
    QTest::newRow("one digit more") << u"1.3333333333333333"_s << u"1.3333333333333333"_s;
    QTest::newRow("an equal number") << u"1.0"_s << u"1.0"_s;
    QTest::newRow("a blank before it") << u" 1"_s << u" 1"_s;
}

void InspectionValuesTest::pixelAspectRatio_isNamedWhenExactlyKnown()
{
    QFETCH(QString, text);
    QTEST(pixelAspectRatioLabel(text), "label");
}

void InspectionValuesTest::conformedRate_keepsTheSeconds_data()
{
    QTest::addColumn<int>("index");
    QTest::addColumn<QString>("duration");
    QTest::addColumn<QString>("rate");
    QTest::addColumn<QString>("frames");
    const auto row = [](int index, const QString &duration, const QString &rate,
                        const QString &frames) {
        QTest::addRow("%d, %s", index, qPrintable(duration)) << index << duration << rate << frames;
    };
    row(1, u"10.0 seconds"_s, u"15"_s, u"150"_s);
    row(2, u"10.0 seconds"_s, u"23.98"_s, u"239.8"_s);
    row(3, u"3.3 seconds"_s, u"24"_s, u"79.2"_s);
    row(4, u"10.0 seconds"_s, u"25"_s, u"250"_s);
    row(5, u"9.9 seconds"_s, u"29.97"_s, u"296.703"_s);
    row(6, u"inf seconds"_s, u"30"_s, u"0"_s);
    row(7, u"1e39 seconds"_s, u"50"_s, u"inf"_s);
    row(8, u"100000.1 seconds"_s, u"59.94"_s, u"5994006"_s);
    row(9, u"1000000.0 seconds"_s, u"60"_s, u"6e+07"_s);
    row(0, u"10.0 seconds"_s, {}, {});
    row(10, u"10.0 seconds"_s, {}, {});
    row(-1, u"10.0 seconds"_s, {}, {});
}

void InspectionValuesTest::conformedRate_keepsTheSeconds()
{
    QFETCH(int, index);
    QFETCH(QString, duration);
    const auto rate = conformedRate(index, duration);
    QTEST(rate ? rate->frameRate : QString(), "rate");
    QTEST(rate ? rate->frames : QString(), "frames");
}

void InspectionValuesTest::kind_isToldByTheExactExtension()
{
    QVERIFY(projectKind(u"motr"_s));
    QCOMPARE(projectKind(u"motr"_s)->iconName, u"mTransition.png"_s);
    for (const QString &extension : {u"MOTN"_s, u"Motn"_s, u"mot"_s, u""_s})
        QVERIFY2(!projectKind(extension), qPrintable(extension));
}

int main(int argc, char *argv[])
{
    return runTest<QCoreApplication, InspectionValuesTest>(argc, argv);
}

#include "InspectionValuesTest.moc"
