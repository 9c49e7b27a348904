#include "TreeFixture.h"

#include <sys/xattr.h>

#include <cerrno>

// The file systems there refuse what is no UTF-8.
const char *const nameOfAnyBytes = "two\nlines";

timespec modificationTime(const struct stat &status)
{
    return status.st_mtimespec;
}

bool setExtendedAttribute(const char *path, const char *name, const QByteArray &value)
{
    return ::setxattr(path, name, value.constData(), size_t(value.size()), 0, XATTR_NOFOLLOW) ==
               0 ||
           errno == ENOTSUP;
}

ssize_t extendedAttribute(const char *path, const char *name, char *value, size_t size)
{
    return ::getxattr(path, name, value, size, 0, XATTR_NOFOLLOW);
}

ssize_t extendedAttributeNames(const char *path, char *names, size_t size)
{
    return ::listxattr(path, names, size, XATTR_NOFOLLOW);
}
