#pragma once

#include "library/TemplateFolder.h"

#include <QImage>
#include <QObject>

#include <atomic>
#include <memory>

/// Reads a template's folder and its picture without keeping the windows waiting. What was asked
/// for last is answered, once, unless the reader goes before; what was asked for earlier is not.
class TemplateReader : public QObject
{
    Q_OBJECT
    Q_DISABLE_COPY_MOVE(TemplateReader)

public:
    using QObject::QObject;
    ~TemplateReader() override { cancel(); }

    /// The picture is made to fit the size, in pixels of the screen, and never larger than it is.
    void read(const QString &path, const QSize &pictureSize);
    void cancel();

Q_SIGNALS:
    /// No picture: there is none, or none that can be read.
    void hasRead(const TemplateFolder &folder, const QImage &picture);

private:
    std::shared_ptr<std::atomic_bool> m_isCancelled;
};
