#include "TreeFixture.h"

#include <sys/xattr.h>

#include <cerrno>

const char *const nameOfAnyBytes = "\xff is not UTF-8\n";

timespec modificationTime(const struct stat &status)
{
    return status.st_mtim;
}

bool setExtendedAttribute(const char *path, const char *name, const QByteArray &value)
{
    return ::lsetxattr(path, name, value.constData(), size_t(value.size()), 0) == 0 ||
           errno == ENOTSUP;
}

ssize_t extendedAttribute(const char *path, const char *name, char *value, size_t size)
{
    return ::lgetxattr(path, name, value, size);
}

ssize_t extendedAttributeNames(const char *path, char *names, size_t size)
{
    return ::llistxattr(path, names, size);
}
