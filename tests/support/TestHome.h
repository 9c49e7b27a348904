#pragma once

#include <QByteArray>
#include <QMap>
#include <QString>
#include <QTemporaryDir>
#include <QTest>

/// A home folder of its own for one test: HOME and the XDG folders lead into it for as long as
/// it lives, and it is removed with everything in it.
class TestHome
{
public:
    TestHome();

    [[nodiscard]] QString path(const QString &relative = {}) const;

    /// Each makes the folders on the way to it, and answers the full path.
    QString makeFolder(const QString &relative) const;
    QString makeFile(const QString &relative, const QByteArray &content = "content") const;
    QString makeLink(const QString &relative, const QString &target) const;

    [[nodiscard]] QByteArray read(const QString &relative) const;
    [[nodiscard]] bool exists(const QString &relative) const;
    /// The names inside a folder, hidden ones included, sorted.
    [[nodiscard]] QStringList names(const QString &relative) const;

    /// Every item under the home by its relative path, with what it is, its mode, its time and
    /// its content or target: two equal ones mean that nothing was touched in between.
    [[nodiscard]] QMap<QString, QByteArray> snapshot() const;

private:
    /// Open again in the end, so that everything in it can go.
    struct Folder : QTemporaryDir
    {
        ~Folder();
        Q_DISABLE_COPY_MOVE(Folder)
        Folder() = default;
    };
    Folder m_folder;
};

/// From now on this process reads and writes its settings in that folder, never in the user's.
void keepSettingsIn(const QString &folder);
