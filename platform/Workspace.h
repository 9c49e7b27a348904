#pragma once

#include <QUrl>

/// Asks the desktop to show a page in its browser; false when it does not.
[[nodiscard]] bool openAddress(const QUrl &address);

/// Asks the desktop to show a folder in its file manager. A leading "~" is expanded, a trailing "/"
/// passed on. False when it does not; when nothing is at that path, it is not asked.
[[nodiscard]] bool openFolder(const QString &path);
