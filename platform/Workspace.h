#pragma once

#include <QUrl>

/// Asks the desktop to open an address: a folder in its file manager, a page in its browser.
/// A file address is passed on exactly, a trailing "/" included; false, and nothing happens, when
/// nothing is at that path.
bool openAddress(const QUrl &address);
