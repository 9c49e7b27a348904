#pragma once

#include "tests/support/TestHome.h"

#include <sys/stat.h>
#include <unistd.h>

#include <memory>

/// What the tests of the file layer need beyond TestHome: names that are no text, and
/// everything that a copy keeps.

/// Files, folders and links of every kind, as "Tree" in the folder: odd names, modes and times,
/// extended attributes where the file system has them.
void makeOddTree(const QString &folder);

/// Type, mode, time, link target, extended attributes and a hash of the content of everything
/// under a path, by its relative path; fifos only when asked for.
QMap<QByteArray, QByteArray> describeTree(const QString &path, bool withFifos = false);

/// Folders one inside the other, the innermost holding a file.
void makeDeepTree(const QString &folder, int levels);
/// The levels under a folder down to the file, -1 without one.
int levelsOf(const QString &folder);

/// A home that is removed whatever the names and the depth of what lies in it.
class TreeHome : public TestHome
{
public:
    TreeHome() = default;
    ~TreeHome();
    Q_DISABLE_COPY_MOVE(TreeHome)
};

/// A folder on another file system than the home's, gone with everything in it at the end; empty
/// where there is none.
class OtherFileSystem
{
public:
    explicit OtherFileSystem(const TestHome &home);
    ~OtherFileSystem();
    Q_DISABLE_COPY_MOVE(OtherFileSystem)

    [[nodiscard]] bool isThere() const { return m_folder && m_folder->isValid(); }
    [[nodiscard]] QString path(const QString &relative = {}) const;

private:
    std::unique_ptr<QTemporaryDir> m_folder;
};

// What each platform says in its own way. Of a link, not of what it leads to.
extern const char *const nameOfAnyBytes;
timespec modificationTime(const struct stat &status);
bool setExtendedAttribute(const char *path, const char *name, const QByteArray &value);
ssize_t extendedAttribute(const char *path, const char *name, char *value, size_t size);
ssize_t extendedAttributeNames(const char *path, char *names, size_t size);

/// For its life root is a plain user, whom permissions bind, and the home is that user's.
class AsPlainUser
{
public:
    explicit AsPlainUser(const TestHome &home);
    ~AsPlainUser();
    Q_DISABLE_COPY_MOVE(AsPlainUser)

private:
    const uid_t m_user = ::geteuid();
};
