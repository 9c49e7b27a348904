#include "library/InstallForecast.h"

#include "platform/Path.h"
#include "tests/support/DiskSteps.h"
#include "tests/support/LibraryHome.h"
#include "tests/support/TableRows.h"

using namespace Qt::StringLiterals;

namespace {

QString contents(const QString &path, int most, bool isCancelled)
{
    ReadingLimits limits;
    limits.items = most;
    const TemplateFolder folder = readTemplateFolder(
        path, [=] { return isCancelled; }, limits);
    const QStringList kinds = {u"missing"_s, u"file"_s, contentsText(folder)};
    return kinds[static_cast<int>(folder.kind)];
}

QString pictures(const QString &path)
{
    QStringList names;
    for (const QString &picture : readTemplateFolder(path).pictures)
        names << Path::lastComponent(picture);
    return names.join(u' ');
}

InstallForecast forecast(const QString &path, const QString &subCategory)
{
    return forecastInstall({Path::withoutLastComponent(path), Path::lastComponent(path)},
                           *TemplateLibrary::category(3), subCategory, readTemplateFolder(path),
                           true);
}

QString installedTexts(int row)
{
    const TemplateCategory *category = TemplateLibrary::category(row);
    return category ? category->installedText + u" / " + category->customInstalledText : u"none"_s;
}

} // namespace

class InstallForecastTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void rows_data() { addTableRows({u"library/InstallForecast.table"_s}); }
    void rows();
};

void InstallForecastTest::rows()
{
    QFETCH(const QByteArrayList, row);
    const LibraryHome home;
    prepareDisk(home, row[0]);
    const QStringList action = words(row[1]);
    const QString path = action.size() > 1 ? home.path(action.last()) : QString();
    QString result;
    if (action[0] == u"contents")
        result = contents(path, 9, false);
    else if (action[0] == u"most")
        result = contents(path, action[1].toInt(), false);
    else if (action[0] == u"cancelled")
        result = contents(path, 9, true);
    else if (action[0] == u"pictures")
        result = pictures(path);
    else if (action[0] == u"warnings")
        result = forecast(path, {}).warnings.join(u' ');
    else if (action[0] == u"installed")
        result = installedTexts(action[1].toInt());
    else {
        const QStringList places = {u"free"_s, u"taken"_s, u"itself"_s, u"missing"_s};
        const QString whole = action.size() > 1 ? home.path(action[1]) : QString();
        result = places[static_cast<int>(forecast(whole, action.value(2)).place)];
    }
    QCOMPARE(result, QString::fromUtf8(row[2]));
}

QTEST_GUILESS_MAIN(InstallForecastTest)

#include "InstallForecastTest.moc"
