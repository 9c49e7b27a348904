#include "TemplateReader.h"

#include <QCoreApplication>
#include <QImageReader>
#include <QThreadPool>

namespace {

/// Decoded at the size that is shown: a small file can hold a picture of gigabytes.
QImage readPicture(const QString &path, const QSize &wanted)
{
    constexpr qint64 mostPixels = 64'000'000;
    QImageReader reader(path, "png");
    const QSize size = reader.size();
    if (!size.isValid() || qint64(size.width()) * size.height() > mostPixels)
        return {};
    if (size.width() > wanted.width() || size.height() > wanted.height())
        reader.setScaledSize(size.scaled(wanted, Qt::KeepAspectRatio).expandedTo({1, 1}));
    return reader.read();
}

} // namespace

void TemplateReader::cancel()
{
    if (m_isCancelled)
        *m_isCancelled = true;
}

void TemplateReader::read(const QString &path, const QSize &pictureSize)
{
    cancel();
    const auto isCancelled = std::make_shared<std::atomic_bool>(false);
    m_isCancelled = isCancelled;
    QThreadPool::globalInstance()->start([this, path, pictureSize, isCancelled] {
        const TemplateFolder folder = readTemplateFolder(path, [&] { return isCancelled->load(); });
        QImage picture;
        for (const QString &each : folder.pictures) {
            if (picture.isNull() && !*isCancelled)
                picture = readPicture(each, pictureSize);
        }
        // This reader is touched in its own thread only, and there it is known whether it lives.
        QMetaObject::invokeMethod(
            qApp,
            [this, isCancelled, folder, picture] {
                if (!*isCancelled)
                    Q_EMIT hasRead(folder, picture);
            },
            Qt::QueuedConnection);
    });
}
