#pragma once

#include <QString>

class QUrl;

/// Paths as text, with "/" between their components. Nothing here looks at the disk.
namespace Path {

/// The part after the final "/", a trailing "/" ignored: "Glow" of "/a/Glow/". Of the root it
/// is "/", of nothing it is empty.
QString lastComponent(const QString &path);

/// The path without its last component and the "/" before it: "/a" of "/a/Glow/". The root
/// stays the root; of a single component it is empty.
QString withoutLastComponent(const QString &path);

/// The part of the last component after its final ".": empty when there is no ".".
QString extension(const QString &path);

/// The path without its extension and the "." before it.
QString withoutExtension(const QString &path);

/// Both with exactly one "/" between them; the folder alone when the component is empty.
QString joined(const QString &folder, const QString &component);

/// A leading "~" as the home folder of this moment; every other path as it is.
QString expandingTilde(const QString &path);

/// The path of a file's address, without a trailing "/": "/a/Glow" of "file:///a/Glow/". The host
/// may be one of this machine's own names. Empty for any other address: it is no file of this
/// machine.
QString ofAddress(const QUrl &address);

/// The path that a pasted text means: one that stands in quotes or between blanks or line ends, or
/// that is written as a file's address. Any other text, a part of a path say, as it is.
QString ofPasted(const QString &text);

} // namespace Path
