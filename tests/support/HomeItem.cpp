#include "HomeItem.h"

#include "LibraryHome.h"
#include "history/InstallationRecord.h"
#include "platform/WholeFile.h"

#include <QBuffer>
#include <QDateTime>
#include <QImage>

using namespace Qt::StringLiterals;

namespace {

QByteArray contentOf(const QString &text)
{
    QStringList words = text.split(u' ');
    const QString kind = words.takeFirst();
    if (kind == u"motion") {
        const auto seed =
            readWholeFile(QStringLiteral(BRIMVALE_TESTS_FOLDER "/fuzz/seeds/motion.motn"));
        QString file = QString::fromUtf8(seed->content);
        for (const QString &each : words)
            file.replace(each.section(u"=>"_s, 0, 0), each.section(u"=>"_s, 1));
        return file.toUtf8();
    }
    if (kind == u"picture") {
        const QString size = words.value(0);
        QImage image(size.section(u'x', 0, 0).toInt(), size.section(u'x', 1).toInt(),
                     QImage::Format_Mono);
        image.fill(1);
        QBuffer file;
        if (!image.save(&file, "png"))
            qFatal("cannot make a picture for the test");
        return file.data().leftJustified(20'000, 0); // the same size wherever it is packed
    }
    return text.toUtf8();
}

void putFile(const TestHome &home, const QString &path, QString content)
{
    const bool isLocked = content.startsWith("locked "_L1);
    if (isLocked)
        content.remove(0, 7);
    home.makeFile(path, contentOf(content));
    if (isLocked)
        QFile::setPermissions(home.path(path), QFile::ReadOwner);
}

/// With each date that DATE may stand for.
QStringList dated(const QString &name)
{
    if (!name.contains("DATE"_L1))
        return {name};
    QStringList names;
    for (int second = 0; second < 10; ++second) {
        const QDateTime time = QDateTime::currentDateTime().addSecs(second);
        for (const QString &format : {u"yyyy-MM-dd HH-mm-ss"_s, u"MM-dd-yyyy '||' HH_mm_ss t"_s})
            names << QString(name).replace("DATE"_L1, time.toString(format));
    }
    return names;
}

} // namespace

void putIntoHome(const TestHome &home, const QString &item)
{
    const QString name = item.section(u": "_s, 0, 0);
    const QString content = item.section(u": "_s, 1);
    if (item == u"library")
        LibraryHome::fill(home);
    else if (name == u"record")
        std::ignore = appendInstallation({content});
    else if (item.endsWith(u'/'))
        home.makeFolder(item);
    else if (item.contains(" -> "_L1))
        home.makeLink(item.section(u" -> "_s, 0, 0), home.path(item.section(u" -> "_s, 1)));
    else
        for (const QString &path : dated(name))
            putFile(home, path, content.isEmpty() ? u"content"_s : content);
}
