#include "TreeFixture.h"

#include "platform/TreeListing.h"

#include <QCryptographicHash>
#include <QDir>
#include <QFile>

#include <fcntl.h>

#include <algorithm>
#include <array>
#include <filesystem>
#include <fstream>

namespace fs = std::filesystem;

namespace {

void check(bool done)
{
    if (!done)
        qFatal("cannot make the test's tree");
}

fs::path bytes(const QString &path)
{
    return QFile::encodeName(path).toStdString();
}

void setTime(const fs::path &path, time_t seconds)
{
    const timespec times[] = {{seconds, 0}, {seconds, 123456789}};
    check(::utimensat(AT_FDCWD, path.c_str(), times, AT_SYMLINK_NOFOLLOW) == 0);
}

void makeFile(const fs::path &path, const std::string &content)
{
    std::ofstream file(path);
    file << content;
    check(bool(file.flush()));
}

QByteArray hashOf(const fs::path &path)
{
    std::ifstream file(path);
    const std::string content(std::istreambuf_iterator<char>(file), {});
    return QCryptographicHash::hash(QByteArray::fromStdString(content), QCryptographicHash::Sha256)
        .toHex();
}

QByteArray attributesOf(const fs::path &path)
{
    std::array<char, 4096> names = {};
    std::array<char, 4096> value = {};
    const ssize_t length = extendedAttributeNames(path.c_str(), names.data(), names.size());
    const QByteArray list(names.data(), qMax(length, ssize_t(0)));
    QByteArrayList attributes;
    for (const QByteArray &name : list.split('\0')) {
        const ssize_t size =
            extendedAttribute(path.c_str(), name.constData(), value.data(), value.size());
        if (size >= 0)
            attributes += name + '=' + QByteArray(value.data(), size).toHex();
    }
    std::sort(attributes.begin(), attributes.end());
    return attributes.join(' ');
}

QByteArray describe(const fs::path &path)
{
    struct stat status = {};
    check(::lstat(path.c_str(), &status) == 0);
    const timespec time = modificationTime(status);
    QByteArray text = QByteArray::number(status.st_mode, 8) + ' ' +
                      QByteArray::number(qint64(time.tv_sec)) + '.' +
                      QByteArray::number(qint64(time.tv_nsec));
    if (S_ISLNK(status.st_mode))
        return text + " to " + QByteArray::fromStdString(fs::read_symlink(path).string());
    text += ' ' + attributesOf(path);
    return S_ISREG(status.st_mode) ? text + ' ' + hashOf(path) : text;
}

/// QTemporaryDir cannot remove names that are no text, nor trees with paths that are too long.
void removeEverythingIn(const QString &folder)
{
    const FileDescriptor parent(::open(bytes(folder).c_str(), O_RDONLY));
    for (const QString &name :
         QDir(folder).entryList(QDir::Dirs | QDir::Hidden | QDir::NoDotAndDotDot)) {
        const FileTree::Place root = {parent.get(), QFile::encodeName(name)};
        if (const auto listing = FileTree::listTree(root, FileTree::Access::Forced))
            std::ignore = FileTree::removeTree(*listing, root);
    }
}

} // namespace

void makeOddTree(const QString &folder)
{
    const fs::path tree = bytes(folder) / "Tree";
    fs::create_directories(tree / "empty");
    fs::create_directories(tree / "inner" / "read only");
    makeFile(tree / "empty file", {});
    makeFile(tree / "large", std::string(1 << 20, 'x') + "end");
    makeFile(tree / nameOfAnyBytes, "bytes");
    makeFile(tree / (std::string(250, 'n') + ".motn"), "long");
    makeFile(tree / "inner" / "script", "#!");
    makeFile(tree / "inner" / "read only" / "secret", "secret");
    fs::create_symlink("/nowhere at all", tree / "dangling");
    fs::create_directory_symlink("..", tree / "inner" / "to above");
    check(::mkfifo((tree / "fifo").c_str(), 0600) == 0);

    const fs::path script = tree / "inner" / "script";
    check(setExtendedAttribute(script.c_str(), "user.tag", QByteArray("a\0b", 3)));
    check(setExtendedAttribute(script.c_str(), "user.empty", {}));
    check(setExtendedAttribute((tree / "inner").c_str(), "user.tag", "folder"));
    check(::chmod(script.c_str(), 04755) == 0);
    check(::chmod((tree / "inner" / "read only" / "secret").c_str(), 0400) == 0);
    check(::chmod((tree / "inner" / "read only").c_str(), 0555) == 0);
    check(::chmod((tree / "inner").c_str(), 02770) == 0);

    time_t seconds = 1'000'000'000;
    for (const char *name : {"empty file", "dangling", "inner/to above", "inner/script",
                             "inner/read only/secret", "inner/read only", "inner", "empty", "."})
        setTime(tree / name, seconds++);
}

QMap<QByteArray, QByteArray> describeTree(const QString &path, bool withFifos)
{
    const fs::path root = bytes(path);
    QMap<QByteArray, QByteArray> tree = {{".", describe(root)}};
    if (!fs::is_directory(fs::symlink_status(root)))
        return tree;
    for (const fs::directory_entry &entry : fs::recursive_directory_iterator(root)) {
        if (withFifos || !entry.is_fifo() || entry.is_symlink())
            tree.insert(QByteArray::fromStdString(entry.path().lexically_relative(root).string()),
                        describe(entry.path()));
    }
    return tree;
}

void makeDeepTree(const QString &folder, int levels)
{
    FileDescriptor here(::open(bytes(folder).c_str(), O_RDONLY));
    for (int level = 0; level < levels; ++level) {
        check(::mkdirat(here.get(), "deep", 0755) == 0);
        here = FileTree::openFolder(here.get(), "deep");
    }
    const FileDescriptor file(::openat(here.get(), "bottom", O_CREAT | O_WRONLY, 0644));
    check(bool(file));
}

int levelsOf(const QString &folder)
{
    int levels = 0;
    FileDescriptor here(::open(bytes(folder).c_str(), O_RDONLY));
    struct stat status = {};
    for (; ::fstatat(here.get(), "bottom", &status, 0) != 0; ++levels) {
        here = FileTree::openFolder(here.get(), "deep");
        if (!here)
            return -1;
    }
    return levels;
}

TreeHome::~TreeHome()
{
    removeEverythingIn(path());
}

OtherFileSystem::OtherFileSystem(const TestHome &home)
{
    const auto deviceOf = [](const QString &path) {
        struct stat status = {};
        return ::stat(bytes(path).c_str(), &status) == 0 ? status.st_dev : dev_t(0);
    };
    const QString candidate = QStringLiteral("/dev/shm");
    const dev_t device = deviceOf(candidate);
    if (device != 0 && device != deviceOf(home.path()))
        m_folder =
            std::make_unique<QTemporaryDir>(candidate + QStringLiteral("/brimvale-test-XXXXXX"));
}

OtherFileSystem::~OtherFileSystem()
{
    if (m_folder)
        removeEverythingIn(path());
}

QString OtherFileSystem::path(const QString &relative) const
{
    return relative.isEmpty() ? m_folder->path() : m_folder->filePath(relative);
}

AsPlainUser::AsPlainUser(const TestHome &home)
{
    constexpr uid_t nobody = 65534;
    if (m_user != 0)
        return;
    const fs::path root = bytes(home.path());
    check(::lchown(root.c_str(), nobody, nobody) == 0);
    for (const fs::directory_entry &entry : fs::recursive_directory_iterator(root))
        check(::lchown(entry.path().c_str(), nobody, nobody) == 0);
    check(::seteuid(nobody) == 0);
}

AsPlainUser::~AsPlainUser()
{
    if (m_user == 0)
        check(::seteuid(0) == 0);
}
